#include "ColorEngine.h"
#include "LogCapture.h"
#include "Resources.h"
#include "TestProject.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// The phases of a colour as "#rrggbbaa/duration" or "=alias/duration".
QStringList phases(const Color &color)
{
    QStringList list;
    for (const auto &entry : color.getEntries()) {
        const QString what = entry->isAlias() ? QLatin1Char('=') + entry->getAliasName()
                                              : entry->getColor().name() + QString::number(entry->getColor().alpha(), 16);
        list << what + QLatin1Char('/') + QString::number(entry->getDuration());
    }
    return list;
}

// Warnings and errors only: traces of taken colours are not what is checked.
QStringList problems(const LogCapture &log)
{
    QStringList lines;
    for (const QString &line : log.lines()) {
        if (!line.startsWith(QLatin1String("0|")))
            lines << line;
    }
    return lines;
}

void write(const QString &file, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(file).absolutePath());
    QFile out(file);
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(content);
}

void tick(ColorEngine &engine, int times = 1)
{
    for (int i = 0; i < times; ++i)
        QMetaObject::invokeMethod(&engine, "blinkingTimeout");
}

} // namespace

class TestColorEngine : public QObject
{
    Q_OBJECT
private slots:
    void lineForms_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("name");        // empty: the line yields nothing
        QTest::addColumn<QStringList>("phases");
        QTest::addColumn<QStringList>("messages"); // warnings and errors

