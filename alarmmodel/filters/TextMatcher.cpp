#include "TextMatcher.h"

#include <QCoreApplication>
#include <QVector>

#include <algorithm>

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

inline uint foldedUnit(uint u, Qt::CaseSensitivity cs)
{
    if (cs == Qt::CaseSensitive)
        return u;
    if (u < 0x80)
        return u >= 'A' && u <= 'Z' ? u + ('a' - 'A') : u;
    return QChar::toCaseFolded(u);
}

// Ignoring case changes nothing for a character that no other character
// folds onto: ASCII digits, punctuation, blanks and controls.
bool isCaseless(uint c)
{
    const uint lower = c | 0x20;
    return c < 0x80 && !(lower >= 'a' && lower <= 'z');
}

bool isLineBreak(ushort u)
{
    return u == '\n' || u == '\r' || u == 0x0b || u == 0x0c || u == 0x85 || u == 0x2028 || u == 0x2029;
}

// Reads a regular expression made only of literal characters, "." and ".*"
// into wildcard tokens; false for anything else (classes, anchors, groups,
// other quantifiers, escapes), which the engine keeps.
bool readSimpleExpression(const QString &pattern, QVector<uint> &tokens)
{
    static const QString special = QStringLiteral("\\^$|?*+()[]{}");
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern.at(i);
        if (c == QLatin1Char('.')) {
            if (i + 1 < pattern.size() && pattern.at(i + 1) == QLatin1Char('*')) {
                ++i;
                if (tokens.isEmpty() || tokens.last() != AnyRun)
                    tokens << AnyRun;
            } else {
                tokens << AnyOne;
            }
        } else if (special.contains(c) || c.isSurrogate()) {
            return false;
        } else {
            tokens << c.unicode();
        }
    }
    return true;
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
    // Folding every character of every text costs more than the search.
    if (std::all_of(text.cbegin(), text.cend(), [](QChar c) { return isCaseless(c.unicode()); }))
        m_cs = Qt::CaseSensitive;
    m_literalCase = LiteralExact;
    if (m_cs == Qt::CaseInsensitive) {
        m_literalCase = LiteralFolded;
        if (std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; })) {
            m_literalCase = LiteralAsciiFolded;
            m_text = text.toLower();
        }
    }
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
    m_segments.clear();
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
        m_regex.setPatternOptions(options);
        if (setSegments(tokens, wholeText, false))
            return true;
        break;
    }
    case RegularExpression: {
        // Anchoring puts the pattern into a group, which would turn an
        // unbalanced "a)|(b" into a valid expression that means something else
        // than what was typed: the pattern must be valid as typed.
        m_regex.setPattern(pattern);
        if (wholeText && m_regex.isValid())
            m_regex.setPattern(QRegularExpression::anchoredPattern(pattern));
        QVector<uint> tokens;
        if (readSimpleExpression(pattern, tokens)) {
            m_regex.setPatternOptions(options);
            if (m_regex.isValid() && setSegments(tokens, wholeText, true))
                return true;
        }
        break;
    }
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
                         .arg(pattern, m_regex.errorString(), QString::number(m_regex.patternErrorOffset()));
        return false;
    }
    m_regex.optimize();
    m_kind = Regex;
    return true;
}

