#include "AlarmSimulator.h"

#include <QDateTime>

AlarmSimulator::AlarmSimulator(QObject *parent) : QObject(parent)
{
    qRegisterMetaType<AlarmRecordList>();
    connect(&m_timer, &QTimer::timeout, this, &AlarmSimulator::tick);
    setConfig(SimulationConfig::defaults());
}

void AlarmSimulator::setConfig(const SimulationConfig &config, qint64 startTimeMs)
{
    m_config = config;
    m_random.seed(quint32(config.seed ^ (config.seed >> 32)));
    m_nowMs = startTimeMs > 0 ? startTimeMs : QDateTime::currentMSecsSinceEpoch();
    m_burstCount = 0;
    m_eventCarry = 0.0;
    m_systems.clear();
    m_liveSystems.clear();
    for (const SimulationConfig::System &systemConfig : config.systems) {
        auto system = QSharedPointer<SimulatedSystem>::create(systemConfig, config.seed);
        if (systemConfig.live) {
            AlarmRecordList ignored;
            system->createInitialAlarms(m_nowMs, ignored);
            m_liveSystems.append(m_systems.size());
        }
        m_systems.append(system);
    }
    m_timer.setInterval(config.burstIntervalMs);
    emit configChanged();
}

QStringList AlarmSimulator::getSystemNames() const
{
    QStringList names;
    for (const auto &system : m_systems)
        names.append(system->getName());
    return names;
}

QStringList AlarmSimulator::getArchiveSystems() const
{
    QStringList names;
    for (const auto &system : m_systems) {
        if (system->getConfig().archive)
            names.append(system->getName());
    }
    return names;
}

QSharedPointer<const SimulatedSystem> AlarmSimulator::getSystem(const QString &name) const
{
    return findSystem(name);
}

QSharedPointer<SimulatedSystem> AlarmSimulator::findSystem(const QString &name) const
{
    for (const auto &system : m_systems) {
        if (system->getName() == name)
            return system;
    }
    return {};
}

bool AlarmSimulator::isSystemConnected(const QString &name) const
{
    const auto system = findSystem(name);
    return system && system->getConfig().live && system->isConnected();
}

void AlarmSimulator::setSystemConnected(const QString &name, bool connected)
{
    const auto system = findSystem(name);
    if (!system || !system->getConfig().live || system->isConnected() == connected)
        return;
    system->setConnected(connected);
    emit systemConnectionChanged(name, connected);
    if (connected)
        emit systemResynchronized(name, system->getPendingAlarms());
}

AlarmRecordList AlarmSimulator::getCurrentAlarms() const
{
    AlarmRecordList records;
    for (int index : m_liveSystems) {
        if (m_systems.at(index)->isConnected())
            records += m_systems.at(index)->getPendingAlarms();
    }
    return records;
}

void AlarmSimulator::start()
{
    m_timer.start(m_config.burstIntervalMs);
}

void AlarmSimulator::stop()
{
    m_timer.stop();
}

void AlarmSimulator::setEventsPerSecond(double rate)
{
    m_config.eventsPerSecond = qMax(0.0, rate);
}

void AlarmSimulator::setFloodMode(bool flood)
{
    m_config.flood = flood;
}

void AlarmSimulator::tick()
{
    const double rate = m_config.flood ? m_config.floodEventsPerSecond : m_config.eventsPerSecond;
    m_eventCarry += rate * m_config.burstIntervalMs / 1000.0;
    const int events = int(m_eventCarry);
    m_eventCarry -= events;
    step(events);
}

void AlarmSimulator::step(int events)
{
    m_nowMs += m_config.burstIntervalMs;
    AlarmRecordList delivered;
    if (!m_liveSystems.isEmpty()) {
        AlarmRecordList produced;
        for (int i = 0; i < events; ++i) {
            const auto &system = m_systems.at(m_liveSystems.at(int(m_random.bounded(m_liveSystems.size()))));
            produced.clear();
            system->generateEvent(m_nowMs, produced);
            if (system->isConnected())
                delivered += produced;
        }
    }
    if (!delivered.isEmpty())
        emit alarmBurst(delivered);
    ++m_burstCount;
    advanceConnectionCycles();
}

bool AlarmSimulator::acknowledge(const QString &system, const QString &dpe)
{
    const auto found = findSystem(system);
    if (!found || !found->getConfig().live || !found->isConnected())
        return false;
    AlarmRecordList changed;
    if (!found->acknowledgeElement(dpe, m_nowMs, changed))
        return false;
    emit alarmBurst(changed);
    return true;
}

void AlarmSimulator::advanceConnectionCycles()
{
    for (int index : qAsConst(m_liveSystems)) {
        const SimulationConfig::System &config = m_systems.at(index)->getConfig();
        if (config.disconnectAfterBursts <= 0)
            continue;
        const qint64 phase = m_burstCount % (config.disconnectAfterBursts + config.reconnectAfterBursts);
        if (phase == config.disconnectAfterBursts)
            setSystemConnected(config.name, false);
        else if (phase == 0)
            setSystemConnected(config.name, true);
    }
}
