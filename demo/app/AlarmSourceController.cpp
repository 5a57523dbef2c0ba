#include "AlarmSourceController.h"

#include "AlarmMatcher.h"
#include "AlarmSimulator.h"
#include "HistoryQuery.h"
#include "SimulationConfig.h"
#include "SysOracleArchive.h"
#include "SystemConnectionsControl.h"

#include <QDateTime>

AlarmSourceController::AlarmSourceController(const MsgLoggingProducer *logger,
                                             const SimulationConfig &config,
                                             const QSharedPointer<AlarmsModel> &model, QObject *parent)
    : QObject(parent)
    , MsgLoggingProducer(logger)
    , m_model(model)
    , m_simulator(new AlarmSimulator(this))
    , m_query(new HistoryQuery(m_simulator, this))
{
    m_simulator->setConfig(config, QDateTime::currentMSecsSinceEpoch());
    SysOracleArchive::getInstance()->setSystems(m_simulator->getArchiveSystems());

    connect(m_simulator, &AlarmSimulator::alarmBurst, this, &AlarmSourceController::applyLiveRecords);
    connect(m_simulator, &AlarmSimulator::systemConnectionChanged, this,
            &AlarmSourceController::systemConnectionChanged);
    connect(m_simulator, &AlarmSimulator::systemResynchronized, this,
            &AlarmSourceController::systemResynchronized);
    connect(m_query, &HistoryQuery::stateChanged, this, &AlarmSourceController::queryStateChanged);
    connect(m_query, &HistoryQuery::progress, this,
            [this](quint32 matching, quint32 totalRead) { emit countsChanged(totalRead, matching); });
    connect(m_query, &HistoryQuery::recordsRead, this, &AlarmSourceController::queryRecordsRead);
    m_simulator->start();
}

AlarmSourceController::~AlarmSourceController() = default;

bool AlarmSourceController::isQueryRunning() const
{
    return m_query->isRunning();
}

QStringList AlarmSourceController::getArchiveSystems() const
{
    return m_simulator->getArchiveSystems();
}

AlarmInstancePtr AlarmSourceController::toAlarm(const AlarmRecord &record, bool connected)
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
    return AlarmInstancePtr::create(data);
}

void AlarmSourceController::startLive()
{
    if (m_query->isRunning())
        m_query->abort();
    m_mode = Constants::SourceModeLive;
    setState(Constants::SourceLoading);
    QVector<AlarmInstancePtr> alarms;
    const AlarmRecordList pending = m_simulator->getCurrentAlarms();
    alarms.reserve(pending.size());
    for (const AlarmRecord &record : pending)
        alarms.append(toAlarm(record, true));
    m_model->setAlarms(alarms);
    QStringList connected;
    for (const QString &system : m_simulator->getSystemNames()) {
        if (m_simulator->isSystemConnected(system))
            connected.append(system);
    }
    m_model->getConnectionControl()->setConnectedSystems(connected);
    setState(Constants::SourceLive);
}

bool AlarmSourceController::startHistory(const SourceAndFilter &filter, QString &error)
{
    QDateTime from;
    QDateTime to;
    filter.getTimeRange().getEffectiveInterval(QDateTime::currentDateTime().toTimeSpec(
                                                   filter.getTimeRange().getTimeSpec()),
                                               from, to);
    // The systems and datapoint names of the record select what is queried;
    // the query's matcher only looks at the rule sets.
    SourceAndFilter rules(filter);
    rules.setSystems({});
    rules.setDpNames({});
    auto matcher = QSharedPointer<AlarmMatcher>::create();
    matcher->setFilter(rules);
    m_query->setMatcher([matcher](const AlarmRecord &record) {
        return matcher->matches(*toAlarm(record, true));
    });

    m_mode = Constants::SourceModeHistory;
    m_model->clear();
    emit countsChanged(0, 0);
    if (!m_query->start(from, to, filter.getSystems(), error)) {
        ASLOG(this, MsgLoggerEnums::Warning, tr("history query not started: %1").arg(error));
        setState(Constants::QueryFailed);
        emit queryFailed(error);
        return false;
    }
    return true;
}

void AlarmSourceController::abortQuery()
{
    if (m_query->isRunning())
        m_query->abort();
}

void AlarmSourceController::setState(Constants::SourceState state)
{
    if (state == m_state)
        return;
    m_state = state;
    emit stateChanged(state);
}

void AlarmSourceController::applyLiveRecords(const AlarmRecordList &records)
{
    if (m_mode != Constants::SourceModeLive)
        return;
    AlarmBurst burst;
    for (const AlarmRecord &record : records) {
        if (record.removed)
            burst.remove(AlarmIdent(record.system, record.serial));
        else
            burst.upsert(toAlarm(record, true));
    }
    m_model->applyBurst(burst);
}

void AlarmSourceController::systemConnectionChanged(const QString &system, bool connected)
{
    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral("system %1 %2").arg(system, connected ? "connected" : "disconnected"));
    if (m_mode != Constants::SourceModeLive)
        return;
    m_model->getConnectionControl()->setSystemConnected(system, connected);
    // The system's alarms stay in the table and show the lost connection.
    AlarmBurst burst;
    for (const AlarmInstancePtr &alarm : m_model->getAlarms()) {
        if (alarm->getIdent().getSystem() == system && alarm->isConnected() != connected)
            burst.upsert(alarm->withConnection(connected));
    }
    m_model->applyBurst(burst);
}

void AlarmSourceController::systemResynchronized(const QString &system, const AlarmRecordList &pending)
{
    if (m_mode != Constants::SourceModeLive)
        return;
    QSet<qint64> serials;
    AlarmBurst burst;
    for (const AlarmRecord &record : pending) {
        serials.insert(record.serial);
        burst.upsert(toAlarm(record, true));
    }
    for (const AlarmInstancePtr &alarm : m_model->getAlarms()) {
        const AlarmIdent &ident = alarm->getIdent();
        if (ident.getSystem() == system && !serials.contains(ident.getSerial()))
            burst.remove(ident);
    }
    m_model->applyBurst(burst);
}

void AlarmSourceController::queryStateChanged(int queryState)
{
    switch (HistoryQuery::State(queryState)) {
    case HistoryQuery::Idle:
        setState(Constants::SourceNoQuery);
        break;
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
        ASLOG(this, MsgLoggerEnums::Warning, tr("history query failed: %1").arg(m_query->getErrorText()));
        setState(Constants::QueryFailed);
        emit queryFailed(m_query->getErrorText());
        break;
    case HistoryQuery::Aborted:
        setState(Constants::QueryAborted);
        break;
    }
}

void AlarmSourceController::queryRecordsRead(const AlarmRecordList &records)
{
    if (m_mode != Constants::SourceModeHistory)
        return;
    AlarmBurst burst;
    for (const AlarmRecord &record : records)
        burst.upsert(toAlarm(record, true));
    m_model->applyBurst(burst);
}
