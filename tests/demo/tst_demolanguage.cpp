// The demo's operator language, in process: --lang chooses the catalogues of
// the libraries and the demo before the window is built.

#include "AlarmScreenTranslations.h"
#include "DemoRunner.h"
#include "DemoTestProject.h"
#include "MainWindow.h"
#include "MsgLoggerModel.h"
#include "SourceAndFiltersUi.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QMenuBar>
#include <QTest>

namespace {

// A copy of the demo project without its datapoints, which the process-wide
// store accepts only once.
std::unique_ptr<DemoTestProject> projectCopy()
{
    auto project = std::make_unique<DemoTestProject>(qEnvironmentVariable("AS_DEMO_PROJECT"));
    project->remove(QStringLiteral("config/datapoints.json"));
    return project;
}

struct Screen {
    QStringList menus;
    QStringList modes;
    QString count;
    QStringList log;
};

Screen startDemo(const QString &language)
{
    const auto project = projectCopy();
    DemoRunner runner;
    Screen screen;
    if (!runner.start({"alarmscreen-demo", "--project", project->path(), "--lang", language}, QString()))
        return screen;
    for (const QAction *menu : runner.getWindow()->menuBar()->actions())
        screen.menus << menu->text();
    if (auto *modes = runner.getWindow()->getPanel()->findChild<QComboBox *>(QStringLiteral("comboBoxMode"))) {
        for (int i = 0; i < modes->count(); ++i)
            screen.modes << modes->itemText(i);
    }
    if (auto *count = runner.getWindow()->findChild<QLabel *>(QStringLiteral("alarmCountLabel")))
        screen.count = count->text();
    const QSharedPointer<MsgLoggerModel> log = runner.getLog();
    for (int row = 0; row < log->rowCount(); ++row)
        screen.log << log->data(log->index(row, MsgLoggerModel::TextColumn)).toString();
    return screen;
}

} // namespace

class TestDemoLanguage : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { AlarmScreenTranslations::removeAll(); }

    void germanScreen()
    {
        const Screen screen = startDemo(QStringLiteral("de"));
        QVERIFY2(screen.menus.contains("&Datei") && screen.menus.contains("&Ansicht") &&
                     !screen.menus.contains("&File"),
                 qPrintable(screen.menus.join(' ')));
        QCOMPARE(screen.modes, QStringList({"Aktuell", "Historisch"}));
        QVERIFY2(screen.count.endsWith(QLatin1String("Alarmen angezeigt (aktuell)")), qPrintable(screen.count));
        QVERIFY2(screen.log.filter(QStringLiteral("translation")).isEmpty(), qPrintable(screen.log.join('\n')));
    }

    void languageWithoutCatalogueStaysEnglish()
    {
        const Screen screen = startDemo(QStringLiteral("fr"));
        QVERIFY2(screen.menus.contains("&File") && screen.menus.contains("&View"), qPrintable(screen.menus.join(' ')));
        QCOMPARE(screen.modes, QStringList({"Live", "History"}));
        QCOMPARE(screen.log.filter(QStringLiteral("no translation alarmscreen_model for fr_FR")).size(), 1);
    }
};

QTEST_MAIN(TestDemoLanguage)
#include "tst_demolanguage.moc"
