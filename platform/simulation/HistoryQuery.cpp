#include "HistoryQuery.h"

#include "AlarmSimulator.h"

HistoryQuery::HistoryQuery(const AlarmSimulator *simulator, QObject *parent)
    : QObject(parent), m_simulator(simulator)
{
    qRegisterMetaType<AlarmRecordList>();
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &HistoryQuery::readStep);
}

bool HistoryQuery::start(const QDateTime &from, const QDateTime &to, const QStringList &systems,
                         QString &errorText)
{
    if (!from.isValid() || !to.isValid()) {
        errorText = tr("A history query needs a time range with a start and an end");
        return false;
    }
    if (to < from) {
        errorText = tr("The time range of the history query ends before it starts");
        return false;
    }
    if (systems.isEmpty()) {
        errorText = tr("No system selected for the history query");
        return false;
    }
    QVector<QSharedPointer<const SimulatedSystem>> selected;
    for (const QString &name : systems) {
        const auto system = m_simulator ? m_simulator->getSystem(name) : QSharedPointer<const SimulatedSystem>();
        if (!system || !system->getConfig().archive) {
            errorText = tr("System %1 has no alarm archive").arg(name);
            return false;
        }
        selected.append(system);
    }
    if (isRunning())
        abort();

    m_systems = selected;
    m_fromMs = from.toMSecsSinceEpoch();
    m_toMs = to.toMSecsSinceEpoch();
    m_systemIndex = 0;
    m_hour = m_fromMs / SimulatedSystem::msPerHour;
    m_hourRecords.clear();
    m_hourLoaded = false;
    m_hourOffset = 0;
    m_matching = 0;
    m_totalRead = 0;
    m_errorText.clear();
    setState(Starting);
    emit progress(0, 0);
    m_timer.start(m_simulator->getConfig().historyChunkIntervalMs);
    return true;
}

void HistoryQuery::abort()
{
    if (!isRunning())
        return;
    m_timer.stop();
    m_hourRecords.clear();
    setState(Aborted);
}

void HistoryQuery::readStep()
{
    if (!isRunning())
        return;
    if (m_state == Starting)
        setState(Reading);

    const SimulationConfig &config = m_simulator->getConfig();
    const qint64 lastHour = m_toMs / SimulatedSystem::msPerHour;
    AlarmRecordList matching;
    int budget = config.historyChunkSize;
    int emptyHours = 0; // bounds the work of one step over long, quiet ranges
    while (budget > 0 && m_systemIndex < m_systems.size() && emptyHours < 10000) {
        const SimulatedSystem &system = *m_systems.at(m_systemIndex);
        if (system.getConfig().archiveFails) {
            fail(tr("The alarm archive of system %1 is not available").arg(system.getName()));
            return;
        }
        if (!m_hourLoaded) {
            m_hourRecords = system.getArchiveHour(m_hour);
            m_hourOffset = 0;
            m_hourLoaded = true;
            if (m_hourRecords.isEmpty())
                ++emptyHours;
        }
        for (; budget > 0 && m_hourOffset < m_hourRecords.size(); ++m_hourOffset) {
            const AlarmRecord &record = m_hourRecords.at(m_hourOffset);
            if (record.timeMs < m_fromMs || record.timeMs > m_toMs)
                continue;
            --budget;
            ++m_totalRead;
            if (!m_matcher || m_matcher(record)) {
                ++m_matching;
                matching.append(record);
            }
        }
        if (m_hourOffset < m_hourRecords.size())
            break;
        m_hourLoaded = false;
        if (++m_hour > lastHour) {
            ++m_systemIndex;
            m_hour = m_fromMs / SimulatedSystem::msPerHour;
        }
    }
    if (m_totalRead > quint32(config.historyMaxRecords)) {
        fail(tr("The history query read more than %1 alarms; choose a shorter time range or fewer systems")
                 .arg(config.historyMaxRecords));
        return;
    }
    if (!matching.isEmpty())
        emit recordsRead(matching);
    emit progress(m_matching, m_totalRead);
    if (!isRunning())
        return; // aborted by a receiver
    if (m_systemIndex >= m_systems.size()) {
        m_hourRecords.clear();
        setState(Finished);
    } else {
        m_timer.start(config.historyChunkIntervalMs);
    }
}

void HistoryQuery::setState(State state)
{
    if (state == m_state)
        return;
    m_state = state;
    emit stateChanged(state);
}

void HistoryQuery::fail(const QString &errorText)
{
    m_timer.stop();
    m_hourRecords.clear();
    m_errorText = errorText;
    setState(Failed);
}
