// The demo's project handling and its main window, in process: what a
// project directory supplies, what happens when parts of it are wrong, and
// the owner's side of the panel (shared action rights, quick filter answer,
// grouping, failing queries).

#include "AlarmSimulator.h"
#include "AlarmSource.h"
#include "AlarmsProxyModel.h"
#include "DemoOptions.h"
#include "DemoProject.h"
#include "DemoTestProject.h"
#include "CompletionSource.h"
#include "EwoActions.h"
#include "LogCapture.h"
#include "MainWindow.h"
#include "Manager.h"
#include "QuickFilterEditor.h"
#include "Resources.h"
#include "SourceAndFiltersUi.h"
#include "Variable.h"

#include <QAction>
#include <QComboBox>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QTreeView>

namespace {

const char *const NoDatapoints = "config/datapoints.json";

// A copy of the demo project; its datapoints are left out because the
// process-wide datapoint store accepts them only once.
std::unique_ptr<DemoTestProject> projectCopy()
{
    auto project = std::make_unique<DemoTestProject>(qEnvironmentVariable("AS_DEMO_PROJECT"));
    project->remove(QLatin1String(NoDatapoints));
    return project;
}

MsgLoggingProducer quietLogger()
{
    MsgLoggingProducer logger;
    logger.setLogThreshold(4); // keep the console quiet, problems are checked one by one
    return logger;
}

} // namespace

class TestDemoProject : public QObject
{
    Q_OBJECT

private slots:
    void completeProjectOpensCleanly();
    void brokenPartsKeepTheRest();
    void optionsKeepDefaultsUntilValid();
    void unknownPluginFallsBackToBuiltInPanel();
    void unusablePluginsAreToldApart_data();
    void unusablePluginsAreToldApart();
    void projectThatIsAFileIsNotADirectory();
    void simulationWithoutSystemsIsReported();
    void windowWithoutPanelStillShowsAlarms();
    void componentsShareTheOwnersActionRights();
    void quickFilterIsAnsweredWithTheAppliedFilter();
    void groupingSwitchesBetweenTreeAndList();
    void refusedHistoryQueryKeepsTheTable();
    void completionsAreTheValuesOfTheSimulatedSystems();

private:
    MsgLoggingProducer m_logger = quietLogger();
};

void TestDemoProject::completeProjectOpensCleanly()
{
    DemoProject project(&m_logger);
    const QString dir = qEnvironmentVariable("AS_DEMO_PROJECT");
    QVERIFY2(project.open(dir), qPrintable(project.getProblems().join('\n')));
    QCOMPARE(Resources::getProjectPaths(), QStringList{QDir(dir).absolutePath() + QLatin1Char('/')});
    QVERIFY(!project.getTitle().isEmpty());
    // The project's datapoints exist now.
    QVERIFY(Manager::dpGet(QStringLiteral("AlarmScreenDemo.operator")) != nullptr);
}

void TestDemoProject::brokenPartsKeepTheRest()
{
    auto project = projectCopy();
    project->write(QStringLiteral("config/alarm-simulation.json"), "{\"seed\": \"many\"}");
    project->remove(QStringLiteral("scripts"));
    DemoProject demo(&m_logger);
    QVERIFY(!demo.open(project->path()));
    QCOMPARE(demo.getProblems().size(), 2);
    QVERIFY(demo.getProblems().at(0).contains(QLatin1String("has no scripts/libs folder")));
    QVERIFY(demo.getProblems().at(1).contains(QLatin1String("'seed'")));
    // The screen configuration still counts; the simulation falls back.
    QCOMPARE(demo.getConfiguration().getColumns().size(), 9);
    QCOMPARE(demo.getSimulation().systems.size(), SimulationConfig::defaults().systems.size());

    // The other way round: a broken configuration keeps the simulated systems.
    project->write(QStringLiteral("config/alarm-simulation.json"), "{\"systems\": [{\"name\": \"Only\"}]}");
    project->write(QStringLiteral("config/alarmscreen.json"),
                   "{\"format\": \"AlarmScreen.Configuration\", \"version\": 1, \"columns\": [{\"title\": \"x\"}]}");
    QVERIFY(!demo.open(project->path()));
    QCOMPARE(demo.getSimulation().systems.size(), 1);
    QCOMPARE(demo.getConfiguration().getColumns(), DemoProject::defaultColumns());
    QVERIFY(demo.getProblems().last().contains(QLatin1String("alarmscreen.json")));

    // The demo's own section is checked too.
    project->write(QStringLiteral("config/alarmscreen.json"),
                   "{\"format\": \"AlarmScreen.Configuration\", \"version\": 1, \"demo\": {\"groupedAtStart\": 1}}");
    QVERIFY(!demo.open(project->path()));
    QVERIFY(demo.getProblems().last().contains(QLatin1String("'demo.groupedAtStart'")));
    QVERIFY(!demo.isGroupedAtStart());
}

