#pragma once

#include "SimulationConfig.h"

// Sizes of each simulated system in a test configuration.
struct SimulatedSystemSize {
    int datapoints;
    int initialAlarms;
    int archiveRecordsPerHour;
};

// Three systems "Sys1" to "Sys3" (ids 1 to 3) of the same size: the layout the
// simulation and alarm source tests start from.
inline SimulationConfig threeSystemConfig(quint64 seed, int historyChunkSize,
                                          const SimulatedSystemSize &size)
{
    SimulationConfig config;
    config.seed = seed;
    config.historyChunkSize = historyChunkSize;
    for (int i = 1; i <= 3; ++i) {
        SimulationConfig::System system;
        system.name = QStringLiteral("Sys%1").arg(i);
        system.id = unsigned(i);
        system.datapoints = size.datapoints;
        system.initialAlarms = size.initialAlarms;
        system.archiveRecordsPerHour = size.archiveRecordsPerHour;
        config.systems.append(system);
    }
    return config;
}
