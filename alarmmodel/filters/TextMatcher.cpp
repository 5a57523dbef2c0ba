#include "TextMatcher.h"

#include <QCoreApplication>
#include <QVector>

namespace {
// A wildcard pattern is read into code points; the two wildcards become values
// beyond the Unicode range, so that an escaped "*" or "?" stays a character.
constexpr uint AnyOne = 0x110000;
constexpr uint AnyRun = 0x110001;

// The code point at `i`, advancing `i` past it: a surrogate pair is one
// character ("?" matches it, "\" escapes it whole); a lone surrogate stands
// for itself.
uint nextCodePoint(const QString &text, int &i)
{
    const QChar c = text.at(i++);
    if (c.isHighSurrogate() && i < text.size() && text.at(i).isLowSurrogate())
        return QChar::surrogateToUcs4(c, text.at(i++));
    return c.unicode();
}

QVector<uint> readWildcard(const QString &pattern)
{
    QVector<uint> tokens;
    tokens.reserve(pattern.size());
    for (int i = 0; i < pattern.size();) {
        uint c = nextCodePoint(pattern, i);
        if (c == '\\' && i < pattern.size())
            c = nextCodePoint(pattern, i);
        else if (c == '*')
            c = AnyRun;
        else if (c == '?')
            c = AnyOne;
        tokens << c;
    }
    return tokens;
}

QString codePointText(uint c)
{
    return QChar::requiresSurrogates(c) ? QString::fromUcs4(&c, 1) : QString(QChar(c));
}

QString toRegularExpression(const QVector<uint> &tokens)
{
    QString re;
    re.reserve(tokens.size() * 2);
    for (const uint c : tokens) {
        if (c == AnyRun)
            re += QLatin1String(".*");
        else if (c == AnyOne)
            re += QLatin1Char('.'); // one code point: the expression works on UTF-16 as Unicode
        else if (c < 0x80)
            re += QRegularExpression::escape(QString(QChar(c)));
        else
            re += codePointText(c); // nothing beyond ASCII has a meaning in an expression
    }
    return re;
}

// Splits a wildcard pattern into literal runs separated by "*"; false when it
// holds a "?" (which needs a regular expression).
bool splitAtStars(const QVector<uint> &tokens, QStringList &runs)
{
    QString current;
    for (const uint c : tokens) {
        if (c == AnyOne)
            return false;
        if (c == AnyRun) {
            runs << current;
            current.clear();
        } else {
            current += codePointText(c);
        }
    }
    runs << current;
    return true;
}
} // namespace

TextMatcher::TextMatcher() = default;

QString TextMatcher::wildcardToRegularExpression(const QString &pattern)
{
    return toRegularExpression(readWildcard(pattern));
}

void TextMatcher::setLiteral(const QString &text, bool anchoredStart, bool anchoredEnd)
{
    m_text = text;
    if (text.isEmpty() && !(anchoredStart && anchoredEnd)) {
        m_kind = MatchAll;
    } else if (anchoredStart && anchoredEnd) {
        m_kind = Equal;
    } else if (anchoredStart) {
        m_kind = StartsWith;
    } else if (anchoredEnd) {
        m_kind = EndsWith;
    } else {
        m_kind = Contains;
        m_finder = QStringMatcher(text, m_cs);
    }
}

bool TextMatcher::setPattern(const QString &pattern, Method method, Qt::CaseSensitivity cs, bool wholeText,
                             QString *error)
{
    m_cs = cs;
    m_text.clear();
    m_regex = QRegularExpression();
    QRegularExpression::PatternOptions options = cs == Qt::CaseInsensitive ? QRegularExpression::CaseInsensitiveOption
                                                                            : QRegularExpression::NoPatternOption;
    switch (method) {
    case Exact:
        setLiteral(pattern, wholeText, wholeText);
        return true;
    case Wildcard: {
        const QVector<uint> tokens = readWildcard(pattern);
        QStringList runs;
        if (splitAtStars(tokens, runs)) {
            // A run count of 1 is a plain text; 2 a prefix or suffix; 3 with empty
            // ends an infix. Anything else is left to a regular expression.
            const bool open = !wholeText;
            if (runs.size() == 1) {
                setLiteral(runs.first(), !open, !open);
                return true;
            }
            if (runs.size() == 2 && (runs.at(0).isEmpty() || runs.at(1).isEmpty())) {
                if (runs.at(0).isEmpty() && runs.at(1).isEmpty())
                    setLiteral(QString(), false, false);
                else if (runs.at(1).isEmpty())
                    setLiteral(runs.at(0), !open, false);
                else
                    setLiteral(runs.at(1), false, !open);
                return true;
            }
            if (runs.size() == 3 && runs.at(0).isEmpty() && runs.at(2).isEmpty()) {
                setLiteral(runs.at(1), false, false);
                return true;
            }
        }
        const QString re = toRegularExpression(tokens);
        m_regex.setPattern(wholeText ? QRegularExpression::anchoredPattern(re) : re);
        // Alarm texts and descriptions hold line breaks, and a wildcard
        // stands for any character.
        options |= QRegularExpression::DotMatchesEverythingOption;
        break;
    }
    case RegularExpression:
        m_regex.setPattern(wholeText ? QRegularExpression::anchoredPattern(pattern) : pattern);
        break;
    default:
        m_kind = Invalid;
        if (error)
            *error = QCoreApplication::translate("TextMatcher", "unknown match method %1").arg(int(method));
        return false;
    }
    m_regex.setPatternOptions(options);
    if (!m_regex.isValid()) {
        m_kind = Invalid;
        if (error)
            *error = QCoreApplication::translate("TextMatcher", "invalid regular expression '%1': %2 at offset %3")
                         .arg(pattern, m_regex.errorString())
                         .arg(m_regex.patternErrorOffset());
        return false;
    }
    m_regex.optimize();
    m_kind = Regex;
    return true;
}

bool TextMatcher::matches(const QString &text) const
{
    switch (m_kind) {
    case MatchAll:
        return true;
    case Equal:
        return text.size() == m_text.size() && text.compare(m_text, m_cs) == 0;
    case StartsWith:
        return text.startsWith(m_text, m_cs);
    case EndsWith:
        return text.endsWith(m_text, m_cs);
    case Contains:
        return m_finder.indexIn(text) >= 0;
    case Regex:
        return m_regex.match(text).hasMatch();
    case Invalid:
        break;
    }
    return false;
}