void TestDemoProject::optionsKeepDefaultsUntilValid()
{
    DemoOptions options(QStringLiteral("/default"));
    QString error;
    QVERIFY(!options.parse({"demo", "--project", "/p", "--quit-after", "0"}, error));
    // A refused command line changes nothing.
    QCOMPARE(options.getProjectDir(), QStringLiteral("/default"));
    QCOMPARE(options.getQuitAfterMs(), 0);
    QVERIFY(options.parse({"demo", "--screenshot", "a.png", "--quit-after", "250", "--project", "/p"}, error));
    QCOMPARE(options.getProjectDir(), QStringLiteral("/p"));
    QCOMPARE(options.getScreenshotFile(), QStringLiteral("a.png"));
    QCOMPARE(options.getQuitAfterMs(), 250);
}

void TestDemoProject::unknownPluginFallsBackToBuiltInPanel()
{
    auto project = projectCopy();
    project->write(QStringLiteral("config/alarmscreen.json"),
                   "{\"format\": \"AlarmScreen.Configuration\", \"version\": 1,"
                   " \"filterWidget\": {\"panelPlugin\": \"noSuchPanel\"}}");
    DemoProject demo(&m_logger);
    QVERIFY(demo.open(project->path()));
    MainWindow window(demo, &m_logger);
    QVERIFY(window.getPanel());
    QCOMPARE(window.getProblems().size(), 1);
    QVERIFY(window.getProblems().first().contains(QLatin1String("'noSuchPanel'")));
    QVERIFY(window.statusBar()->currentMessage().contains(QLatin1String("noSuchPanel")));
}

void TestDemoProject::unusablePluginsAreToldApart_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("pluginFile"); // copied to bin/plugins/<name>.so
    QTest::addColumn<QByteArray>("content"); // written there instead, when given
    QTest::addColumn<QString>("expected");
    QTest::newRow("not a plug-in") << "notAPlugin" << QString() << QByteArray("just text")
                                   << "is not a plug-in";
    QTest::newRow("another interface") << "otherInterface" << QStringLiteral(AS_TEST_OTHER_INTERFACE_PLUGIN)
                                       << QByteArray() << "is a plug-in of another interface (Tessaly.Test.OtherInterface)";
    QTest::newRow("refused name") << "../outside" << QString() << QByteArray() << "name '../outside' was refused";
}

void TestDemoProject::unusablePluginsAreToldApart()
{
    QFETCH(QString, name);
    QFETCH(QString, pluginFile);
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    auto project = projectCopy();
    const QString target = QStringLiteral("bin/plugins/%1.so").arg(name);
    if (!content.isEmpty())
        project->write(target, content);
    if (!pluginFile.isEmpty())
        QVERIFY(QFile::copy(pluginFile, QDir(project->path()).filePath(target)));
    project->write(QStringLiteral("config/alarmscreen.json"),
                   "{\"format\": \"AlarmScreen.Configuration\", \"version\": 1,"
                   " \"filterWidget\": {\"panelPlugin\": \"" + name.toUtf8() + "\"}}");
    DemoProject demo(&m_logger);
    QVERIFY(demo.open(project->path()));
    MainWindow window(demo, &m_logger);
    QVERIFY(window.getPanel()); // the built-in one
    QCOMPARE(window.getProblems().size(), 1);
    QVERIFY2(window.getProblems().first().contains(expected), qPrintable(window.getProblems().first()));
    QVERIFY(!window.getProblems().first().contains(QLatin1String("was not found")));
    QVERIFY(window.statusBar()->currentMessage().contains(expected));
}

