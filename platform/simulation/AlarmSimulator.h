#pragma once

#include "AlarmRecord.h"
#include "SimulatedSystem.h"
#include "SimulationConfig.h"
#include "platform_export.h"

#include <QObject>
#include <QRandomGenerator>
#include <QSharedPointer>
#include <QStringList>
#include <QTimer>

// The live alarm source of the platform stand-in: several simulated systems
// whose alarms come, go and are acknowledged, delivered in bursts. The event
// sequence follows from the configured seed; the clock is simulated too (one
// burst interval per burst), so a run can be repeated exactly with `step`.
//
// A disconnected system goes on changing its alarms internally but delivers
// nothing; when it reconnects it hands over the rows pending at that moment.
class PLATFORM_EXPORT AlarmSimulator : public QObject
{
    Q_OBJECT
public:
    explicit AlarmSimulator(QObject *parent = nullptr);

    // Rebuilds all systems (each raises its initial alarms at the start time).
    void setConfig(const SimulationConfig &config, qint64 startTimeMs = 0);
    const SimulationConfig &getConfig() const { return m_config; }

    QStringList getSystemNames() const;
    QStringList getArchiveSystems() const;
    QSharedPointer<const SimulatedSystem> getSystem(const QString &name) const;
    bool isSystemConnected(const QString &name) const;
    // Disconnects or reconnects a system at once (announced with the signals).
    void setSystemConnected(const QString &name, bool connected);

    // Pending rows of all connected live systems.
    AlarmRecordList getCurrentAlarms() const;
    qint64 getSimulatedTime() const { return m_nowMs; }

    void start();
    void stop();
    bool isRunning() const { return m_timer.isActive(); }
    void setEventsPerSecond(double rate);
    double getEventsPerSecond() const { return m_config.eventsPerSecond; }
    void setFloodMode(bool flood);
    bool isFloodMode() const { return m_config.flood; }

    // The operator acknowledges the alarm of element `dpe` of `system`; the
    // change is delivered at once as a burst. False (and nothing delivered)
    // when the system is not connected or the element has no alarm waiting
    // for an acknowledgement.
    bool acknowledge(const QString &system, const QString &dpe);

    // One burst of `events` alarm events, spread over the live systems.
    void step(int events);

signals:
    void alarmBurst(const AlarmRecordList &records);
    void systemConnectionChanged(const QString &system, bool connected);
    // After a reconnection: every row the system holds now.
    void systemResynchronized(const QString &system, const AlarmRecordList &pending);
    void configChanged();

private:
    void tick();
    void advanceConnectionCycles();
    QSharedPointer<SimulatedSystem> findSystem(const QString &name) const;

    SimulationConfig m_config;
    QVector<QSharedPointer<SimulatedSystem>> m_systems;
    QVector<int> m_liveSystems; // indexes into m_systems
    QRandomGenerator m_random;
    QTimer m_timer;
    qint64 m_nowMs = 0;
    qint64 m_burstCount = 0;
    double m_eventCarry = 0.0;
};
