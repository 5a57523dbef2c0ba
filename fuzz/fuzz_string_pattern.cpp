// Differential target: the pattern lists of the text filters
// (ValueFilterStringPattern) against the reference of the documented rules.

#include "FuzzSupport.h"
#include "ReferenceMatcher.h"
#include "ValueFilterStringPattern.h"
#include "WildcardConfig.h"

namespace {

struct Part
{
    QString pattern;
    bool exclude;
};

// Splits at unescaped ";" and ","; "\;" and "\," are the separator itself,
// other escapes stay for the wildcard; blanks around a part are dropped, empty
// parts ignored, a leading "!" makes an excluding part. False for a lone "!",
// whose meaning the rules leave open.
bool referenceParts(const QString &text, QVector<Part> &parts)
{
    QStringList raw;
    QString current;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\\') && i + 1 < text.size()) {
            const QChar next = text.at(++i);
            if (next == QLatin1Char(';') || next == QLatin1Char(','))
                current += next;
            else
                current += QString(c) + next;
        } else if (c == QLatin1Char(';') || c == QLatin1Char(',')) {
            raw << current;
            current.clear();
        } else {
            current += c;
        }
    }
    raw << current;
    for (const QString &r : qAsConst(raw)) {
        const QString part = r.trimmed();
        if (part.isEmpty())
            continue;
        if (part == QLatin1String("!"))
            return false;
        if (part.startsWith(QLatin1Char('!')))
            parts.append({part.mid(1), true});
        else
            parts.append({part, false});
    }
    return true;
}

bool referencePartMatches(const Part &part, const QString &value, const WildcardConfig &config, bool matchCase)
{
    if (config.isMatchAllCharSet() && part.pattern == config.getMatchAllString())
        return true;
    if (config.isEmptyPatternCharSet() && part.pattern == QString(config.getEmptyPatternChar()))
        return value.isEmpty();
    return reference::wildcardMatches(part.pattern, value, matchCase, true);
}

bool referenceMatches(const QVector<Part> &parts, const QString &value, const WildcardConfig &config,
                      bool matchCase)
{
    bool hasInclude = false;
    bool included = false;
    for (const Part &part : parts) {
        const bool m = referencePartMatches(part, value, config, matchCase);
        if (part.exclude && m)
            return false;
        if (!part.exclude) {
            hasInclude = true;
            included = included || m;
        }
    }
    return !hasInclude || included;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    fuzz::initQuiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzedDataProvider fdp(data, size);
    const bool matchCase = fdp.ConsumeBool();
    WildcardConfig config;
    switch (fdp.ConsumeIntegralInRange(0, 2)) {
    case 0: break;
    case 1: config.setMatchAllChar(QLatin1Char('*')); config.setEmptyPatternChar(QLatin1Char('#')); break;
    default: config.setMatchAllChar(QLatin1Char('%')); break;
    }
    const QString text = fuzz::alphabetText(fdp, 40);
    ValueFilterStringPattern filter(config, QStringLiteral("dp"), Constants::ValueSourceAlarm, matchCase);
    filter.setFilterText(text);
    QVector<Part> parts;
    if (!referenceParts(text, parts))
        return 0;
    for (int i = 0; i < 4 && fdp.remaining_bytes() > 0; ++i) {
        const QString value = fuzz::alphabetText(fdp, 24);
        if (fuzz::skipKnownFaults(text, value))
            continue;
        const bool expected = referenceMatches(parts, value, config, matchCase);
        const bool actual = filter.matches(value);
        if (expected != actual)
            fuzz::wrongAnswer("string pattern", text, value, expected, actual,
                              QStringLiteral("matchCase=%1 matchAll=%2 empty=%3")
                                  .arg(matchCase)
                                  .arg(config.getMatchAllString(), QString(config.getEmptyPatternChar())));
    }
    return 0;
}
