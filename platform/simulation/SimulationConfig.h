#pragma once

#include "platform_export.h"

#include <QByteArray>
#include <QString>
#include <QVector>

// Settings of the simulated alarm systems: which systems exist, how fast
// their alarms change, when they lose their connection, and what their
// archives hold. Read from the project's "config/alarm-simulation.json"; the
// format is described in docs/alarms.md.
class PLATFORM_EXPORT SimulationConfig
{
public:
    struct System {
        QString name;
        unsigned int id = 0;
        bool live = true;        // delivers live alarms
        bool archive = true;     // its archive can be queried
        bool archiveFails = false; // queries touching its archive fail
        int datapoints = 100;    // alarm-carrying datapoint elements
        int initialAlarms = 20;  // pending alarms at start
        double archiveRecordsPerHour = 600.0;
        // Connection cycle in live bursts: lost after `disconnectAfterBursts`
        // bursts, back `reconnectAfterBursts` bursts later; 0 never disconnects.
        int disconnectAfterBursts = 0;
        int reconnectAfterBursts = 0;
    };

    quint64 seed = 1;
    int burstIntervalMs = 500;
    double eventsPerSecond = 10.0;
    double floodEventsPerSecond = 2000.0;
    bool flood = false;
    int historyChunkSize = 2000;      // records read per step of a history query
    int historyChunkIntervalMs = 0;   // pause between steps
    int historyMaxRecords = 2000000;  // a query reading more fails
    QVector<System> systems;

    // Three systems with moderate activity; used when the project has no file.
    static SimulationConfig defaults();

    // Parse errors name the offending key; `config` is left unchanged on error.
    static bool parse(const QByteArray &json, SimulationConfig &config, QString &errorText);
    static bool load(const QString &fileName, SimulationConfig &config, QString &errorText);
    // The simulation file of the project (searched along the project paths);
    // empty when the project has none.
    static QString findProjectConfig();
    static const char *projectConfigName() { return "config/alarm-simulation.json"; }

    int findSystem(const QString &name) const;
};
