#pragma once

#include "ValueFilter.h"
#include "alarmmodel_export.h"

#include <QRegularExpression>
#include <QStringList>
#include <QVector>

// Number rules typed by the operator, e.g. ">10; !15; 100-200".
//
// The text is split at ";" and ","; each part (blanks removed) is one rule in
// the syntax of rulePattern(): an optional "!" (negation), an optional ">" or
// "<", a number, and optionally "-" and a second number (a range, both ends
// included; the ends may be given in either order). A comparison and a range
// cannot be combined.
//
// A value passes when it satisfies at least one plain rule (or there is none)
// and none of the negated rules. A value that is not a number never passes a
// non-empty number filter.
class ALARMMODEL_EXPORT ValueFilterNumbers : public ValueFilter
{
public:
    ValueFilterNumbers(const WildcardConfig &config, const QString &valueId, Constants::ValueSource source,
                       bool matchCase);
    ValueFilterNumbers(const ValueFilterNumbers &other) = default;
    ValueFilterNumbers &operator=(const ValueFilterNumbers &other) = default;
    ~ValueFilterNumbers() override;

    Kind getKind() const override { return NumbersKind; }
    QSharedPointer<ValueFilter> clone() const override;

    // Parses the text into rules. Parts that do not parse are listed in
    // getFailedParts() and ignored; returns true when every part parsed.
    bool setFilterText(const QString &text);
    QString getFilterText() const { return m_text; }
    // One readable description per understood rule ("greater than 10",
    // "not between 1 and 2"), in input order.
    QStringList getRuleDescriptions() const;
    // The input parts that could not be parsed, as typed.
    QStringList getFailedParts() const { return m_failedParts; }

    bool isEmpty() const override { return m_rules.isEmpty(); }
    QString describeContent() const override;
    bool matches(const QVariant &value) const override;
    bool matchesInteger(int value) const override { return matchesNumber(value); }
    bool matchesDouble(double value) const override { return matchesNumber(value); }
    bool matchesNumber(double value) const;

    // The syntax of one rule: "^(!)?([><])?(-?[\d\.]+)(?:-(-?[\d\.]+))?$"; groups
    // 1 negation, 2 comparison, 3 first number, 4 the range's second number.
    static QString rulePattern();

private:
    enum Comparison { Equal, Greater, Less, Range };
    struct Rule {
        bool negated = false;
        Comparison comparison = Equal;
        double first = 0.0;
        double second = 0.0;
        bool operator==(const Rule &o) const;
    };
    static bool parseRule(const QString &part, Rule &rule);
    static QString describeRule(const Rule &rule);
    static bool satisfies(const Rule &rule, double value);

protected:
    bool isContentEqual(const ValueFilter &other) const override;
    void writeContent(QJsonObject &object) const override;
    bool readContent(const QJsonObject &object, const QString &path, QString &error) override;

private:
    QString m_text;
    QVector<Rule> m_rules;
    QStringList m_failedParts;
    bool m_hasPlainRules = false;
};
