#pragma once

#include "Constants.h"
#include "FilterRuleContainer.h"
#include "FilterValueProvider.h"
#include "MsgLoggingProducer.h"
#include "TimeRange.h"
#include "alarmmodel_export.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMetaType>
#include <QSharedPointer>
#include <QStringList>

// One choice of alarm source together with its structured filter: what the
// source and filter panel hands to the owner to apply, and what "Save Filter..."
// and "Load Filter..." write and read.
//
// Members by role: the filter container (may be null: no structured filter),
// the time range of a history query, the selected systems, the datapoint names,
// the source mode, and the selection kind telling whether the systems (0) or
// the datapoint names (1) select the alarms.
class ALARMMODEL_EXPORT SourceAndFilter : public MsgLoggingProducer
{
public:
    enum SelectionKind : int { SelectBySystems = 0, SelectByDpNames = 1 };

    // The format name written into saved files.
    static const char *const FileFormat;
    static constexpr int FileVersion = 1;

    SourceAndFilter();
    // Logging settings from `logger`; live mode, no filter, no systems.
    explicit SourceAndFilter(const MsgLoggingProducer *logger);
    SourceAndFilter(const SourceAndFilter &other) = default;
    SourceAndFilter &operator=(const SourceAndFilter &other) = default;
    ~SourceAndFilter() override;

    QSharedPointer<FilterRuleContainer> getFilterContainer() const { return m_filter; }
    void setFilterContainer(const QSharedPointer<FilterRuleContainer> &filter) { m_filter = filter; }

    const TimeRange &getTimeRange() const { return m_timeRange; }
    void setTimeRange(const TimeRange &range) { m_timeRange = range; }

    QStringList getSystems() const { return m_systems; }
    void setSystems(const QStringList &systems) { m_systems = systems; }

    QStringList getDpNames() const { return m_dpNames; }
    void setDpNames(const QStringList &dpNames) { m_dpNames = dpNames; }

    Constants::SourceMode getSourceMode() const { return m_sourceMode; }
    void setSourceMode(Constants::SourceMode mode) { m_sourceMode = mode; }

    int getSelectionKind() const { return m_selectionKind; }
    void setSelectionKind(int kind) { m_selectionKind = kind; }

    // True when the structured filter restricts nothing (no container, or only
    // empty rule sets). Source, time range and systems do not count.
    bool isEmpty() const;
    // Everything equal: filter (as isFilterEqual), source mode, time range,
    // systems, datapoint names and selection kind.
    bool isEqual(const SourceAndFilter &other) const;
    // The structured filters equal; a null container equals one without rule sets.
    bool isFilterEqual(const SourceAndFilter &other) const;

    // Whether one alarm passes the structured filter (always, without one).
    bool matches(const FilterValueProvider &values) const;

    // The file form (docs/filters.md): {"format": FileFormat, "version": 1,
    // "sourceMode": "Live", "timeRange": {...}, "systems": [...], "dpNames": [...],
    // "selectionKind": 0, "filter": {...} or null}.
    QJsonObject toJson() const;
    QByteArray toJsonText() const;
    // Value filters read get `config` (the screen's wildcard rules); without one
    // they get this record's logging settings and no wildcard characters.
    // On failure `error` says why and this record is unchanged.
    bool fromJson(const QJsonObject &object, QString &error, const WildcardConfig *config = nullptr);
    bool fromJsonText(const QByteArray &text, QString &error, const WildcardConfig *config = nullptr);
    bool saveToFile(const QString &fileName, QString &error) const;
    bool loadFromFile(const QString &fileName, QString &error, const WildcardConfig *config = nullptr);

private:
    QSharedPointer<FilterRuleContainer> m_filter;
    TimeRange m_timeRange;
    QStringList m_systems;
    QStringList m_dpNames;
    Constants::SourceMode m_sourceMode = Constants::SourceModeLive;
    int m_selectionKind = SelectBySystems;
};

Q_DECLARE_METATYPE(SourceAndFilter)
