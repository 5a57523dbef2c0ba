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

// Runs of "*" are read as one: they mean the same, and each one more would
// multiply the expression engine's backtracking.
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
        if (c != AnyRun || tokens.isEmpty() || tokens.last() != AnyRun)
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

uint folded(uint c, Qt::CaseSensitivity cs)
{
    return cs == Qt::CaseInsensitive && c < AnyOne ? QChar::toCaseFolded(c) : c;
}

TextMatcher::Answer answerOf(bool match)
{
    return match ? TextMatcher::Match : TextMatcher::NoMatch;
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
    m_wildcard.clear();
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
        // Kept for texts the engine gives up on; matching anywhere is matching
        // between two stars.
        if (!wholeText && tokens.first() != AnyRun)
            m_wildcard << AnyRun;
        for (const uint c : tokens)
            m_wildcard << folded(c, cs);
        if (!wholeText && tokens.last() != AnyRun)
            m_wildcard << AnyRun;
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

TextMatcher::Answer TextMatcher::answer(const QString &text) const
{
    switch (m_kind) {
    case MatchAll:
        return Match;
    case Equal:
        return answerOf(text.size() == m_text.size() && text.compare(m_text, m_cs) == 0);
    case StartsWith:
        return answerOf(text.startsWith(m_text, m_cs));
    case EndsWith:
        return answerOf(text.endsWith(m_text, m_cs));
    case Contains:
        return answerOf(m_finder.indexIn(text) >= 0);
    case Regex: {
        // An invalid match is no answer: the engine gave up (backtracking
        // beyond its limits, or a text that is not well-formed UTF-16).
        const QRegularExpressionMatch match = m_regex.match(text);
        if (match.isValid())
            return answerOf(match.hasMatch());
        if (m_wildcard.isEmpty())
            return Undecided;
        return answerOf(wildcardMatches(text));
    }
    case Invalid:
        break;
    }
    return NoMatch;
}

bool TextMatcher::wildcardMatches(const QString &text) const
{
    // Matches greedily and, on a mismatch, retries only from the last "*" one
    // character further: at most text length times pattern length steps.
    QVector<uint> chars;
    chars.reserve(text.size());
    for (int i = 0; i < text.size();)
        chars << folded(nextCodePoint(text, i), m_cs);
    const int patternSize = m_wildcard.size();
    int p = 0;
    int t = 0;
    int starP = -1;
    int starT = 0;
    while (t < chars.size()) {
        if (p < patternSize && m_wildcard.at(p) == AnyRun) {
            starP = p++;
            starT = t;
        } else if (p < patternSize && (m_wildcard.at(p) == AnyOne || m_wildcard.at(p) == chars.at(t))) {
            ++p;
            ++t;
        } else if (starP >= 0) {
            p = starP + 1;
            t = ++starT;
        } else {
            return false;
        }
    }
    while (p < patternSize && m_wildcard.at(p) == AnyRun)
        ++p;
    return p == patternSize;
}
