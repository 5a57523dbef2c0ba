#pragma once

#include "FilterStatistics.h"
#include "alarmmodel_export.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

// What one placeholder of a statistics template stands for: a counted
// quantity, the filter's name, or a colour chosen by the counts. A colour
// value's text is a colour name for the colour engine: the colour of the
// first rule whose quantity reaches its minimum, else the default colour.
class ALARMMODEL_EXPORT FilterStatisticsValue
{
public:
    enum Kind : int { Quantity = 0, FilterName = 1, Color = 2 };

    struct ColorRule {
        FilterStatistics::Quantity quantity = FilterStatistics::Matching;
        int minimum = 1;
        QString color;
        bool operator==(const ColorRule &o) const
        {
            return quantity == o.quantity && minimum == o.minimum && color == o.color;
        }
    };

    static FilterStatisticsValue quantity(FilterStatistics::Quantity quantity);
    static FilterStatisticsValue filterName(const QString &name);
    static FilterStatisticsValue color(const QVector<ColorRule> &rules, const QString &defaultColor);

    FilterStatisticsValue() = default;
    virtual ~FilterStatisticsValue();
    FilterStatisticsValue(const FilterStatisticsValue &) = default;
    FilterStatisticsValue &operator=(const FilterStatisticsValue &) = default;

    Kind getKind() const { return m_kind; }
    bool isColor() const { return m_kind == Color; }
    // The text that replaces `placeholder` for these statistics (empty
    // without statistics, except for the filter name).
    virtual QString getText(const FilterStatistics *stats, const QString &placeholder) const;
    // The value as a statistics map reports it: a number for quantities,
    // a text otherwise.
    virtual QVariant getValue(const FilterStatistics *stats) const;
    // Remembers the text for `stats` as the current text.
    void takeStatistics(const FilterStatistics *stats);
    const QString &getCurrentText() const { return m_currentText; }
    // Every colour name this value can produce.
    QStringList getColorNames() const;

    const QVector<ColorRule> &getColorRules() const { return m_rules; }
    const QString &getDefaultColor() const { return m_defaultColor; }
    FilterStatistics::Quantity getQuantity() const { return m_quantity; }

private:
    Kind m_kind = Quantity;
    FilterStatistics::Quantity m_quantity = FilterStatistics::Matching;
    QString m_name;
    QVector<ColorRule> m_rules;
    QString m_defaultColor;
    QString m_currentText;
};
