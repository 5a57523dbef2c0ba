#include "FilterStatisticsValueConsumer.h"

#include "AlarmChanges.h"
#include "AlarmsModel.h"

FilterStatisticsValueConsumer::FilterStatisticsValueConsumer(const MsgLoggingProducer *logger)
    : ColorUsageCounter(logger), m_notifier(new FilterStatisticsNotifier)
{
    rebuildPlaceholders();
}

FilterStatisticsValueConsumer::~FilterStatisticsValueConsumer()
{
    if (m_model)
        m_model->removeConsumer(this);
}

void FilterStatisticsValueConsumer::configure(const FilterViewItemConfiguration &item)
{
    m_colorValues = item.getColorValues();
    setFilterDpName(item.getFilterDpName());
    setTextTemplate(item.getTextTemplate());
    setTooTipTemplate(item.getToolTipTemplate());
    setFilter(item.getId(), item.getFilter()); // rebuilds the placeholders and recounts
    setBackColorSource(item.getBackColorSource());
    setForeColorSource(item.getForeColorSource());
}

void FilterStatisticsValueConsumer::setFilter(const QString &id, const SourceAndFilter &filter)
{
    m_id = id;
    m_matcher.setFilter(filter);
    rebuildPlaceholders();
    recount();
}

void FilterStatisticsValueConsumer::setModel(const QSharedPointer<AlarmsModel> &model)
{
    if (model == m_model)
        return;
    if (m_model)
        m_model->removeConsumer(this);
    m_model = model;
    if (m_model)
        m_model->addConsumer(this);
    recount();
}

void FilterStatisticsValueConsumer::setTextTemplate(const QString &text)
{
    m_textTemplate = text;
    m_renderOnBlink = false;
    for (auto it = m_colorValues.constBegin(); it != m_colorValues.constEnd(); ++it)
        m_renderOnBlink = m_renderOnBlink || text.contains(it.key());
    m_text = render(m_textTemplate, m_lastStats);
}

void FilterStatisticsValueConsumer::setTooTipTemplate(const QString &toolTip)
{
    m_toolTipTemplate = toolTip;
    m_toolTip = render(m_toolTipTemplate, m_lastStats);
}

void FilterStatisticsValueConsumer::setBackColorSource(const FilterViewItemConfiguration::StatsColorSource &source)
{
    m_backSource = source;
    m_backColor = colorSource(source);
    updateColorUsage();
}

void FilterStatisticsValueConsumer::setForeColorSource(const FilterViewItemConfiguration::StatsColorSource &source)
{
    m_foreSource = source;
    m_foreColor = colorSource(source);
    updateColorUsage();
}

void FilterStatisticsValueConsumer::setSingleRowPerPair(bool single)
{
    if (single == m_singleRowPerPair)
        return;
    m_singleRowPerPair = single;
    recount();
}

void FilterStatisticsValueConsumer::compareWithCurrentFilter(const SourceAndFilter &current)
{
    const bool matches = current.isFilterEqual(m_matcher.getFilter());
    if (matches == m_matchesCurrentFilter)
        return;
    m_matchesCurrentFilter = matches;
    matchCurrentFilterChanged();
}

void FilterStatisticsValueConsumer::setColorValue(const QString &placeholder, const FilterStatisticsValue &value)
{
    m_colorValues.insert(placeholder, value);
    rebuildPlaceholders();
    setTextTemplate(m_textTemplate);
    m_backColor = colorSource(m_backSource);
    m_foreColor = colorSource(m_foreSource);
    updateColorUsage();
    statisticsChanged();
}

QString FilterStatisticsValueConsumer::render(const QString &templ, const FilterStatistics *stats) const
{
    QString text = templ;
    for (auto it = m_placeholders.constBegin(); it != m_placeholders.constEnd(); ++it) {
        if (text.contains(it.key()))
            text.replace(it.key(), it.value()->getText(stats, it.key()));
    }
    return text;
}

void FilterStatisticsValueConsumer::alarmsReset(const AlarmsModel &)
{
    recount();
}

