#pragma once

#include "AlarmScreenConfiguration.h"
#include "MsgLoggingProducer.h"
#include "SimulationConfig.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

// The project directory the demo runs on: it becomes the platform's project
// path, and its config/ folder supplies the screen configuration
// (alarmscreen.json), the simulated systems (alarm-simulation.json) and the
// datapoints (datapoints.json).
//
// Opening never fails as a whole: whatever is missing or malformed is
// replaced by defaults and described in getProblems(), so that the demo can
// start with what it has and tell the operator what it lacks.
class DemoProject : public MsgLoggingProducer
{
    Q_DECLARE_TR_FUNCTIONS(DemoProject)

public:
    static const char *const ConfigurationFile;

    explicit DemoProject(const MsgLoggingProducer *logger);

    // Returns true when everything was found and read without a problem.
    bool open(const QString &directory);

    QString getDirectory() const { return m_directory; }
    const AlarmScreenConfiguration &getConfiguration() const { return m_configuration; }
    const SimulationConfig &getSimulation() const { return m_simulation; }
    // The demo's own settings (the "demo" section of the screen configuration).
    QString getTitle() const { return m_title; }
    bool isGroupedAtStart() const { return m_groupedAtStart; }

    // One sentence per problem, in the order found.
    QStringList getProblems() const { return m_problems; }

    // The columns shown when the configuration names none.
    static QList<ColumnDefinition> defaultColumns();

private:
    void checkFolders();
    void readConfiguration();
    void readDemoSection();
    void readSimulation();
    void readDatapoints();
    void addProblem(const QString &text);

    QString m_directory;
    AlarmScreenConfiguration m_configuration;
    SimulationConfig m_simulation;
    QString m_title;
    bool m_groupedAtStart = false;
    QStringList m_problems;
};
