#include "AlarmScreenConfiguration.h"
#include "AlarmTestFactory.h"
#include "Constants.h"
#include "TimeRange.h"

#include <QMetaEnum>
#include <QTemporaryDir>
#include <QtTest>

namespace {
using AlarmTestFactory::json;

const char *const fullConfig =
    "{'format': 'AlarmScreen.Configuration', 'version': 1,"
    " 'wildcards': {'matchAll': '*', 'emptyPattern': '#'},"
    " 'filterWidget': {'panelPlugin': 'richPanel', 'ctrlLibrary': 'completion', 'masterFunction': 'master',"
    "                  'slaveFunction': 'slave', 'fixedCompletions': {'priority': ['low', 'high']}, 'noPanel': true},"
    " 'mouseProcessor': {'processByWidget': false, 'ctrlLibrary': 'mouse', 'ctrlFunction': 'onMouse'},"
    " 'grouping': {'name': 'by system', 'rules': [{'kind': 'Derived', 'name': 'system'}, {'kind': 0, 'name': 'prio'}]},"
    " 'columns': [{'source': 'Alarm', 'id': 'text', 'title': 'Alarm text'}, {'source': 1, 'id': 'descr'}],"
    " 'simulation': {'systems': ['S1', 'S2']}}";
} // namespace

class TestConfiguration : public QObject
{
    Q_OBJECT
private slots:
    void loadsEverySection()
    {
        AlarmScreenConfiguration config;
        QString error;
        QVERIFY2(config.fromJsonText(json(fullConfig), error), qPrintable(error));
        QCOMPARE(config.getWildcardConfig().getMatchAllChar(), QLatin1Char('*'));
        QVERIFY(config.getWildcardConfig().isEmptyPatternCharSet());
        const FilterWidgetConfiguration &fw = config.getFilterWidgetConfig();
        QCOMPARE(fw.getPanelPluginName(), QStringLiteral("richPanel"));
        QCOMPARE(fw.getSlaveFunction(), QStringLiteral("slave"));
        QCOMPARE(fw.getFixedCompletions().value(QStringLiteral("priority")),
                 (QStringList{QStringLiteral("low"), QStringLiteral("high")}));
        QVERIFY(fw.isNoPanel());
        QVERIFY(!config.getMouseProcessorConfig().isProcessByWidget());
        QCOMPARE(config.getMouseProcessorConfig().getCtrlFunction(), QStringLiteral("onMouse"));
        QCOMPARE(config.getGroupingConfig().getRules().size(), 2);
        QCOMPARE(config.getGroupingConfig().getRules().first()->getKind(), int(Constants::ValueSourceDerived));
        QCOMPARE(config.getColumns().size(), 2);
        QCOMPARE(config.getColumns().at(1).getSource(), 1);
        QCOMPARE(config.getColumns().at(1).getTitle(), QStringLiteral("descr")); // defaults to the id
        QCOMPARE(config.getSection(QStringLiteral("simulation")).value(QStringLiteral("systems")).toArray().size(), 2);

        // What was loaded is saved again unchanged.
        AlarmScreenConfiguration again;
        QVERIFY2(again.fromJson(config.toJson(), error), qPrintable(error));
        QCOMPARE(again.toJson(), config.toJson());
    }

    void wildcardsCarryTheConfigurationsLogging()
    {
        AlarmScreenConfiguration config;
        config.setLogFunc(2);
        QCOMPARE(config.getWildcardConfig().getLogFunc(), 2);
    }

