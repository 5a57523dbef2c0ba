#pragma once

#include "ColumnDefinition.h"
#include "FilterWidgetConfiguration.h"
#include "GroupingConfiguration.h"
#include "MouseProcessorConfiguration.h"
#include "MsgLoggingProducer.h"
#include "WildcardConfig.h"
#include "alarmmodel_export.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QStringList>

// The configuration of one alarm screen instance, loaded from one JSON file
// (format in docs/filters.md):
//
//   {"format": "AlarmScreen.Configuration", "version": 1,
//    "wildcards": {...}, "filterWidget": {...}, "mouseProcessor": {...},
//    "grouping": {...}, "columns": [...], other sections...}
//
// Every section is optional. Top-level sections this record does not read
// (for example the demo's simulated systems) are kept and available through
// getSection(); misspelt keys inside the known sections are errors.
//
// It is a logging producer: the components built from it log like it does.
class ALARMMODEL_EXPORT AlarmScreenConfiguration : public MsgLoggingProducer
{
public:
    static const char *const FileFormat;
    static constexpr int FileVersion = 1;

    AlarmScreenConfiguration();
    explicit AlarmScreenConfiguration(const MsgLoggingProducer *logger);
    AlarmScreenConfiguration(const AlarmScreenConfiguration &other) = default;
    AlarmScreenConfiguration &operator=(const AlarmScreenConfiguration &other) = default;
    ~AlarmScreenConfiguration() override;

    // The wildcard rules, carrying this configuration's current logging settings.
    WildcardConfig getWildcardConfig() const;
    void setWildcardConfig(const WildcardConfig &config) { m_wildcardConfig = config; }

    const FilterWidgetConfiguration &getFilterWidgetConfig() const { return m_filterWidgetConfig; }
    void setFilterWidgetConfig(const FilterWidgetConfiguration &config) { m_filterWidgetConfig = config; }

    const MouseProcessorConfiguration &getMouseProcessorConfig() const { return m_mouseProcessorConfig; }
    void setMouseProcessorConfig(const MouseProcessorConfiguration &config) { m_mouseProcessorConfig = config; }

    const GroupingConfiguration &getGroupingConfig() const { return m_groupingConfig; }
    void setGroupingConfig(const GroupingConfiguration &config) { m_groupingConfig = config; }

    const QList<ColumnDefinition> &getColumns() const { return m_columns; }
    void setColumns(const QList<ColumnDefinition> &columns) { m_columns = columns; }

    // A top-level section that this record does not interpret (an empty object
    // when absent), and the names of all such sections.
    QJsonObject getSection(const QString &name) const;
    QStringList getSectionNames() const;

    QJsonObject toJson() const;
    // On failure `error` names the file position or field and nothing changes.
    bool fromJson(const QJsonObject &object, QString &error);
    bool fromJsonText(const QByteArray &text, QString &error);
    bool loadFromFile(const QString &fileName, QString &error);

private:
    WildcardConfig m_wildcardConfig;
    FilterWidgetConfiguration m_filterWidgetConfig;
    MouseProcessorConfiguration m_mouseProcessorConfig;
    GroupingConfiguration m_groupingConfig;
    QList<ColumnDefinition> m_columns;
    QJsonObject m_otherSections;
};
