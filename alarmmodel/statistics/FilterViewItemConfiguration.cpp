#include "FilterViewItemConfiguration.h"

#include "JsonFieldReader.h"

#include <QJsonArray>

FilterViewItemConfiguration::StatsColorSource
FilterViewItemConfiguration::StatsColorSource::fromPlaceholder(const QString &placeholder)
{
    StatsColorSource source;
    source.m_placeholder = placeholder;
    return source;
}

FilterViewItemConfiguration::StatsColorSource
FilterViewItemConfiguration::StatsColorSource::fromColorName(const QString &name)
{
    StatsColorSource source;
    source.m_colorName = name;
    return source;
}

namespace {

bool readColorValue(const QJsonObject &object, const QString &path, FilterStatisticsValue &value, QString &error)
{
    JsonFieldReader reader(object, path, error);
    QJsonArray rules;
    QString defaultColor;
    reader.checkKnownKeys({QStringLiteral("rules"), QStringLiteral("default")});
    reader.readArray(QStringLiteral("rules"), rules);
    reader.readString(QStringLiteral("default"), defaultColor);
    QVector<FilterStatisticsValue::ColorRule> parsed;
    for (int i = 0; reader.ok() && i < rules.size(); ++i) {
        const QString rulePath = reader.fieldPath(QStringLiteral("rules")) + QStringLiteral("[%1]").arg(i);
        if (!rules.at(i).isObject())
            return reader.fail(rulePath + QStringLiteral(" must be an object"));
        JsonFieldReader ruleReader(rules.at(i).toObject(), rulePath, error);
        FilterStatisticsValue::ColorRule rule;
        QString when;
        ruleReader.checkKnownKeys({QStringLiteral("when"), QStringLiteral("atLeast"), QStringLiteral("color")});
        ruleReader.readString(QStringLiteral("when"), when, true);
        ruleReader.readInt(QStringLiteral("atLeast"), rule.minimum);
        ruleReader.readString(QStringLiteral("color"), rule.color, true);
        if (ruleReader.ok() && !FilterStatistics::quantityFromKey(when, rule.quantity))
            ruleReader.fail(ruleReader.fieldPath(QStringLiteral("when")) + QStringLiteral(" names no statistics quantity: ") + when);
        if (!ruleReader.ok())
            return false;
        parsed.append(rule);
    }
    if (!reader.ok())
        return false;
    value = FilterStatisticsValue::color(parsed, defaultColor);
    return true;
}

} // namespace

bool FilterViewItemConfiguration::fromJson(const QJsonObject &object, const QString &path,
                                           const WildcardConfig &wildcards, QString &error)
{
    FilterViewItemConfiguration item;
    JsonFieldReader reader(object, path, error);
    QJsonObject filter;
    QJsonObject colors;
    QString back;
    QString fore;
    reader.checkKnownKeys({QStringLiteral("id"), QStringLiteral("row"), QStringLiteral("column"),
                           QStringLiteral("filterDp"), QStringLiteral("filter"), QStringLiteral("text"),
                           QStringLiteral("toolTip"), QStringLiteral("colors"), QStringLiteral("backColor"),
                           QStringLiteral("foreColor")});
    reader.readString(QStringLiteral("id"), item.m_id, true);
    reader.readInt(QStringLiteral("row"), item.m_row);
    reader.readInt(QStringLiteral("column"), item.m_column);
    reader.readString(QStringLiteral("filterDp"), item.m_filterDp);
    reader.readObject(QStringLiteral("filter"), filter);
    reader.readString(QStringLiteral("text"), item.m_text);
    reader.readString(QStringLiteral("toolTip"), item.m_toolTip);
    reader.readObject(QStringLiteral("colors"), colors);
    reader.readString(QStringLiteral("backColor"), back);
    reader.readString(QStringLiteral("foreColor"), fore);
    if (reader.ok() && (item.m_row < 0 || item.m_column < 0))
        reader.fail(reader.fieldPath(QStringLiteral("row")) + QStringLiteral(" and column must not be negative"));
    if (reader.ok() && !filter.isEmpty()) {
        QString filterError;
        if (!item.m_filter.fromJson(filter, filterError, &wildcards))
            reader.fail(reader.fieldPath(QStringLiteral("filter")) + QStringLiteral(": ") + filterError);
    }
    for (auto it = colors.constBegin(); reader.ok() && it != colors.constEnd(); ++it) {
        const QString colorPath = reader.fieldPath(QStringLiteral("colors")) + QLatin1Char('.') + it.key();
        if (!it.value().isObject()) {
            reader.fail(colorPath + QStringLiteral(" must be an object"));
            break;
        }
        FilterStatisticsValue value;
        if (!readColorValue(it.value().toObject(), colorPath, value, error))
            return false;
        item.m_colors.insert(it.key(), value);
    }
    if (!reader.ok())
        return false;
    const auto source = [&item](const QString &text) {
        if (text.isEmpty())
            return StatsColorSource();
        return item.m_colors.contains(text) ? StatsColorSource::fromPlaceholder(text)
                                            : StatsColorSource::fromColorName(text);
    };
    item.m_backColor = source(back);
    item.m_foreColor = source(fore);
    *this = item;
    return true;
}
