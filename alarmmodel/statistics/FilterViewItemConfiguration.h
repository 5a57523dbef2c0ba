#pragma once

#include "FilterStatisticsValue.h"
#include "SourceAndFilter.h"
#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QMap>
#include <QString>

// One cell of a filter statistics view: where it sits, which filter it
// counts, the templates of its text and tool tip, the colour values it
// defines, and where its background and foreground colours come from.
// The JSON form is described in docs/alarms.md.
class ALARMMODEL_EXPORT FilterViewItemConfiguration
{
public:
    // A colour source: the placeholder of one of the item's colour values,
    // or a fixed colour name. Neither: the colour is left as it is.
    class StatsColorSource
    {
    public:
        StatsColorSource() = default;
        static StatsColorSource fromPlaceholder(const QString &placeholder);
        static StatsColorSource fromColorName(const QString &name);
        bool isEmpty() const { return m_placeholder.isEmpty() && m_colorName.isEmpty(); }
        const QString &getPlaceholder() const { return m_placeholder; }
        const QString &getColorName() const { return m_colorName; }
        bool operator==(const StatsColorSource &o) const
        {
            return m_placeholder == o.m_placeholder && m_colorName == o.m_colorName;
        }

    private:
        QString m_placeholder;
        QString m_colorName;
    };

    QString getId() const { return m_id; }
    int getRow() const { return m_row; }
    int getColumn() const { return m_column; }
    QString getFilterDpName() const { return m_filterDp; }
    const SourceAndFilter &getFilter() const { return m_filter; }
    QString getTextTemplate() const { return m_text; }
    QString getToolTipTemplate() const { return m_toolTip; }
    // Colour values by placeholder ("%state%").
    const QMap<QString, FilterStatisticsValue> &getColorValues() const { return m_colors; }
    const StatsColorSource &getBackColorSource() const { return m_backColor; }
    const StatsColorSource &getForeColorSource() const { return m_foreColor; }

    // On failure `error` names the field below `path` and nothing changes.
    bool fromJson(const QJsonObject &object, const QString &path, const WildcardConfig &wildcards, QString &error);

private:
    QString m_id;
    int m_row = 0;
    int m_column = 0;
    QString m_filterDp;
    SourceAndFilter m_filter;
    QString m_text;
    QString m_toolTip;
    QMap<QString, FilterStatisticsValue> m_colors;
    StatsColorSource m_backColor;
    StatsColorSource m_foreColor;
};
