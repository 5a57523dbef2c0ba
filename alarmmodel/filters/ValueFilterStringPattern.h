#pragma once

#include "TextMatcher.h"
#include "ValueFilter.h"
#include "alarmmodel_export.h"

#include <QStringList>
#include <QVector>

// A list of wildcard patterns typed by the operator, e.g. "pump*; valve?;!*test*".
//
// Syntax (docs/filters.md): parts are separated by ";" or ","; "\" before a
// separator makes it part of the pattern; blanks around a part are dropped.
// In a part "*" matches any sequence, "?" one character, "\" makes the next
// character literal. A part starting with "!" excludes what it matches. A part
// that is the match-all character matches everything; one that is the
// empty-pattern character matches an empty value.
//
// A value passes when it matches at least one including part (or there is
// none) and no excluding part. Patterns match the whole value.
class ALARMMODEL_EXPORT ValueFilterStringPattern : public ValueFilter
{
public:
    ValueFilterStringPattern(const WildcardConfig &config, const QString &valueId,
                             Constants::ValueSource source, bool matchCase);
    ValueFilterStringPattern(const ValueFilterStringPattern &other) = default;
    ValueFilterStringPattern &operator=(const ValueFilterStringPattern &other) = default;
    ~ValueFilterStringPattern() override;

    Kind getKind() const override { return StringPatternKind; }
    QSharedPointer<ValueFilter> clone() const override;

    // Parses the whole pattern text; every text parses.
    void setFilterText(const QString &text);
    QString getFilterText() const { return m_text; }
    // The parts as typed (escapes of separators removed), without "!".
    QStringList getIncludedPatterns() const { return m_includedPatterns; }
    QStringList getExcludedPatterns() const { return m_excludedPatterns; }

    void setMatchCase(bool matchCase) override;
    bool isEmpty() const override;
    QString describeContent() const override;
    bool matches(const QVariant &value) const override;
    bool matchesText(const QString &text) const override { return matchesPattern(text); }
    // The same answer without a virtual call, for filter loops that know the
    // filter's kind.
    bool matchesPattern(const QString &text) const
    {
        if (!m_includesAll && !m_includes.isEmpty()) {
            bool included = false;
            for (const TextMatcher &m : m_includes) {
                if (m.matches(text)) {
                    included = true;
                    break;
                }
            }
            if (!included)
                return false;
        }
        for (const TextMatcher &m : m_excludes) {
            if (m.matches(text))
                return false;
        }
        return true;
    }

    // Splits a pattern text at unescaped ";" and ","; the escape before a
    // separator is removed, other escapes are kept; parts are trimmed and empty
    // parts dropped.
    static QStringList splitPatternList(const QString &text);

protected:
    bool isContentEqual(const ValueFilter &other) const override;
    void writeContent(QJsonObject &object) const override;
    bool readContent(const QJsonObject &object, const QString &path, QString &error) override;

private:
    void compile();

    QString m_text;
    QStringList m_includedPatterns;
    QStringList m_excludedPatterns;
    QVector<TextMatcher> m_includes;
    QVector<TextMatcher> m_excludes;
    bool m_includesAll = false; // an including part matches everything
};
