#pragma once

#include "AlarmMatcher.h"
#include "AlarmsModelConsumer.h"
#include "ColorUsageCounter.h"
#include "FilterStatistics.h"
#include "FilterStatisticsNotifier.h"
#include "FilterStatisticsValue.h"
#include "FilterViewItemConfiguration.h"
#include "alarmmodel_export.h"

#include <QMap>
#include <QSharedPointer>

#include <memory>
#include <vector>

class AlarmsModel;

// Counts the alarms of an alarm model that match one filter and renders the
// statistics into text and tool tip templates. A template holds
// placeholders: the quantities "%matching%", "%total%", "%unacknowledged%",
// "%cameUnacknowledged%", "%cameAcknowledged%", "%wentUnacknowledged%",
// "%disconnected%", "%highestPriority%", the filter's id "%id%", and the
// colour values of the item configuration under their own placeholders.
//
// Counts follow every change of the model, alarm by alarm. The colour names
// the consumer may show are registered with its usage counter (and so with
// the final target, the colour engine).
class ALARMMODEL_EXPORT FilterStatisticsValueConsumer : public AlarmsModelConsumer, public ColorUsageCounter
{
public:
    explicit FilterStatisticsValueConsumer(const MsgLoggingProducer *logger = nullptr);
    ~FilterStatisticsValueConsumer() override;

    // Takes filter, templates, colour values and colour sources of an item.
    void configure(const FilterViewItemConfiguration &item);

    virtual void setFilterDpName(const QString &dpName) { m_filterDpName = dpName; }
    virtual void setFilter(const QString &id, const SourceAndFilter &filter);
    virtual void setModel(const QSharedPointer<AlarmsModel> &model);
    virtual void setTextTemplate(const QString &text);
    virtual void setTooTipTemplate(const QString &toolTip);
    virtual void setBackColorSource(const FilterViewItemConfiguration::StatsColorSource &source);
    virtual void setForeColorSource(const FilterViewItemConfiguration::StatsColorSource &source);
    // Counting a came/went pair once: went rows are not counted.
    virtual void setSingleRowPerPair(bool single);
    // Marks whether this consumer's filter is the one in force in the table;
    // matchCurrentFilterChanged() follows a change.
    void compareWithCurrentFilter(const SourceAndFilter &current);
    bool isMatchingCurrentFilter() const { return m_matchesCurrentFilter; }
    virtual void matchCurrentFilterChanged() {}

    // Adds a colour value under `placeholder` (replacing one of that name).
    void setColorValue(const QString &placeholder, const FilterStatisticsValue &value);

    QString getId() const { return m_id; }
    QString getFilterDpName() const { return m_filterDpName; }
    const SourceAndFilter &getFilter() const { return m_matcher.getFilter(); }
    const QSharedPointer<AlarmsModel> &getModel() const { return m_model; }
    const FilterStatistics &getStatistics() const { return m_stats; }
    // Null until statistics were counted.
    const FilterStatistics *getLastStatistics() const { return m_lastStats; }
    const QMap<QString, FilterStatisticsValue *> &getPlaceholders() const { return m_placeholders; }
    QString getTextTemplate() const { return m_textTemplate; }
    QString getToolTipTemplate() const { return m_toolTipTemplate; }
    QString getText() const { return m_text; }
    QString getToolTip() const { return m_toolTip; }
    FilterStatisticsValue *getBackColorSource() const { return m_backColor; }
    FilterStatisticsValue *getForeColorSource() const { return m_foreColor; }
    // True when the text template shows a colour value (its text then
    // follows blinking colours).
    bool isTextRenderedOnBlink() const { return m_renderOnBlink; }
    FilterStatisticsNotifier *getNotifier() const { return m_notifier.get(); }

    // A template with every placeholder replaced for `stats`.
    QString render(const QString &templ, const FilterStatistics *stats) const;

    // AlarmsModelConsumer
    void alarmsReset(const AlarmsModel &model) override;
    void alarmsChanged(const AlarmsModel &model, const AlarmChanges &changes) override;
    void modelDestroyed(const AlarmsModel &model) override;

protected:
    // Called after every recount; renders and announces.
    virtual void statisticsChanged();

private:
    bool isCounted(const AlarmInstance &alarm) const;
    void recount();
    void rebuildPlaceholders();
    FilterStatisticsValue *colorSource(const FilterViewItemConfiguration::StatsColorSource &source);
    void updateColorUsage();

    QString m_id;
    QString m_filterDpName;
    AlarmMatcher m_matcher;
    QSharedPointer<AlarmsModel> m_model;
    FilterStatistics m_stats;
    const FilterStatistics *m_lastStats = nullptr;
    bool m_singleRowPerPair = false;
    bool m_matchesCurrentFilter = false;
    QString m_textTemplate;
    QString m_toolTipTemplate;
    QString m_text;
    QString m_toolTip;
    bool m_renderOnBlink = false;
    QMap<QString, FilterStatisticsValue> m_colorValues;
    std::vector<std::unique_ptr<FilterStatisticsValue>> m_values; // owned by the placeholder map
    QMap<QString, FilterStatisticsValue *> m_placeholders;
    FilterViewItemConfiguration::StatsColorSource m_backSource;
    FilterViewItemConfiguration::StatsColorSource m_foreSource;
    FilterStatisticsValue *m_backColor = nullptr;
    FilterStatisticsValue *m_foreColor = nullptr;
    std::unique_ptr<FilterStatisticsValue> m_fixedBack;
    std::unique_ptr<FilterStatisticsValue> m_fixedFore;
    QStringList m_usedColors;
    std::unique_ptr<FilterStatisticsNotifier> m_notifier;
};