        const QStringList none;
        QTest::newRow("255") << QString(R"("Red" N {255,0,0})") << QString("Red") << QStringList{"#ff0000ff/0"} << none;
        QTest::newRow("255 alpha") << QString(R"(  "Red" N { 255, 0,0,128 } )") << QString("Red") << QStringList{"#ff000080/0"} << none;
        // Percentages are truncated: 100 gives 254, 50 gives 127.
        QTest::newRow("100") << QString(R"("Red" N [100,0,0])") << QString("Red") << QStringList{"#fe0000fe/0"} << none;
        QTest::newRow("100 alpha") << QString(R"("Half" N [50,50,50,100])") << QString("Half") << QStringList{"#7f7f7ffe/0"} << none;
        QTest::newRow("blinking") << QString(R"("Warn" N <{255,0,0} 4 {0,0,0} 4>)") << QString("Warn")
                                  << QStringList{"#ff0000ff/4", "#000000ff/4"} << none;
        QTest::newRow("blinking mixed, commas") << QString(R"("Mix" N <"Other" 2, [0,0,100] 3>)") << QString("Mix")
                                                << QStringList{"=Other/2", "#0000fefe/3"} << none;
        QTest::newRow("phase without duration") << QString(R"("Warn" N <{255,0,0} {0,0,0} 4>)") << QString("Warn")
                                                << QStringList{"#000000ff/4"} << none;
        QTest::newRow("zero duration ends it") << QString(R"("Warn" N <{255,0,0} 0 {0,0,0} 4>)") << QString("Warn") << QStringList()
                                               << none;
        QTest::newRow("alias") << QString(R"("A" "B")") << QString("A") << QStringList{"=B/0"} << none;
        QTest::newRow("named alias") << QString(R"("A" N "Some thing")") << QString("A") << QStringList{"=Some thing/0"} << none;
        QTest::newRow("blank kept in name") << QString(R"(" Lead" N {1,2,3})") << QString(" Lead") << QStringList{"#010203ff/0"}
                                            << none;
        QTest::newRow("digits only") << QString(" 12 34  56") << QString() << QStringList() << none;
        QTest::newRow("empty") << QString("") << QString() << QStringList()
                               << QStringList{"2|the syntax of color line was not recognized: "};
        QTest::newRow("garbage") << QString("Red = {1,2,3}") << QString() << QStringList()
                                 << QStringList{"2|the syntax of color line was not recognized: Red = {1,2,3}"};
        QTest::newRow("two components") << QString(R"("Bad" N {1,2})") << QString() << QStringList()
                                        << QStringList{"2|unexpected syntax: don't known how to take next color from: {1,2}",
                                                       "2|failed to parse color definition: {1,2}, stopped on: {1,2}"};
        QTest::newRow("bad second phase") << QString(R"("Bad" N <{1,2,3} 2 xyz 2>)") << QString() << QStringList()
                                          << QStringList{"2|unexpected syntax: don't known how to take next color from: xyz 2",
                                                         "2|failed to parse color definition: <{1,2,3} 2 xyz 2>, stopped on: xyz 2"};
        // A long unterminated name must not make the matcher backtrack for ever.
        const QString unterminated = QLatin1Char('"') + QString(40, QLatin1Char('a')) + QStringLiteral(" b N {1,2,3}");
        QTest::newRow("unterminated") << unterminated << QString() << QStringList()
                                      << QStringList{"2|the syntax of color line was not recognized: " + unterminated};
    }
    void lineForms()
    {
        QFETCH(QString, line);
        QFETCH(QString, name);
        QFETCH(QStringList, phases);
        QFETCH(QStringList, messages);
        LogCapture log;
        const QSharedPointer<Color> color = ColorEngine::parseColorLine(&log.producer, line);
        QCOMPARE(problems(log), messages);
        QCOMPARE(color.isNull(), name.isNull());
        if (color) {
            QCOMPARE(color->getName(), name);
            QCOMPARE(::phases(*color), phases);
        }
    }

    void componentsOutOfRangeGiveNoColour()
    {
        // Found by fuzzing: a component too large for an int was scaled
        // into an int regardless.
        LogCapture log;
        for (const char *line : {R"("Big" N [5067418155074074696,0,0])", R"("Big" N {5067418155074074696,0,0})",
                                 R"("Big" N [101,0,0])", R"("Big" N {0,256,0})"})
            QVERIFY2(!ColorEngine::parseColorLine(&log.producer, QString::fromLatin1(line)), line);
        QVERIFY(ColorEngine::parseColorLine(&log.producer, QStringLiteral(R"("Ok" N [100,0,0])")));
    }

    void databasesAliasesAndPalette()
    {
        // Two project paths and a base path; reading goes from the last
        // project path to the first, then the base path, and later files win.
        QTemporaryDir sub, project, base;
        write(sub.filePath("colorDB/a"), "\"Same\" N {1,1,1}\n\"SubOnly\" N {2,2,2}\n\"_Window\" N {9,9,9}\n");
        write(project.filePath("colorDB/B"), "\"Same\" N {3,3,3}\n\"A\" \"B\"\n\"B\" \"C\"\n\"C\" N <{0,0,255} 2 {0,0,0} 2>\n");
        write(project.filePath("colorDB/c"), "\"Loop\" \"Loop\"\n\"Lost\" N \"Nowhere\"\nnonsense\n\"Blue\" \"C\"\n");
        write(project.filePath("colorDB/deeper/d"), "\"Deep\" N {4,4,4}\n");
        write(base.filePath("colorDB/z"), "\"BaseOnly\" N {5,5,5}\n");
        const QStringList previous = Resources::getProjectPaths();
        const QString previousBase = Resources::getBasePath();
        Resources::setProjectPaths({sub.path(), project.path()});
        Resources::setBasePath(base.path());

        LogCapture log;
        ColorEngine engine(&log.producer, nullptr);
        const QVector<QString> files = engine.getColorDbs();
        QCOMPARE(files, (QVector<QString>{project.filePath("colorDB/B"), project.filePath("colorDB/c"),
                                          project.filePath("colorDB/deeper/d"), sub.filePath("colorDB/a"),
                                          base.filePath("colorDB/z")}));
        // A file that cannot be read is skipped with a warning; the others load.
        engine.addColorDatabase(project.filePath("colorDB/missing"));
        engine.loadAllColorDbs();
        Resources::setProjectPaths(previous);
        Resources::setBasePath(previousBase);

        QCOMPARE(engine.getColor("Same")->getCurrentColor(), QColor(1, 1, 1));
        QCOMPARE(engine.getColor("Deep")->getCurrentColor(), QColor(4, 4, 4));
        QCOMPARE(engine.getColor("BaseOnly")->getCurrentColor(), QColor(5, 5, 5));
        QCOMPARE(engine.getColor("_Window")->getCurrentColor(), QGuiApplication::palette().color(QPalette::Base));
        QCOMPARE(engine.getColor("_Transparent")->getCurrentColor(), QColor(0, 0, 0, 0));
        // An alias takes the first phase of its target; an alias of an alias
        // stays without a colour.
        QCOMPARE(engine.getColor("Blue")->getCurrentColor(), QColor(0, 0, 255));
        QCOMPARE(engine.getColor("B")->getCurrentColor(), QColor(0, 0, 255));
        QVERIFY(!engine.getColor("A")->getCurrentColor().isValid());
        QVERIFY(!engine.getColor("Loop")->getCurrentColor().isValid());
        QCOMPARE(problems(log),
                 (QStringList{"2|color database cannot be read, skipped: " + project.filePath("colorDB/missing") +
                                  " (No such file or directory)",
                              "2|the syntax of color line was not recognized: nonsense",
                              "3|infinite loop detected while searching for alias: Loop, search stack is Loop",
                              "3|alias 'Nowhere' is not found in loaded colors"}));

        // Names that are not in the database: a colour value works directly,
        // anything else becomes black, reported once.
        log.clear();
        QCOMPARE(engine.getColor("[100,0,0]")->getCurrentColor(), QColor(254, 0, 0, 254));
        QVERIFY(problems(log).isEmpty());
        QCOMPARE(engine.getColor("noSuchColor")->getCurrentColor(), QColor(0, 0, 0));
        QCOMPARE(problems(log).size(), 2);
        QCOMPARE(engine.getColor("noSuchColor")->getCurrentColor(), QColor(0, 0, 0));
        QCOMPARE(problems(log).size(), 2);
    }

    void blinkingSignalsUsedColoursOnly()
    {
        LogCapture log;
        ColorEngine engine(&log.producer, nullptr);
        const QSharedPointer<Color> warn = engine.getColor("<{255,0,0} 2 {0,0,0} 1>");
        const QSharedPointer<Color> idle = engine.getColor("<{0,255,0} 1 {0,0,255} 1>");
        // Several phases outside angle brackets have duration 0 and never move.
        const QSharedPointer<Color> still = engine.getColor("{1,1,1} {2,2,2}");
        QCOMPARE(still->getEntries().size(), 2);
        QSignalSpy changed(&engine, &ColorEngine::colorChanged);
        engine.incrementColorUsage(warn->getName());

        tick(engine);
        QCOMPARE(changed.size(), 0);
        QCOMPARE(warn->getCurrentColor(), QColor(255, 0, 0));
        tick(engine);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.at(0).at(0).toString(), warn->getName());
        QCOMPARE(changed.at(0).at(1).value<QColor>(), QColor(0, 0, 0));
        tick(engine);
        QCOMPARE(changed.size(), 2);
        QCOMPARE(changed.at(1).at(1).value<QColor>(), QColor(255, 0, 0));
        // The unused colour moved on all the same, the still one did not.
        QCOMPARE(idle->getCurrentIndex(), 1);
        QCOMPARE(still->getCurrentIndex(), 0);

        engine.decrementColorUsage(warn->getName());
        tick(engine, 2);
        QCOMPARE(changed.size(), 2);
        QCOMPARE(warn->getCurrentIndex(), 1);

        // The engine's own timer drives it.
        engine.incrementColorUsage(warn->getName());
        QVERIFY(changed.wait(1000));
    }

    void oneEngineForTheProcess()
    {
        LogCapture log;
        const QSharedPointer<ColorEngine> engine = ColorEngine::getInstance(&log.producer);
        QVERIFY(engine);
        QCOMPARE(ColorEngine::getInstance(nullptr), engine);
        QVERIFY(engine->getColorMap().contains("_3DFace"));
    }
};

QTEST_MAIN(TestColorEngine)
#include "tst_colorengine.moc"