void TestDemoProject::projectThatIsAFileIsNotADirectory()
{
    DemoTestProject parent{QString()};
    parent.write(QStringLiteral("project.txt"), "not a project");
    const QString file = QDir(parent.path()).filePath(QStringLiteral("project.txt"));
    DemoProject demo(&m_logger);
    QVERIFY(!demo.open(file));
    QVERIFY2(demo.getProblems().first().contains(QLatin1String("is not a directory")),
             qPrintable(demo.getProblems().first()));
    QVERIFY(!demo.getProblems().first().contains(QLatin1String("does not exist")));
    QVERIFY(demo.open(QDir(parent.path()).filePath(QStringLiteral("missing"))) == false);
    QVERIFY(demo.getProblems().first().contains(QLatin1String("does not exist")));
}

void TestDemoProject::simulationWithoutSystemsIsReported()
{
    auto project = projectCopy();
    project->write(QStringLiteral("config/alarm-simulation.json"), "{\"systems\": []}");
    LogCapture log;
    DemoProject demo(&log.producer);
    QVERIFY(!demo.open(project->path()));
    QVERIFY(demo.getSimulation().systems.isEmpty());
    QCOMPARE(demo.getProblems().size(), 1);
    QVERIFY2(demo.getProblems().first().contains(QLatin1String("no systems")), qPrintable(demo.getProblems().first()));
    QVERIFY(log.lines().join('\n').contains(QLatin1String("no systems")));
}

void TestDemoProject::windowWithoutPanelStillShowsAlarms()
{
    auto project = projectCopy();
    project->write(QStringLiteral("config/alarmscreen.json"),
                   "{\"format\": \"AlarmScreen.Configuration\", \"version\": 1,"
                   " \"filterWidget\": {\"noPanel\": true}}");
    DemoProject demo(&m_logger);
    QVERIFY(demo.open(project->path()));
    MainWindow window(demo, &m_logger);
    QVERIFY(!window.getPanel());
    QVERIFY(window.getProblems().isEmpty());
    QVERIFY(window.getProxyModel()->rowCount() > 0);
    // The owner's slots do without a panel.
    window.quickFilterChanged(QuickCellFilter());
}

void TestDemoProject::componentsShareTheOwnersActionRights()
{
    auto project = projectCopy();
    DemoProject demo(&m_logger);
    QVERIFY(demo.open(project->path()));
    MainWindow window(demo, &m_logger);
    // The window's own controls follow the owner's rights; a hidden action is
    // not carried out.
    auto *save = window.findChild<QAction *>(QStringLiteral("saveFilterAction"));
    window.setActionState(EwoActions::SaveFilter, ActionAccess::Hidden);
    QVERIFY(!save->isVisible());
    window.filterActionRequested(EwoActions::SaveFilter); // would block in a file dialog otherwise

    // One decision of the owner reaches the source selector's control too.
    QComboBox *mode = nullptr;
    for (QComboBox *combo : window.getPanel()->findChildren<QComboBox *>()) {
        if (combo->findText(QStringLiteral("History")) >= 0)
            mode = combo;
    }
    if (!window.getPanel()->getSourceUi())
        QSKIP("the built-in panel has no source selector in this build");
    QVERIFY(mode);
    QVERIFY(mode->isEnabled());
    window.setActionState(EwoActions::SwitchSourceMode, ActionAccess::Disabled);
    QVERIFY(!mode->isEnabled());
}