    void badConfigurationsChangeNothing_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("errorPart");
        const QByteArray good = json(fullConfig);
        QTest::newRow("malformed") << QByteArray("{\n\"format\": \n}") << "malformed JSON at line 3";
        QTest::newRow("truncated") << good.left(good.size() * 2 / 3) << "malformed JSON at line";
        QTest::newRow("not an object") << QByteArray("[1]") << "the JSON text is not an object";
        QTest::newRow("foreign") << json("{'format': 'AlarmScreen.SourceAndFilter', 'version': 1}")
                                 << "not an alarm screen configuration";
        QTest::newRow("no version") << json("{'format': 'AlarmScreen.Configuration'}") << "'version' is missing";
        QTest::newRow("fractional version") << json("{'format': 'AlarmScreen.Configuration', 'version': 1.5}")
                                            << "'version' must be an integer";
        QTest::newRow("fractional source code") << QByteArray(good).replace("\"source\": 1,", "\"source\": 1.5,")
                                                << "'columns[1].source' must be a value source name";
        QTest::newRow("misspelt key") << QByteArray(good).replace("noPanel", "noPannel")
                                      << "unknown key 'filterWidget.noPannel'";
        QTest::newRow("wrong type") << QByteArray(good).replace("\"noPanel\": true", "\"noPanel\": 1")
                                    << "'filterWidget.noPanel' must be true or false";
        QTest::newRow("two-character wildcard") << QByteArray(good).replace("\"matchAll\": \"*\"", "\"matchAll\": \"**\"")
                                                << "'wildcards.matchAll' must be a single character";
        QTest::newRow("column without id") << QByteArray(good).replace("\"id\": \"descr\"", "\"title\": \"x\"")
                                           << "'columns[1].id' is missing";
        QTest::newRow("duplicate column") << QByteArray(good).replace("1, \"id\": \"descr\"", "0, \"id\": \"text\"")
                                          << "column 'text' is defined twice";
        QTest::newRow("unknown source") << QByteArray(good).replace("\"Derived\"", "\"Moon\"")
                                        << "'grouping.rules[0].kind' must be a value source name";
        QTest::newRow("source code beyond the integers") << QByteArray(good).replace("\"Derived\"", "-1e10")
                                                         << "'grouping.rules[0].kind' must be a value source name";
        QTest::newRow("version beyond the integers")
            << json("{'format': 'AlarmScreen.Configuration', 'version': 1e10}") << "'version' must be an integer";
        QTest::newRow("CTRL processing without function")
            << QByteArray(good).replace("\"onMouse\"", "\"\"") << "processing by CTRL needs";
        QTest::newRow("fixed list not strings") << QByteArray(good).replace("[\"low\", \"high\"]", "[\"low\", 2]")
                                                << "'filterWidget.fixedCompletions.priority' must be an array of strings";
    }
    void badConfigurationsChangeNothing()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, errorPart);
        AlarmScreenConfiguration config;
        QString error;
        QVERIFY(config.fromJsonText(json("{'format': 'AlarmScreen.Configuration', 'version': 1,"
                                         " 'columns': [{'id': 'kept'}]}"),
                                    error));
        const QJsonObject before = config.toJson();
        QVERIFY(!config.fromJsonText(text, error));
        QVERIFY2(error.contains(errorPart), qPrintable(error));
        QCOMPARE(config.toJson(), before);
    }

    void missingFileIsNamed()
    {
        QTemporaryDir dir;
        AlarmScreenConfiguration config;
        QString error;
        QVERIFY(!config.loadFromFile(dir.filePath(QStringLiteral("none.json")), error));
        QVERIFY2(error.contains(QLatin1String("none.json")), qPrintable(error));
    }

    void timeRangeTypesForTheEditor()
    {
        const QMetaEnum e = QMetaEnum::fromType<TimeRange::RangeType>();
        TimeRange range;
        for (int i = 0; i < e.keyCount(); ++i) {
            range.setRangeType(TimeRange::RangeType(e.value(i)));
            QCOMPARE(range.getValueLabel().isEmpty(), !TimeRange::hasValueCount(range.getRangeType()));
            QVERIFY(!range.getDescription().isEmpty());
        }
    }

    void timeRangeIntervals_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("count");
        QTest::addColumn<QDateTime>("start");
        QTest::addColumn<QDateTime>("end");
        // "now" is Wednesday 2024-03-13 15:30 UTC.
        const auto at = [](int day, int hour, int minute) {
            return QDateTime(QDate(2024, 3, day), QTime(hour, minute), Qt::UTC);
        };
        QTest::newRow("last 90 minutes") << 0 << 90 << at(13, 14, 0) << at(13, 15, 30);
        QTest::newRow("last 2 days") << 2 << 2 << at(11, 15, 30) << at(13, 15, 30);
        QTest::newRow("last month") << 4 << 1 << QDateTime(QDate(2024, 2, 13), QTime(15, 30), Qt::UTC)
                                    << at(13, 15, 30);
        QTest::newRow("today") << 5 << 1 << at(13, 0, 0) << at(13, 15, 30);
        QTest::newRow("yesterday") << 6 << 1 << at(12, 0, 0) << at(13, 0, 0);
        QTest::newRow("this week") << 7 << 1 << at(11, 0, 0) << at(13, 15, 30);
        QTest::newRow("previous week") << 8 << 1 << at(4, 0, 0) << at(11, 0, 0);
        QTest::newRow("this month") << 9 << 1 << at(1, 0, 0) << at(13, 15, 30);
    }
    void timeRangeIntervals()
    {
        QFETCH(int, type);
        QFETCH(int, count);
        QFETCH(QDateTime, start);
        QFETCH(QDateTime, end);
        TimeRange range(nullptr, Qt::UTC);
        range.setRangeType(TimeRange::RangeType(type));
        range.setValueCount(count);
        QDateTime s, e;
        range.getEffectiveInterval(QDateTime(QDate(2024, 3, 13), QTime(15, 30), Qt::UTC), s, e);
        QCOMPARE(s, start);
        QCOMPARE(e, end);
    }

    void customTimeRange()
    {
        TimeRange range(nullptr, Qt::UTC);
        range.setRangeType(TimeRange::CustomInterval);
        range.setStartSeconds(1700000000);
        range.setEndSeconds(1700003600);
        QCOMPARE(range.getStartTime().timeSpec(), Qt::UTC);
        QCOMPARE(range.getDescription(), QStringLiteral("2023-11-14 22:13:20 - 2023-11-14 23:13:20"));
        TimeRange back;
        QString error;
        QVERIFY2(back.fromJson(range.toJson(), QStringLiteral("range"), error), qPrintable(error));
        QVERIFY(back == range);
        QJsonObject reversed = range.toJson();
        reversed.insert(QStringLiteral("end"), QStringLiteral("2023-11-14T00:00:00Z"));
        QVERIFY(!back.fromJson(reversed, QStringLiteral("range"), error));
        QVERIFY2(error.contains(QLatin1String("ends before it starts")), qPrintable(error));
        QVERIFY(back == range);
    }

    void sourceStateNames()
    {
        QCOMPARE(Constants::getSourceStateVisibleName(Constants::SourceNoQuery), QStringLiteral("NoQuery"));
        QSet<QString> names;
        for (int s = 0; s < Constants::SourceStateCount; ++s)
            names << Constants::getSourceStateVisibleName(Constants::SourceState(s));
        QCOMPARE(names.size(), Constants::SourceStateCount);
        QVERIFY(Constants::getSourceStateVisibleName(Constants::SourceState(42)).contains(QLatin1String("42")));
    }
};

QTEST_GUILESS_MAIN(TestConfiguration)
#include "tst_configuration.moc"
