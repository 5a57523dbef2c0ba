#include "TextMatcher.h"

#include <QCoreApplication>

TextMatcher::TextMatcher() = default;

QString TextMatcher::wildcardToRegularExpression(const QString &pattern)
{
    QString re;
    re.reserve(pattern.size() * 2);
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern.at(i);
        if (c == QLatin1Char('\\') && i + 1 < pattern.size())
            re += QRegularExpression::escape(QString(pattern.at(++i)));
        else if (c == QLatin1Char('*'))
            re += QLatin1String(".*");
        else if (c == QLatin1Char('?'))
            re += QLatin1Char('.');
        else
            re += QRegularExpression::escape(QString(c));
    }
    return re;
}

namespace {
// Splits a wildcard pattern into literal runs separated by "*"; false when it
// holds a "?" (which needs a regular expression).
bool splitAtStars(const QString &pattern, QStringList &runs)
{
    QString current;
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern.at(i);
        if (c == QLatin1Char('\\') && i + 1 < pattern.size()) {
            current += pattern.at(++i);
        } else if (c == QLatin1Char('*')) {
            runs << current;
            current.clear();
        } else if (c == QLatin1Char('?')) {
            return false;
        } else {
            current += c;
        }
    }
    runs << current;
    return true;
}
} // namespace

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
    switch (method) {
    case Exact:
        setLiteral(pattern, wholeText, wholeText);
        return true;
    case Wildcard: {
        QStringList runs;
        if (splitAtStars(pattern, runs)) {
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
        QString re = wildcardToRegularExpression(pattern);
        m_regex.setPattern(wholeText ? QRegularExpression::anchoredPattern(re) : re);
        break;
    }
    case RegularExpression:
        // Anchoring puts the pattern into a group, which would turn an
        // unbalanced "a)|(b" into a valid expression that means something else
        // than what was typed: the pattern must be valid as typed.
        m_regex.setPattern(pattern);
        if (wholeText && m_regex.isValid())
            m_regex.setPattern(QRegularExpression::anchoredPattern(pattern));
        break;
    default:
        m_kind = Invalid;
        if (error)
            *error = QCoreApplication::translate("TextMatcher", "unknown match method %1").arg(int(method));
        return false;
    }
    m_regex.setPatternOptions(cs == Qt::CaseInsensitive ? QRegularExpression::CaseInsensitiveOption
                                                        : QRegularExpression::NoPatternOption);
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
