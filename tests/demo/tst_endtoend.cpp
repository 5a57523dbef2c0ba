// Runs the real demo executable: an operator's session played inside it, its
// screenshot, and what it does with bad projects and options.

#include "DemoTestProject.h"

#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace {

struct Run {
    int exitCode = -1;
    QString out;
    QString err;
};

QString demoProject()
{
    return qEnvironmentVariable("AS_DEMO_PROJECT");
}

Run runDemo(const QStringList &arguments, const QProcessEnvironment &extra = QProcessEnvironment())
{
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(extra);
    process.setProcessEnvironment(env);
    process.start(qEnvironmentVariable("AS_DEMO_EXE"), arguments);
    Run run;
    if (!process.waitForFinished(240000)) {
        process.kill();
        process.waitForFinished();
        run.err = QStringLiteral("the demo did not end: ");
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = QString::fromLocal8Bit(process.readAllStandardOutput());
    run.err += QString::fromLocal8Bit(process.readAllStandardError());
    return run;
}

QString describe(const Run &run)
{
    return QStringLiteral("exit code %1\n--- stdout\n%2\n--- stderr\n%3").arg(run.exitCode).arg(run.out, run.err);
}

} // namespace

class TestEndToEnd : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void operatorSessionInRunningDemo();
    void screenshotOfLiveAlarms();
    void badProjectStartsWithWhatItHas_data();
    void badProjectStartsWithWhatItHas();
    void badOptionsAreRefused_data();
    void badOptionsAreRefused();
    void languageFollowsTheSystemUnlessAsked();

private:
    QTemporaryDir m_out;
};

void TestEndToEnd::initTestCase()
{
    QVERIFY(QFileInfo(qEnvironmentVariable("AS_DEMO_EXE")).isExecutable());
    QVERIFY(QFileInfo(qEnvironmentVariable("AS_DEMO_DRIVER")).exists());
    QVERIFY(QFileInfo(demoProject()).isDir());
}

void TestEndToEnd::operatorSessionInRunningDemo()
{
    QProcessEnvironment env;
    env.insert(QStringLiteral("LD_PRELOAD"), qEnvironmentVariable("AS_DEMO_DRIVER"));
    // Under the sanitizers the preloaded driver comes before their runtime.
    env.insert(QStringLiteral("ASAN_OPTIONS"),
               qEnvironmentVariable("ASAN_OPTIONS") + QStringLiteral(":verify_asan_link_order=0"));
    const Run run = runDemo({QStringLiteral("--project"), demoProject()}, env);
    QVERIFY2(run.exitCode == 0, qPrintable(describe(run)));
    // Every step of the session ran and passed (a driver that did not load
    // would leave the demo running until the timeout, and QtTest runs every
    // step it has, so no count of steps is needed).
    static const QRegularExpression totals(QStringLiteral("Totals: [1-9][0-9]* passed, 0 failed, 0 skipped"));
    QVERIFY2(totals.match(run.out).hasMatch(), qPrintable(describe(run)));
}

void TestEndToEnd::screenshotOfLiveAlarms()
{
    const QString file = m_out.filePath(QStringLiteral("shot.png"));
    const Run run = runDemo({QStringLiteral("--project"), demoProject(), QStringLiteral("--screenshot"), file});
    QVERIFY2(run.exitCode == 0, qPrintable(describe(run)));
    QVERIFY2(run.out.contains(file), qPrintable(describe(run)));
    // A complete project gives nothing to complain about.
    QVERIFY2(!run.err.contains(QLatin1String("alarmscreen:")), qPrintable(describe(run)));
    const QImage image(file);
    QVERIFY(!image.isNull());
    QVERIFY(image.width() >= 800 && image.height() >= 400);
    // A drawn window, not a blank area.
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 7) {
        for (int x = 0; x < image.width(); x += 7)
            colours.insert(image.pixel(x, y));
    }
    QVERIFY(colours.size() > 8);
}

void TestEndToEnd::badProjectStartsWithWhatItHas_data()
{
    QTest::addColumn<QString>("spoil");
    QTest::addColumn<QString>("message");

    QTest::newRow("no project") << "missing" << "does not exist";
    QTest::newRow("unknown plug-in") << "plugin" << "the panel plug-in 'noSuchPanel' was not found";
    QTest::newRow("folders missing") << "folders" << "has no colorDB folder";
}

void TestEndToEnd::badProjectStartsWithWhatItHas()
{
    QFETCH(QString, spoil);
    QFETCH(QString, message);
    DemoTestProject project(demoProject());
    QString dir = project.path();
    if (spoil == QLatin1String("missing")) {
        dir += QStringLiteral("/nowhere");
    } else if (spoil == QLatin1String("plugin")) {
        project.write(QStringLiteral("config/alarmscreen.json"),
                      "{\"format\": \"AlarmScreen.Configuration\", \"version\": 1,"
                      " \"filterWidget\": {\"panelPlugin\": \"noSuchPanel\"}}");
    } else {
        project.remove(QStringLiteral("colorDB"));
        project.remove(QStringLiteral("bin"));
    }
    const QString file = m_out.filePath(spoil + QStringLiteral(".png"));
    const Run run = runDemo({QStringLiteral("--project"), dir, QStringLiteral("--screenshot"), file});
    // It says what is wrong, and still shows alarms (the screenshot is taken
    // once alarms are shown).
    QVERIFY2(run.exitCode == 0, qPrintable(describe(run)));
    QVERIFY2(run.err.contains(message), qPrintable(describe(run)));
    QVERIFY(!QImage(file).isNull());
}

void TestEndToEnd::badOptionsAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown option") << QStringList{"--frobnicate"} << "unknown option '--frobnicate'";
    QTest::newRow("missing value") << QStringList{"--project"} << "option '--project' needs a value";
    QTest::newRow("bad number") << QStringList{"--quit-after", "soon"} << "not 'soon'";
    QTest::newRow("negative number") << QStringList{"--quit-after", "-5"} << "not '-5'";
    QTest::newRow("unknown language") << QStringList{"--lang", "xx-nowhere"} << "not 'xx-nowhere'";
}

void TestEndToEnd::badOptionsAreRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const Run run = runDemo(arguments);
    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.err.contains(message), qPrintable(describe(run)));
    QVERIFY(run.err.contains(QLatin1String("Usage:")));
}

void TestEndToEnd::languageFollowsTheSystemUnlessAsked()
{
    QProcessEnvironment german;
    german.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
    const Run system = runDemo({QStringLiteral("--help")}, german);
    QCOMPARE(system.exitCode, 0);
    QVERIFY2(system.out.startsWith(QLatin1String("Aufruf: alarmscreen-demo")), qPrintable(describe(system)));
    const Run english = runDemo({QStringLiteral("--lang"), QStringLiteral("en"), QStringLiteral("--help")}, german);
    QVERIFY2(english.out.startsWith(QLatin1String("Usage: alarmscreen-demo")), qPrintable(describe(english)));
}

QTEST_GUILESS_MAIN(TestEndToEnd)
#include "tst_endtoend.moc"
