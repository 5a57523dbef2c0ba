#include "AlarmSource.h"

#include "AlarmBurst.h"
#include "AlarmSimulator.h"
#include "AlarmsModel.h"
#include "HistoryQuery.h"
#include "SysOracleArchive.h"
#include "SystemConnectionsControl.h"
#include "SystemRegistry.h"

AlarmSource::AlarmSource(AlarmSimulator *simulator, const QSharedPointer<AlarmsModel> &model,
                         const MsgLoggingProducer *logger, QObject *parent)
    : QObject(parent), MsgLoggingProducer(logger), m_simulator(simulator), m_model(model),
      m_query(new HistoryQuery(simulator, this))
{
    connect(m_query, &HistoryQuery::stateChanged, this, &AlarmSource::queryStateChanged);
    connect(m_query, &HistoryQuery::progress, this, &AlarmSource::queryProgress);
    connect(m_query, &HistoryQuery::recordsRead, this, &AlarmSource::queryRecords);
    m_query->setMatcher([this](const AlarmRecord &record) {
        AlarmInstancePtr alarm = toInstance(record);
        if (!m_queryMatcher.matches(*alarm))
            return false;
        m_queryMatches.append(alarm);
        return true;
    });
    connect(m_simulator, &AlarmSimulator::configChanged, this, &AlarmSource::publishSystems);
    publishSystems();
}

AlarmSource::~AlarmSource() = default;

AlarmInstancePtr AlarmSource::toInstance(const AlarmRecord &record, bool connected)
{
    AlarmInstance::Data data;
    data.ident = AlarmIdent(record.system, record.serial);
    if (record.relatedSerial >= 0)
        data.related = AlarmIdent(record.system, record.relatedSerial);
    data.dpe = record.dpe;
    data.alias = record.alias;
    data.description = record.description;
    data.alarmText = record.text;
    data.alarmClass = record.alarmClass;
    data.timeMs = record.timeMs;
    data.ackTimeMs = record.ackTimeMs;
    data.value = record.value;
    data.priority = record.priority;
    data.state = AlarmInstance::State(record.state);
    data.direction = AlarmInstance::Direction(record.direction);
    data.acknowledgeable = record.acknowledgeable;
    data.connected = connected;
    return QSharedPointer<AlarmInstance>::create(data);
}

bool AlarmSource::apply(const SourceAndFilter &filter, QString &errorText)
{
    if (filter.getSourceMode() == Constants::SourceModeHistory)
        return startHistory(filter, errorText);
    startLive();
    return true;
}

void AlarmSource::startLive()
{
    m_query->abort();
    disconnect(m_simulator, nullptr, this, nullptr);
    connect(m_simulator, &AlarmSimulator::configChanged, this, &AlarmSource::publishSystems);
    m_mode = Constants::SourceModeLive;
    m_errorText.clear();
    setState(Constants::SourceConnecting);
    connect(m_simulator, &AlarmSimulator::alarmBurst, this, &AlarmSource::liveBurst);
    connect(m_simulator, &AlarmSimulator::systemConnectionChanged, this, &AlarmSource::systemConnectionChanged);
    connect(m_simulator, &AlarmSimulator::systemResynchronized, this, &AlarmSource::systemResynchronized);
    setState(Constants::SourceLoading);
    const AlarmRecordList current = m_simulator->getCurrentAlarms();
    QVector<AlarmInstancePtr> alarms;
    alarms.reserve(current.size());
    for (const AlarmRecord &record : current)
        alarms.append(toInstance(record));
    m_model->setAlarms(alarms);
    publishSystems();
    setState(Constants::SourceLive);
}

bool AlarmSource::startHistory(const SourceAndFilter &filter, QString &errorText)
{
    const TimeRange &range = filter.getTimeRange();
    QDateTime from = range.getStartTime();
    QDateTime to = range.getEndTime();
    if (range.getRangeType() != TimeRange::CustomInterval)
        range.getEffectiveInterval(QDateTime::currentDateTime(), from, to);
    QStringList systems = filter.getSystems();
    if (systems.isEmpty())
        systems = SysOracleArchive::getInstance()->getSystems();

    // Check before anything changes: a refused query keeps what is shown.
    m_queryMatcher.setFilter(filter);
    m_queryMatches.clear();
    if (!m_query->start(from, to, systems, errorText)) {
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("history query refused: ") + errorText);
        return false;
    }
    disconnect(m_simulator, &AlarmSimulator::alarmBurst, this, nullptr);
    disconnect(m_simulator, &AlarmSimulator::systemConnectionChanged, this, nullptr);
    disconnect(m_simulator, &AlarmSimulator::systemResynchronized, this, nullptr);
    m_mode = Constants::SourceModeHistory;
    m_errorText.clear();
    m_model->clear();
    m_totalRead = 0;
    m_matching = 0;
    emit sourceCountsChanged(0, 0);
    setState(Constants::QueryStarting);
    return true;
}

