#pragma once

#include "AlarmRecord.h"
#include "SimulationConfig.h"
#include "platform_export.h"

#include <QMap>
#include <QRandomGenerator>
#include <QVector>

// One simulated system: its alarm-carrying datapoint elements, the alarms
// pending in its alarm manager, and its alarm archive. Everything it does
// follows from the seed, so two systems built alike behave alike.
class PLATFORM_EXPORT SimulatedSystem
{
public:
    SimulatedSystem(const SimulationConfig::System &config, quint64 seed);

    const SimulationConfig::System &getConfig() const { return m_config; }
    const QString &getName() const { return m_config.name; }

    bool isConnected() const { return m_connected; }
    void setConnected(bool connected) { m_connected = connected; }

    // Raises the configured number of alarms at `nowMs` (appended to `out`).
    void createInitialAlarms(qint64 nowMs, AlarmRecordList &out);
    // One alarm event (came, went or acknowledged) of a random element; the
    // changed rows, including removed ones, are appended to `out`.
    void generateEvent(qint64 nowMs, AlarmRecordList &out);
    // The operator acknowledges the pending alarm of element `dpe` at `nowMs`
    // (the changed rows are appended to `out`). False when the element has no
    // alarm that waits for an acknowledgement.
    bool acknowledgeElement(const QString &dpe, qint64 nowMs, AlarmRecordList &out);
    // The rows pending now, by serial.
    AlarmRecordList getPendingAlarms() const { return m_rows.values().toVector(); }
    int getPendingCount() const { return m_rows.size(); }

    // The archived rows whose time falls into the hour `hour` (hours since
    // the epoch), in time order. The same hour always gives the same rows.
    AlarmRecordList getArchiveHour(qint64 hour) const;

    static constexpr qint64 msPerHour = 3600 * 1000;

private:
    struct Datapoint {
        QString dpe;
        QString alias;
        QString description;
        QString text;
        QString alarmClass;
        int priority = 0;
        bool acknowledgeable = true;
        double nominal = 0.0;
        qint64 cameSerial = -1; // the pending pair of this element, if any
        qint64 wentSerial = -1;
    };

    AlarmRecord makeRecord(const Datapoint &dp, qint64 serial, qint64 timeMs, double value) const;
    void raise(int dpIndex, qint64 nowMs, AlarmRecordList &out);
    void went(Datapoint &dp, qint64 nowMs, AlarmRecordList &out);
    void acknowledge(Datapoint &dp, qint64 nowMs, AlarmRecordList &out);
    void removeRow(qint64 serial, AlarmRecordList &out);

    SimulationConfig::System m_config;
    quint64 m_seed;
    QVector<Datapoint> m_datapoints;
    QMap<qint64, AlarmRecord> m_rows;
    QRandomGenerator m_random;
    qint64 m_nextSerial = 1;
    bool m_connected = true;
};
