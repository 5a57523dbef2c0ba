#pragma once

#include "alarmmodel_export.h"

#include <QRegularExpression>
#include <QString>
#include <QStringMatcher>
#include <QVector>

#include <algorithm>

// One compiled text pattern: an exact text, a wildcard pattern or a regular
// expression, matched against the whole text or anywhere inside it.
//
// Filters match the same pattern against many thousands of values, so the
// pattern is analysed once: wildcard patterns that are really a plain text,
// a prefix, a suffix or an infix are matched with string comparisons, other
// wildcard patterns (and regular expressions made only of literal characters,
// "." and ".*") as literal segments between stars, searched in order. The
// expression engine only sees the remaining regular expressions, and the texts
// a segment search cannot answer alone (line breaks against a regular
// expression's "."; characters beyond the BMP against a "?").
//
// Wildcard syntax: "*" any sequence of characters (also none), "?" exactly one
// character, "\" makes the next character literal ("\*", "\?", "\\"). A
// character is a code point (a surrogate pair is one), line breaks included.
class ALARMMODEL_EXPORT TextMatcher
{
public:
    enum Method : int { Exact = 0, Wildcard = 1, RegularExpression = 2 };
    // The expression engine gives up on a text when matching backtracks beyond
    // its limits. A wildcard pattern is then matched without the engine; for a
    // regular expression the answer stays open and the caller decides.
    enum Answer : int { NoMatch = 0, Match = 1, Undecided = 2 };

    // An empty matcher: it matches every text.
    TextMatcher();

    // Compiles `pattern`. `wholeText` false lets the pattern match anywhere in a
    // text. Returns false, with `error` set when given, for an invalid regular
    // expression or an unknown method; the matcher then matches nothing.
    bool setPattern(const QString &pattern, Method method, Qt::CaseSensitivity cs, bool wholeText,
                    QString *error = nullptr);

    bool isValid() const { return m_kind != Invalid; }
    // True when every text matches (an empty pattern that may match anywhere,
    // or a wildcard pattern of stars only).
    bool matchesEverything() const { return m_kind == MatchAll; }
    Answer answer(const QString &text) const
    {
        // Plain texts, prefixes and suffixes are answered here, without a call.
        const int n = m_text.size();
        switch (m_kind) {
        case MatchAll:
            return Match;
        case Equal:
            return text.size() == n && literalAt(text.constData()) ? Match : NoMatch;
        case StartsWith:
            return text.size() >= n && literalAt(text.constData()) ? Match : NoMatch;
        case EndsWith:
            return text.size() >= n && literalAt(text.constData() + text.size() - n) ? Match : NoMatch;
        default:
            return searchAnswer(text);
        }
    }
    // Undecided counts as no match here. Exact texts and wildcard patterns are
    // never undecided; callers taking regular expressions use answer().
    bool matches(const QString &text) const { return answer(text) == Match; }

    // Converts a wildcard pattern into an (unanchored) regular expression
    // pattern, for use with QRegularExpression::DotMatchesEverythingOption.
    static QString wildcardToRegularExpression(const QString &pattern);

private:
    enum Kind { MatchAll, Equal, StartsWith, EndsWith, Contains, Segments, Regex, Invalid };

    // A run of a pattern between two stars: UTF-16 units, case folded unless
    // case counts, -1 for "?".
    struct Segment {
        QVector<int> units;
        bool anyOne = false;
        // ASCII with letters, case ignored: searched unit by unit, letters
        // folded by hand, which is cheaper than Qt's folding of every unit.
        bool foldedScan = false;
        QStringMatcher finder; // for the other segments without "?"
    };

    // How a literal is compared: unit by unit, ASCII letters folded by hand
    // (m_text then holds the folded literal), or by Qt's case folding.
    enum LiteralCase { LiteralExact, LiteralAsciiFolded, LiteralFolded };

    // Whether the literal is at `t` (m_text.size() units).
    bool literalAt(const QChar *t) const
    {
        const QChar *p = m_text.constData();
        const int n = m_text.size();
        switch (m_literalCase) {
        case LiteralExact:
            return std::equal(p, p + n, t);
        case LiteralAsciiFolded:
            for (int k = 0; k < n; ++k) {
                const ushort u = t[k].unicode();
                if (u == p[k].unicode())
                    continue;
                // Only a capital or a character folding onto an ASCII letter
                // (Kelvin sign, long s) can still be equal.
                if (u < 0x80 ? u + ushort('a' - 'A') != p[k].unicode() || u < 'A' || u > 'Z'
                             : QChar::toCaseFolded(u) != p[k].unicode())
                    return false;
            }
            return true;
        case LiteralFolded:
            break;
        }
        return QStringView(t, n).compare(QStringView(m_text), Qt::CaseInsensitive) == 0;
    }
    Answer searchAnswer(const QString &text) const;
    void setLiteral(const QString &text, bool anchoredStart, bool anchoredEnd);
    bool setSegments(const QVector<uint> &tokens, bool wholeText, bool dotStopsAtLineBreak);
    Answer segmentsAnswer(const QString &text) const;
    bool segmentAt(const QString &text, int pos, const Segment &segment) const;
    int findSegment(const QString &text, int from, int to, const Segment &segment) const;
    bool wildcardMatches(const QString &text) const;

    Kind m_kind = MatchAll;
    Qt::CaseSensitivity m_cs = Qt::CaseInsensitive;
    LiteralCase m_literalCase = LiteralExact;
    QString m_text;
    QStringMatcher m_finder;
    QRegularExpression m_regex;
    // The wildcard pattern behind m_regex as code points (see the source), case
    // folded unless case counts, framed by stars when it may match anywhere;
    // empty for regular expressions.
    QVector<uint> m_wildcard;
    QVector<Segment> m_segments;
    bool m_segmentsFromStart = false;
    bool m_segmentsToEnd = false;
    bool m_segmentsAnyOne = false;
    // Set when the segments come from a regular expression, whose "." does
    // not match a line break.
    bool m_segmentsStopAtLineBreak = false;
};