void AlarmSource::abortQuery()
{
    m_query->abort();
}

void AlarmSource::setState(Constants::SourceState state)
{
    if (state == m_state)
        return;
    m_state = state;
    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral("source state ") + Constants::getSourceStateVisibleName(state));
    emit sourceStateChanged(state);
}

void AlarmSource::liveBurst(const AlarmRecordList &records)
{
    AlarmBurst burst;
    for (const AlarmRecord &record : records) {
        if (record.removed)
            burst.remove(AlarmIdent(record.system, record.serial));
        else
            burst.upsert(toInstance(record));
    }
    m_model->applyBurst(burst);
}

void AlarmSource::systemConnectionChanged(const QString &system, bool connected)
{
    SystemRegistry *registry = SystemRegistry::instance();
    registry->setConnected(registry->findSystem(system), connected);
    if (connected)
        return; // the resynchronisation that follows brings the alarms back
    // The alarms stay and show the lost connection.
    AlarmBurst burst;
    for (const AlarmInstancePtr &alarm : m_model->getAlarms()) {
        if (alarm->getIdent().getSystem() == system && alarm->isConnected())
            burst.upsert(alarm->withConnection(false));
    }
    m_model->applyBurst(burst);
    m_model->getConnectionControl()->setSystemConnected(system, false);
    ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("alarm connection to system %1 lost").arg(system));
}

void AlarmSource::systemResynchronized(const QString &system, const AlarmRecordList &pending)
{
    AlarmBurst burst;
    QSet<qint64> stillPending;
    for (const AlarmRecord &record : pending) {
        stillPending.insert(record.serial);
        burst.upsert(toInstance(record));
    }
    for (const AlarmInstancePtr &alarm : m_model->getAlarms()) {
        if (alarm->getIdent().getSystem() == system && !stillPending.contains(alarm->getIdent().getSerial()))
            burst.remove(alarm->getIdent());
    }
    m_model->applyBurst(burst);
    m_model->getConnectionControl()->setSystemConnected(system, true);
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("alarm connection to system %1 restored").arg(system));
}

void AlarmSource::queryStateChanged(int state)
{
    switch (state) {
    case HistoryQuery::Starting:
        setState(Constants::QueryStarting);
        break;
    case HistoryQuery::Reading:
        setState(Constants::QueryRunning);
        break;
    case HistoryQuery::Finished:
        setState(Constants::QueryFinished);
        break;
    case HistoryQuery::Failed:
        m_errorText = m_query->getErrorText();
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("history query failed: ") + m_errorText);
        setState(Constants::QueryFailed);
        break;
    case HistoryQuery::Aborted:
        setState(Constants::QueryAborted);
        break;
    default:
        break;
    }
}

void AlarmSource::queryProgress(quint32 matching, quint32 totalRead)
{
    m_matching = matching;
    m_totalRead = totalRead;
    emit sourceCountsChanged(totalRead, matching);
}

void AlarmSource::queryRecords(const AlarmRecordList &)
{
    // The matcher converted exactly these rows already.
    AlarmBurst burst;
    for (const AlarmInstancePtr &alarm : qAsConst(m_queryMatches))
        burst.upsert(alarm);
    m_queryMatches.clear();
    m_model->applyBurst(burst);
}

void AlarmSource::publishSystems()
{
    QMap<unsigned int, SystemInfo> systems;
    QStringList connected;
    for (const SimulationConfig::System &config : m_simulator->getConfig().systems) {
        const bool isConnected = m_simulator->isSystemConnected(config.name);
        systems.insert(config.id, SystemInfo(config.id, config.name, isConnected));
        if (isConnected && m_mode == Constants::SourceModeLive)
            connected.append(config.name);
    }
    SystemRegistry::instance()->setSystems(systems);
    SysOracleArchive::getInstance()->setSystems(m_simulator->getArchiveSystems());
    m_model->getConnectionControl()->setConnectedSystems(connected);
}
