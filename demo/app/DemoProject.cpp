#include "DemoProject.h"

#include "Manager.h"
#include "Resources.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>

const char *const DemoProject::ConfigurationFile = "config/alarmscreen.json";

DemoProject::DemoProject(const MsgLoggingProducer *logger)
    : MsgLoggingProducer(logger), m_configuration(logger), m_simulation(SimulationConfig::defaults())
{
    m_configuration.setColumns(defaultColumns());
}


bool DemoProject::open(const QString &directory)
{
    // Nothing of a project opened before is carried over.
    m_configuration = AlarmScreenConfiguration(this);
    m_configuration.setColumns(defaultColumns());
    m_simulation = SimulationConfig::defaults();
    m_title.clear();
    m_groupedAtStart = false;
    m_problems.clear();
    const QFileInfo info(directory);
    m_directory = info.absoluteFilePath();
    if (info.exists() && !info.isDir())
        addProblem(tr("the project path %1 is not a directory").arg(m_directory));
    else if (!info.isDir())
        addProblem(tr("the project directory %1 does not exist").arg(m_directory));
    Resources::setProjectPaths({m_directory});

    checkFolders();
    readConfiguration();
    readSimulation();
    readDatapoints();
    return m_problems.isEmpty();
}

void DemoProject::checkFolders()
{
    const QDir dir(m_directory);
    if (!dir.exists())
        return; // already reported as a whole
    for (const char *folder : {"config", "colorDB", "scripts/libs", "bin/plugins"}) {
        if (!dir.exists(QLatin1String(folder)))
            addProblem(tr("the project directory %1 has no %2 folder").arg(m_directory, QLatin1String(folder)));
    }
}

void DemoProject::readConfiguration()
{
    const QString file = QDir(m_directory).filePath(QLatin1String(ConfigurationFile));
    QString error;
    if (!QFileInfo::exists(file)) {
        addProblem(tr("no screen configuration %1, using the default columns and the built-in panel").arg(file));
    } else if (!m_configuration.loadFromFile(file, error)) {
        addProblem(tr("%1; using the default columns and the built-in panel").arg(error));
    } else {
        readDemoSection();
    }
    if (m_configuration.getColumns().isEmpty())
        m_configuration.setColumns(defaultColumns());
}

void DemoProject::readDemoSection()
{
    const QJsonObject demo = m_configuration.getSection(QStringLiteral("demo"));
    const QJsonValue title = demo.value(QLatin1String("title"));
    const QJsonValue grouped = demo.value(QLatin1String("groupedAtStart"));
    if (!title.isUndefined() && !title.isString())
        addProblem(tr("%1: 'demo.title' must be a string").arg(QLatin1String(ConfigurationFile)));
    else
        m_title = title.toString();
    if (!grouped.isUndefined() && !grouped.isBool())
        addProblem(tr("%1: 'demo.groupedAtStart' must be true or false").arg(QLatin1String(ConfigurationFile)));
    else
        m_groupedAtStart = grouped.toBool();
}

void DemoProject::readSimulation()
{
    const QString file = SimulationConfig::findProjectConfig();
    QString error;
    if (file.isEmpty()) {
        addProblem(tr("no %1 in the project, simulating the default systems")
                       .arg(QLatin1String(SimulationConfig::projectConfigName())));
    } else if (!SimulationConfig::load(file, m_simulation, error)) {
        addProblem(tr("%1; simulating the default systems").arg(error));
    } else if (m_simulation.systems.isEmpty()) {
        addProblem(tr("%1 lists no systems: the alarm table stays empty").arg(file));
    }
}

void DemoProject::readDatapoints()
{
    QString error;
    if (!Manager::loadProjectDatapoints(error))
        addProblem(tr("datapoints not loaded: %1").arg(error));
}

void DemoProject::addProblem(const QString &text)
{
    m_problems.append(text);
    ASLOG(this, MsgLoggerEnums::Warning, text);
}

QList<ColumnDefinition> DemoProject::defaultColumns()
{
    return {ColumnDefinition(Constants::ValueSourceAlarm, QStringLiteral("time"), tr("Time")),
            ColumnDefinition(Constants::ValueSourceAlarm, QStringLiteral("system"), tr("System")),
            ColumnDefinition(Constants::ValueSourceAlarm, QStringLiteral("priority"), tr("Priority")),
            ColumnDefinition(Constants::ValueSourceAlarm, QStringLiteral("state"), tr("State")),
            ColumnDefinition(Constants::ValueSourceAlarm, QStringLiteral("text"), tr("Alarm text")),
            ColumnDefinition(Constants::ValueSourceAlarm, QStringLiteral("dpe"), tr("Datapoint element"))};
}
