#pragma once

// A small reference of the documented matching rules (docs/filters.md), kept
// deliberately naive so that it is obviously right: patterns and texts are
// sequences of code points, case folding is done per code point, and a
// wildcard is matched by dynamic programming over the whole text. The fuzz
// targets compare the real matchers against it.

#include <QChar>
#include <QRegularExpression>
#include <QString>
#include <QVector>

#include <vector>

namespace reference {

inline QVector<uint> codePoints(const QString &s, bool caseSensitive)
{
    QVector<uint> cps = s.toUcs4();
    if (!caseSensitive) {
        for (uint &c : cps)
            c = QChar::toCaseFolded(c);
    }
    return cps;
}

struct Token
{
    enum Kind { Literal, AnyOne, AnyRun } kind;
    uint c;
};

// "*" any run (also none), "?" exactly one code point, "\" makes the next
// character literal; a "\" at the very end stands for itself.
inline std::vector<Token> parseWildcard(const QString &pattern, bool caseSensitive)
{
    const QVector<uint> cps = codePoints(pattern, caseSensitive);
    std::vector<Token> tokens;
    for (int i = 0; i < cps.size(); ++i) {
        const uint c = cps.at(i);
        if (c == '\\' && i + 1 < cps.size())
            tokens.push_back({Token::Literal, cps.at(++i)});
        else if (c == '*')
            tokens.push_back({Token::AnyRun, 0});
        else if (c == '?')
            tokens.push_back({Token::AnyOne, 0});
        else
            tokens.push_back({Token::Literal, c});
    }
    return tokens;
}

// Does the wildcard `pattern` match all of `text` (or, with `whole` false, a part of it)?
inline bool wildcardMatches(const QString &pattern, const QString &text, bool caseSensitive, bool whole)
{
    std::vector<Token> tokens = parseWildcard(pattern, caseSensitive);
    if (!whole) {
        tokens.insert(tokens.begin(), Token{Token::AnyRun, 0});
        tokens.push_back(Token{Token::AnyRun, 0});
    }
    const QVector<uint> t = codePoints(text, caseSensitive);
    // can[j]: the tokens so far match the first j code points of the text.
    std::vector<char> can(size_t(t.size()) + 1, 0);
    can[0] = 1;
    for (const Token &token : tokens) {
        std::vector<char> next(can.size(), 0);
        for (size_t j = 0; j < can.size(); ++j) {
            if (token.kind == Token::AnyRun)
                next[j] = can[j] || (j > 0 && next[j - 1]);
            else if (j > 0 && can[j - 1])
                next[j] = token.kind == Token::AnyOne || t.at(int(j - 1)) == token.c;
        }
        can.swap(next);
    }
    return can.back();
}

inline bool literalMatches(const QString &literal, const QString &text, bool caseSensitive, bool whole)
{
    const QVector<uint> l = codePoints(literal, caseSensitive);
    const QVector<uint> t = codePoints(text, caseSensitive);
    if (whole)
        return l == t;
    for (int start = 0; start + l.size() <= t.size(); ++start) {
        if (t.mid(start, l.size()) == l)
            return true;
    }
    return false;
}

// Regular expressions are the engine's own language: the reference only fixes
// how they are applied (searched, or covering the whole text).
inline bool regexValid(const QString &pattern)
{
    return QRegularExpression(pattern).isValid();
}

inline bool regexMatches(const QString &pattern, const QString &text, bool caseSensitive, bool whole)
{
    QRegularExpression re(whole ? QStringLiteral("\\A(?:") + pattern + QStringLiteral(")\\z") : pattern,
                          caseSensitive ? QRegularExpression::NoPatternOption
                                        : QRegularExpression::CaseInsensitiveOption);
    return re.match(text).hasMatch();
}

} // namespace reference