void FilterStatisticsValueConsumer::alarmsChanged(const AlarmsModel &, const AlarmChanges &changes)
{
    const auto count = [this](const AlarmInstancePtr &alarm, int delta) {
        if (isCounted(*alarm))
            m_stats.countAlarm(*alarm, m_matcher.matches(*alarm), delta);
    };
    for (const AlarmInstancePtr &alarm : changes.removed)
        count(alarm, -1);
    for (const auto &change : changes.updated) {
        count(change.first, -1);
        count(change.second, 1);
    }
    for (const AlarmInstancePtr &alarm : changes.added)
        count(alarm, 1);
    statisticsChanged();
}

void FilterStatisticsValueConsumer::modelDestroyed(const AlarmsModel &)
{
    m_model.reset();
    recount();
}

void FilterStatisticsValueConsumer::statisticsChanged()
{
    m_lastStats = &m_stats;
    for (FilterStatisticsValue *value : qAsConst(m_placeholders))
        value->takeStatistics(m_lastStats);
    if (m_fixedBack)
        m_fixedBack->takeStatistics(m_lastStats);
    if (m_fixedFore)
        m_fixedFore->takeStatistics(m_lastStats);
    m_text = render(m_textTemplate, m_lastStats);
    m_toolTip = render(m_toolTipTemplate, m_lastStats);
    m_notifier->announce(m_lastStats);
}

bool FilterStatisticsValueConsumer::isCounted(const AlarmInstance &alarm) const
{
    return !m_singleRowPerPair || alarm.getData().direction == AlarmInstance::Came;
}

void FilterStatisticsValueConsumer::recount()
{
    m_stats.clear();
    if (m_model) {
        for (const AlarmInstancePtr &alarm : m_model->getAlarms()) {
            if (isCounted(*alarm))
                m_stats.countAlarm(*alarm, m_matcher.matches(*alarm), 1);
        }
    }
    statisticsChanged();
}

void FilterStatisticsValueConsumer::rebuildPlaceholders()
{
    m_placeholders.clear();
    m_values.clear();
    const auto add = [this](const QString &placeholder, const FilterStatisticsValue &value) {
        m_values.emplace_back(new FilterStatisticsValue(value));
        m_placeholders.insert(placeholder, m_values.back().get());
    };
    for (int q = FilterStatistics::Matching; q <= FilterStatistics::HighestPriority; ++q) {
        const auto quantity = FilterStatistics::Quantity(q);
        add(QLatin1Char('%') + FilterStatistics::quantityKey(quantity) + QLatin1Char('%'),
            FilterStatisticsValue::quantity(quantity));
    }
    add(QStringLiteral("%id%"), FilterStatisticsValue::filterName(m_id));
    for (auto it = m_colorValues.constBegin(); it != m_colorValues.constEnd(); ++it)
        add(it.key(), it.value());
    // The pointers into the old values are gone.
    m_backColor = colorSource(m_backSource);
    m_foreColor = colorSource(m_foreSource);
}

FilterStatisticsValue *
FilterStatisticsValueConsumer::colorSource(const FilterViewItemConfiguration::StatsColorSource &source)
{
    std::unique_ptr<FilterStatisticsValue> &fixed = &source == &m_backSource ? m_fixedBack : m_fixedFore;
    fixed.reset();
    if (!source.getPlaceholder().isEmpty()) {
        FilterStatisticsValue *value = m_placeholders.value(source.getPlaceholder());
        if (!value || !value->isColor()) {
            ASLOG(this, MsgLoggerEnums::Warning,
                  QStringLiteral("colour source '%1' is not a colour value").arg(source.getPlaceholder()));
            return nullptr;
        }
        return value;
    }
    if (source.getColorName().isEmpty())
        return nullptr;
    fixed.reset(new FilterStatisticsValue(FilterStatisticsValue::color({}, source.getColorName())));
    fixed->takeStatistics(m_lastStats);
    return fixed.get();
}

void FilterStatisticsValueConsumer::updateColorUsage()
{
    QStringList colors;
    for (FilterStatisticsValue *value : {m_backColor, m_foreColor}) {
        if (value)
            colors += value->getColorNames();
    }
    if (m_renderOnBlink) {
        for (const FilterStatisticsValue &value : qAsConst(m_colorValues))
            colors += value.getColorNames();
    }
    colors.removeDuplicates();
    for (const QString &name : colors)
        incrementColorUsage(name);
    for (const QString &name : qAsConst(m_usedColors))
        decrementColorUsage(name);
    m_usedColors = colors;
}