void TestDemoProject::quickFilterIsAnsweredWithTheAppliedFilter()
{
    auto project = projectCopy();
    DemoProject demo(&m_logger);
    QVERIFY(demo.open(project->path()));
    MainWindow window(demo, &m_logger);
    QuickCellFilter filter;
    filter.setString(QStringLiteral("pump"));
    emit window.getPanel()->quickFilterChanged(filter);

    QuickFilterEditor *editor = window.getPanel()->getQuickFilterEditor();
    QCOMPARE(editor->text(), QStringLiteral("pump"));
    QCOMPARE(window.getProxyModel()->getQuickFilter(), filter);

    // The window closes while the quick filter has the focus: the editor
    // finishes its edit on the way out, and nothing may be left to answer it.
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    editor->setFocus();
    QTRY_VERIFY(editor->hasFocus());
}

void TestDemoProject::groupingSwitchesBetweenTreeAndList()
{
    auto project = projectCopy();
    DemoProject demo(&m_logger);
    QVERIFY(demo.open(project->path()));
    MainWindow window(demo, &m_logger);
    AlarmsProxyModel *proxy = window.getProxyModel();
    QVERIFY(!window.getGroupedAction()->isChecked());
    QVERIFY(proxy->getAlarmAtRow(proxy->index(0, 0)));

    window.getGroupedAction()->trigger();
    QCOMPARE(proxy->getGroupingDepth(), 2);
    // Top level: one group per system, below it the alarm classes.
    QCOMPARE(proxy->rowCount(), demo.getSimulation().systems.size());
    QTreeView *table = window.getAlarmTable();
    const QPersistentModelIndex system = proxy->index(0, 0);
    QVERIFY(!proxy->getAlarmAtRow(system));
    const QPersistentModelIndex alarmClass = proxy->index(0, 0, system);
    QVERIFY(!proxy->getAlarmAtRow(alarmClass));
    QVERIFY(proxy->getAlarmAtRow(proxy->index(0, 0, alarmClass)));

    // The groups the operator opens stay open when the table is rebuilt for
    // a new filter and while live bursts come in.
    const QVariant systemValue = system.data(Qt::EditRole);
    const QVariant classValue = alarmClass.data(Qt::EditRole);
    table->expand(system);
    table->expand(alarmClass);
    const auto openedGroupsAreOpen = [&] {
        const QModelIndex s = proxy->match(proxy->index(0, 0), Qt::EditRole, systemValue, 1, Qt::MatchExactly).value(0);
        const QModelIndex c = proxy->match(proxy->index(0, 0, s), Qt::EditRole, classValue, 1, Qt::MatchExactly).value(0);
        return s.isValid() && c.isValid() && table->isExpanded(s) && table->isExpanded(c)
            && !table->isExpanded(proxy->index(s.row() == 0 ? 1 : 0, 0));
    };
    // A new filter no longer rebuilds the table: it is merged into it.
    QSignalSpy resets(proxy, &QAbstractItemModel::modelReset);
    window.applyStructuredFilter(window.getAppliedFilter(), 0);
    QCOMPARE(resets.size(), 0);
    QVERIFY(openedGroupsAreOpen());
    QSignalSpy bursts(window.getSimulator(), &AlarmSimulator::alarmBurst);
    QTRY_VERIFY_WITH_TIMEOUT(bursts.size() >= 3, 10000);
    QVERIFY(openedGroupsAreOpen());

    window.getGroupedAction()->trigger();
    QCOMPARE(proxy->getGroupingDepth(), 0);
    QCOMPARE(proxy->rowCount(), proxy->getVisibleAlarmCount());

    // Without a grouping in the configuration the switch is off for good.
    project->write(QStringLiteral("config/alarmscreen.json"),
                   "{\"format\": \"AlarmScreen.Configuration\", \"version\": 1, \"demo\": {\"groupedAtStart\": true}}");
    QVERIFY(demo.open(project->path()));
    MainWindow flat(demo, &m_logger);
    QVERIFY(!flat.getGroupedAction()->isEnabled());
    QCOMPARE(flat.getProxyModel()->getGroupingDepth(), 0);
}