TextMatcher::Answer TextMatcher::searchAnswer(const QString &text) const
{
    switch (m_kind) {
    case MatchAll:
    case Equal:
    case StartsWith:
    case EndsWith:
        return answer(text);
    case Contains:
        return answerOf(m_finder.indexIn(text) >= 0);
    case Segments: {
        const Answer answer = segmentsAnswer(text);
        if (answer != Undecided)
            return answer;
        if (!m_wildcard.isEmpty())
            return answerOf(wildcardMatches(text));
        const QRegularExpressionMatch match = m_regex.match(text);
        return match.isValid() ? answerOf(match.hasMatch()) : Undecided;
    }
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

bool TextMatcher::setSegments(const QVector<uint> &tokens, bool wholeText, bool dotStopsAtLineBreak)
{
    // Characters beyond the BMP in the pattern are left to the code point
    // matcher or the engine, and so is an empty expression (which only
    // matches an empty text when anchored).
    if (tokens.isEmpty())
        return false;
    for (const uint c : tokens) {
        if (c < AnyOne && (c > 0xffff || QChar::isSurrogate(c)))
            return false;
    }
    if (std::all_of(tokens.cbegin(), tokens.cend(), [](uint c) { return c >= AnyOne || isCaseless(c); }))
        m_cs = Qt::CaseSensitive;
    QVector<Segment> segments;
    Segment current;
    for (const uint c : tokens) {
        if (c == AnyRun) {
            if (!current.units.isEmpty())
                segments << current;
            current = Segment();
        } else if (c == AnyOne) {
            current.units << -1;
            current.anyOne = true;
        } else {
            current.units << int(foldedUnit(c, m_cs));
        }
    }
    if (!current.units.isEmpty())
        segments << current;
    m_segmentsAnyOne = false;
    for (Segment &segment : segments) {
        m_segmentsAnyOne = m_segmentsAnyOne || segment.anyOne;
        if (!segment.anyOne) {
            QString text;
            for (const int u : segment.units)
                text += QChar(ushort(u));
            const bool caseless = std::all_of(segment.units.cbegin(), segment.units.cend(),
                                              [](int u) { return isCaseless(uint(u)); });
            const bool ascii = std::all_of(segment.units.cbegin(), segment.units.cend(), [](int u) { return u < 0x80; });
            segment.foldedScan = m_cs == Qt::CaseInsensitive && ascii && !caseless;
            segment.finder = QStringMatcher(text, caseless ? Qt::CaseSensitive : m_cs);
        }
    }
    m_segments = segments;
    m_segmentsFromStart = wholeText && !tokens.isEmpty() && tokens.first() != AnyRun;
    m_segmentsToEnd = wholeText && !tokens.isEmpty() && tokens.last() != AnyRun;
    m_segmentsStopAtLineBreak = dotStopsAtLineBreak;
    m_kind = Segments;
    return true;
}

bool TextMatcher::segmentAt(const QString &text, int pos, const Segment &segment) const
{
    const QChar *t = text.constData() + pos;
    for (int k = 0; k < segment.units.size(); ++k) {
        const int p = segment.units.at(k);
        if (p >= 0 && foldedUnit(t[k].unicode(), m_cs) != uint(p))
            return false;
    }
    return true;
}

int TextMatcher::findSegment(const QString &text, int from, int to, const Segment &segment) const
{
    if (segment.foldedScan) {
        const QChar *t = text.constData();
        const uint first = uint(segment.units.first());
        for (int pos = from; pos + segment.units.size() <= to; ++pos) {
            if (foldedUnit(t[pos].unicode(), m_cs) == first && segmentAt(text, pos, segment))
                return pos;
        }
        return -1;
    }
    if (!segment.anyOne)
        return segment.finder.indexIn(text.constData(), to, from);
    for (int pos = from; pos + segment.units.size() <= to; ++pos) {
        if (segmentAt(text, pos, segment))
            return pos;
    }
    return -1;
}

TextMatcher::Answer TextMatcher::segmentsAnswer(const QString &text) const
{
    // A "?" counts code points and a regular expression's "." stops at line
    // breaks: texts where units and code points or line breaks matter are
    // answered by the slower matchers.
    if (m_segmentsAnyOne || m_segmentsStopAtLineBreak) {
        for (const QChar c : text) {
            const ushort u = c.unicode();
            if ((m_segmentsAnyOne && QChar::isSurrogate(u)) || (m_segmentsStopAtLineBreak && isLineBreak(u)))
                return Undecided;
        }
    }
    int from = 0;
    int to = text.size();
    int first = 0;
    int last = m_segments.size();
    if (m_segmentsFromStart && first < last) {
        const Segment &segment = m_segments.at(first++);
        if (segment.units.size() > to || !segmentAt(text, 0, segment))
            return NoMatch;
        from = segment.units.size();
    }
    if (m_segmentsToEnd && first < last) {
        const Segment &segment = m_segments.at(--last);
        if (to - segment.units.size() < from || !segmentAt(text, to - segment.units.size(), segment))
            return NoMatch;
        to -= segment.units.size();
    } else if (m_segmentsToEnd && from != to) {
        return NoMatch; // a single segment that must span the whole text
    }
    for (int i = first; i < last; ++i) {
        const int pos = findSegment(text, from, to, m_segments.at(i));
        if (pos < 0)
            return NoMatch;
        from = pos + m_segments.at(i).units.size();
    }
    return Match;
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
