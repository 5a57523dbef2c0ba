#include "FilterStatisticsValue.h"

FilterStatisticsValue::~FilterStatisticsValue() = default;

FilterStatisticsValue FilterStatisticsValue::quantity(FilterStatistics::Quantity quantity)
{
    FilterStatisticsValue value;
    value.m_kind = Quantity;
    value.m_quantity = quantity;
    return value;
}

FilterStatisticsValue FilterStatisticsValue::filterName(const QString &name)
{
    FilterStatisticsValue value;
    value.m_kind = FilterName;
    value.m_name = name;
    value.m_currentText = name;
    return value;
}

FilterStatisticsValue FilterStatisticsValue::color(const QVector<ColorRule> &rules, const QString &defaultColor)
{
    FilterStatisticsValue value;
    value.m_kind = Color;
    value.m_rules = rules;
    value.m_defaultColor = defaultColor;
    return value;
}

QString FilterStatisticsValue::getText(const FilterStatistics *stats, const QString &) const
{
    if (m_kind == FilterName)
        return m_name;
    if (!stats)
        return QString();
    if (m_kind == Quantity)
        return QString::number(stats->get(m_quantity));
    for (const ColorRule &rule : m_rules) {
        if (stats->get(rule.quantity) >= rule.minimum)
            return rule.color;
    }
    return m_defaultColor;
}

QVariant FilterStatisticsValue::getValue(const FilterStatistics *stats) const
{
    if (m_kind == Quantity)
        return stats ? QVariant(stats->get(m_quantity)) : QVariant();
    return getText(stats, QString());
}

void FilterStatisticsValue::takeStatistics(const FilterStatistics *stats)
{
    m_currentText = getText(stats, QString());
}

QStringList FilterStatisticsValue::getColorNames() const
{
    QStringList names;
    if (m_kind != Color)
        return names;
    for (const ColorRule &rule : m_rules)
        names << rule.color;
    names << m_defaultColor;
    names.removeAll(QString());
    names.removeDuplicates();
    return names;
}