void TestDemoProject::refusedHistoryQueryKeepsTheTable()
{
    auto project = projectCopy();
    DemoProject demo(&m_logger);
    QVERIFY(demo.open(project->path()));
    MainWindow window(demo, &m_logger);
    const int liveRows = window.getProxyModel()->rowCount();
    QVERIFY(liveRows > 0);
    SourceAndFilter filter(&m_logger);
    filter.setSourceMode(Constants::SourceModeHistory);
    filter.setSystems({QStringLiteral("Atlantis")});
    window.applyStructuredFilter(filter, 0);

    QCOMPARE(window.getAlarmSource()->getState(), Constants::SourceLive);
    QVERIFY2(window.statusBar()->currentMessage().startsWith(QLatin1String("History query refused: ")),
             qPrintable(window.statusBar()->currentMessage()));
    QCOMPARE(window.getProxyModel()->rowCount(), liveRows);
    QCOMPARE(window.getAppliedFilter().getSourceMode(), Constants::SourceModeLive);
}

QTEST_MAIN(TestDemoProject)
#include "tst_demoproject.moc"

void TestDemoProject::completionsAreTheValuesOfTheSimulatedSystems()
{
    auto project = projectCopy();
    DemoProject demo(&m_logger);
    QVERIFY(demo.open(project->path()));
    AlarmSimulator simulator;
    simulator.setConfig(demo.getSimulation());
    simulator.step(200);
    const QStringList systems = simulator.getSystemNames();
    const auto source = CompletionSource::getInstance(&m_logger, demo.getConfiguration().getFilterWidgetConfig());
    QSignalSpy ready(source.data(), &CompletionSource::completionsReady);
    int consumer = 0;
    const QStringList properties{"dpe", "alias", "description", "text", "alarmClass", "system"};
    for (const QString &property : properties)
        source->requestCompletions(&consumer, property, systems);
    QTRY_COMPARE(ready.count(), properties.size());
    // The aliases follow the system filter.
    QVERIFY(source->getCompletions(QStringLiteral("alias"))->getList().isEmpty());
    source->filterChanged(&consumer, QStringLiteral("system"), {{"system", "turb*"}});
    QTRY_COMPARE(ready.count(), properties.size() + 1);
    QCOMPARE(ready.last().at(0).value<void *>(), &consumer);

    const auto values = [&](const QString &property) { return source->getCompletions(property); };
    QCOMPARE(values("system")->getList(), systems);
    int turbineAlarms = 0;
    for (const AlarmRecord &alarm : simulator.getCurrentAlarms()) {
        QVERIFY2(values("dpe")->getSystemMap().value(alarm.system).contains(alarm.dpe), qPrintable(alarm.dpe));
        QVERIFY2(values("description")->getSystemMap().value(alarm.system).contains(alarm.description),
                 qPrintable(alarm.description));
        QVERIFY(values("text")->getList().contains(alarm.text));
        QVERIFY(values("alarmClass")->getList().contains(alarm.alarmClass));
        if (alarm.system == QLatin1String("Turbine")) {
            QVERIFY(values("alias")->getList().contains(alarm.alias));
            ++turbineAlarms;
        }
    }
    QVERIFY(turbineAlarms > 0);
    // The Turbine's elements only (aliases repeat across systems).
    QCOMPARE(values("alias")->getList().size(), simulator.getSystem(QStringLiteral("Turbine"))->getConfig().datapoints);
    // Per system: no element of another system is offered.
    for (const QString &system : systems) {
        for (const QString &dpe : values("dpe")->getSystemMap().value(system))
            QVERIFY2(dpe.startsWith(system + QLatin1Char(':')), qPrintable(dpe));
    }
}
