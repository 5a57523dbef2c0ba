#pragma once

// What every fuzz target shares: a quiet process (the parsers log every fault
// they see, which would drown the fuzzer's own output and slow it down), a
// fixed alphabet for the matcher targets, and an abort that names the input.

#include "MsgLoggingProducer.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdio>
#include <cstdlib>

namespace fuzz {

inline void quietMessageHandler(QtMsgType, const QMessageLogContext &, const QString &) {}

// Called once from LLVMFuzzerInitialize.
inline void initQuiet()
{
    qInstallMessageHandler(quietMessageHandler);
    MsgLoggingProducer::setDefaultLogThreshold(1000);
}

inline QString utf8(const uint8_t *data, size_t size)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
}

inline QByteArray bytes(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size));
}

// The characters that matter to the matchers: the wildcard and list syntax,
// regular expression syntax, blanks and line breaks, letters in both cases
// (also outside ASCII) and a character beyond the BMP (a surrogate pair). Each
// byte picks one, so that the fuzzer spends its time on meaningful texts.
inline QString alphabetText(FuzzedDataProvider &fdp, size_t maxLength)
{
    static const char32_t alphabet[] = {
        U'a', U'A', U'b', U'B', U'*', U'?', U'\\', U';', U',', U'!', U' ', U'\n',
        U'\r', U'.', U'(', U')', U'[', U'^', U'$', U'+', U'|', U'#', U'%', U'\u00e9',
        U'\u00c9', U'\U0001F600', U'x', U'*', U'a', U'?'};
    constexpr size_t count = sizeof(alphabet) / sizeof(alphabet[0]);
    const std::string picks = fdp.ConsumeRandomLengthString(maxLength);
    QString text;
    for (unsigned char c : picks) {
        const char32_t cp = alphabet[c % count];
        text += QString::fromUcs4(&cp, 1);
    }
    return text;
}

// Wildcards on line breaks, on characters beyond the BMP and with runs of "*"
// are known faults, being fixed apart. With AS_FUZZ_SKIP_KNOWN set in the
// environment the differential targets do not compare such inputs, so that a
// run can look for other wrong answers instead of stopping at a known one.
inline bool skipKnownFaults(const QString &pattern, const QString &text)
{
    static const bool skip = qEnvironmentVariableIsSet("AS_FUZZ_SKIP_KNOWN");
    if (!skip)
        return false;
    for (const QString &s : {pattern, text}) {
        for (const QChar c : s) {
            if (c == QLatin1Char('\n') || c == QLatin1Char('\r') || c.isSurrogate())
                return true;
        }
    }
    return pattern.contains(QLatin1String("**"));
}

// A wrong answer is a finding: print what was asked and stop, so that
// libFuzzer saves the input.
[[noreturn]] inline void wrongAnswer(const char *what, const QString &pattern, const QString &text,
                                     bool expected, bool actual, const QString &context = QString())
{
    std::fprintf(stderr, "WRONG ANSWER (%s): pattern \"%s\" text \"%s\" %s: expected %d, got %d\n", what,
                 pattern.toUtf8().toPercentEncoding(" *?;,!#%()[]^$+|.").constData(),
                 text.toUtf8().toPercentEncoding(" *?;,!#%()[]^$+|.").constData(),
                 context.toUtf8().constData(), int(expected), int(actual));
    std::abort();
}

} // namespace fuzz
