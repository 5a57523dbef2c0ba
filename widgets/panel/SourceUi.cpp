#include "SourceUi.h"

#include "AlarmScreenConfiguration.h"
#include "SourceAndFilter.h"

SourceUi::SourceUi(const AlarmScreenConfiguration &config, QWidget *parent)
    : QWidget(parent), MsgLoggingProducer(&config), m_timeRange(&config, Qt::LocalTime)
{
}

SourceUi::~SourceUi() = default;

Qt::TimeSpec SourceUi::getTimeSpec() const
{
    return m_timeRange.getTimeSpec();
}

void SourceUi::setTimeSpec(Qt::TimeSpec timeSpec)
{
    m_timeRange.setTimeSpec(timeSpec);
}

void SourceUi::connectedSystemsChanged(const QStringList &systems)
{
    Q_UNUSED(systems)
}

void SourceUi::addToFilter(const SourceAndFilter &filter) const
{
    SourceAndFilter &record = writableRecord(filter);
    record.setSourceMode(m_mode);
    record.setTimeRange(m_timeRange);
}

SourceAndFilter &SourceUi::writableRecord(const SourceAndFilter &filter)
{
    return const_cast<SourceAndFilter &>(filter);
}

QString SourceUi::prepareArchiveMode(const QDateTime &start, const QDateTime &end,
                                     const QStringList &systems)
{
    // Without a system selection of its own, the systems are kept as the
    // selection to start the history mode with.
    if (!systems.isEmpty())
        m_initialSystems = systems;
    m_timeRange.setRangeType(TimeRange::CustomInterval);
    m_timeRange.setStartSeconds(start.toSecsSinceEpoch());
    m_timeRange.setEndSeconds(end.toSecsSinceEpoch());
    if (m_mode != m_historyMode) {
        m_mode = m_historyMode;
        emit changed();
    }
    return QString();
}

bool SourceUi::mayApplySettings() const
{
    return m_mayApplySettings;
}

void SourceUi::setMayApplySettings(bool on)
{
    m_mayApplySettings = on;
}
