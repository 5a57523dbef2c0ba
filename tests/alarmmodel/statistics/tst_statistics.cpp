#include "AlarmTestFactory.h"
#include "AlarmsModel.h"
#include "FilterStatisticsValueConsumer.h"
#include "FilterViewConfiguration.h"

#include <QtTest>

using namespace AlarmTestFactory;

namespace {

const qint64 baseTime = 1700000000000;

QVector<AlarmInstancePtr> alarms()
{
    QVector<AlarmInstancePtr> list;
    for (int i = 0; i < 12; ++i) {
        const auto state = AlarmInstance::State(i % 3); // came unack, came ack, went unack
        list.append(makeAlarm(i % 2 ? QStringLiteral("SysB") : QStringLiteral("SysA"), i + 1, 10 * (i + 1),
                              QStringLiteral("text"), baseTime + i, state));
    }
    return list;
}

SourceAndFilter systemFilter(const QString &system)
{
    return sourceFilter({ruleSet(true, {patternFilter(QStringLiteral("system"), system)})});
}

const char *const validJson = R"({
  "view": "grid",
  "grid": {
    "title": "Areas", "spacing": 4, "backColor": "_3DFace",
    "items": [
      {"id": "a", "row": 0, "column": 0, "filterDp": "FilterA",
       "filter": FILTER,
       "text": "%id%: %matching%/%total% %state%", "toolTip": "%unacknowledged% unacknowledged",
       "colors": {"%state%": {"rules": [{"when": "unacknowledged", "atLeast": 2, "color": "alarmRed"},
                                        {"when": "matching", "color": "okGreen"}],
                              "default": "idleGrey"}},
       "backColor": "%state%", "foreColor": "{0,0,0}"},
      {"id": "b", "row": 1, "column": 2}
    ]
  }
})";

QString validConfigText()
{
    return QString::fromUtf8(validJson)
        .replace(QStringLiteral("FILTER"), QString::fromUtf8(systemFilter(QStringLiteral("SysA")).toJsonText()));
}

} // namespace

class TestStatistics : public QObject
{
    Q_OBJECT
private slots:
    void countsFollowLiveChanges()
    {
        auto model = QSharedPointer<AlarmsModel>::create();
        model->setAlarms(alarms());
        FilterStatisticsValueConsumer consumer;
        consumer.setFilter(QStringLiteral("onlyA"), systemFilter(QStringLiteral("SysA")));
        consumer.setTextTemplate(QStringLiteral("%id%: %matching% of %total%, %unacknowledged% unack., max %highestPriority%"));
        consumer.setModel(model);
        QCOMPARE(consumer.getText(), QStringLiteral("onlyA: 6 of 12, 4 unack., max 110"));

        QSignalSpy announced(consumer.getNotifier(), &FilterStatisticsNotifier::changed);
        AlarmBurst burst;
        burst.upsert(makeAlarm(QStringLiteral("SysA"), 100, 500, QStringLiteral("new"), baseTime + 100)); // +1 unack
        burst.upsert(changed(alarms().at(0), 10, AlarmInstance::CameAcknowledged)); // unack -> ack
        burst.remove(alarms().at(2)->getIdent());                                    // SysA, went unack
        burst.remove(alarms().at(1)->getIdent());                                    // SysB
        burst.upsert(alarms().at(3)->withConnection(false));                         // SysB, not matching
        model->applyBurst(burst);
        QCOMPARE(announced.size(), 1);
        const FilterStatistics &stats = consumer.getStatistics();
        QCOMPARE(stats.get(FilterStatistics::Disconnected), 0);
        QCOMPARE(consumer.getText(), QStringLiteral("onlyA: 6 of 11, 3 unack., max 500"));

        // The running counts equal a fresh count of the model.
        FilterStatisticsValueConsumer fresh;
        fresh.setFilter(QStringLiteral("x"), systemFilter(QStringLiteral("SysA")));
        fresh.setModel(model);
        QVERIFY(fresh.getStatistics() == stats);

        // Removing the top priority lowers the highest priority again.
        AlarmBurst back;
        back.remove(AlarmIdent(QStringLiteral("SysA"), 100));
        model->applyBurst(back);
        QCOMPARE(stats.get(FilterStatistics::HighestPriority), 110);

        // Counting pairs once leaves out went rows.
        AlarmInstance::Data went = alarms().at(4)->getData();
        went.ident = AlarmIdent(QStringLiteral("SysA"), 200);
        went.direction = AlarmInstance::Went;
        AlarmBurst pair;
        pair.upsert(QSharedPointer<AlarmInstance>::create(went));
        model->applyBurst(pair);
        const int withWent = stats.getMatching();
        consumer.setSingleRowPerPair(true);
        QCOMPARE(stats.getMatching(), withWent - 1);
        QCOMPARE(fresh.getStatistics().getMatching(), withWent);

        // Whether the consumer's filter is the one in force.
        consumer.compareWithCurrentFilter(systemFilter(QStringLiteral("SysA")));
        QVERIFY(consumer.isMatchingCurrentFilter());
        consumer.compareWithCurrentFilter(systemFilter(QStringLiteral("SysB")));
        QVERIFY(!consumer.isMatchingCurrentFilter());
    }

    void templatesAndColourSources()
    {
        FilterViewConfiguration config;
        QVERIFY2(config.parse(validConfigText()), qPrintable(config.getErrorText()));
        const FilterViewItemConfiguration item = config.getGridConfig().getItems().at(0);

        ColorUsageCounter engine; // stands in for the colour engine
        auto model = QSharedPointer<AlarmsModel>::create();
        {
            FilterStatisticsValueConsumer consumer;
            consumer.setFinalTarget(&engine);
            consumer.configure(item);
            QCOMPARE(consumer.getFilterDpName(), QStringLiteral("FilterA"));
            QVERIFY(consumer.isTextRenderedOnBlink());
            QVERIFY(consumer.getBackColorSource() && consumer.getBackColorSource()->isColor());
            QCOMPARE(consumer.getForeColorSource()->getCurrentText(), QStringLiteral("{0,0,0}"));
            // Every colour the item may show is registered with the engine.
            QCOMPARE(engine.getColors(), (QStringList{QStringLiteral("alarmRed"), QStringLiteral("idleGrey"),
                                                      QStringLiteral("okGreen"), QStringLiteral("{0,0,0}")}));

            consumer.setModel(model);
            QCOMPARE(consumer.getText(), QStringLiteral("a: 0/0 idleGrey"));
            QCOMPARE(consumer.getBackColorSource()->getCurrentText(), QStringLiteral("idleGrey"));

            AlarmBurst burst;
            burst.upsert(makeAlarm(QStringLiteral("SysA"), 1, 10, QStringLiteral("t"), baseTime, AlarmInstance::CameAcknowledged));
            model->applyBurst(burst);
            QCOMPARE(consumer.getBackColorSource()->getCurrentText(), QStringLiteral("okGreen"));
            burst.clear();
            burst.upsert(makeAlarm(QStringLiteral("SysA"), 2, 10, QStringLiteral("t"), baseTime));
            burst.upsert(makeAlarm(QStringLiteral("SysA"), 3, 10, QStringLiteral("t"), baseTime));
            burst.upsert(makeAlarm(QStringLiteral("SysB"), 4, 10, QStringLiteral("t"), baseTime));
            model->applyBurst(burst);
            QCOMPARE(consumer.getText(), QStringLiteral("a: 3/4 alarmRed"));
            QCOMPARE(consumer.getToolTip(), QStringLiteral("2 unacknowledged"));
            QCOMPARE(consumer.getBackColorSource()->getCurrentText(), QStringLiteral("alarmRed"));
            QCOMPARE(consumer.getPlaceholders().value(QStringLiteral("%matching%"))->getValue(consumer.getLastStatistics()),
                     QVariant(3));
        }
        // A consumer that is gone uses no colour any more.
        QVERIFY(engine.getColors().isEmpty());
        QVERIFY(!engine.isColorUsed(QStringLiteral("alarmRed")));
    }

    void configurationJson()
    {
        FilterViewConfiguration config;
        QVERIFY(config.parse(validConfigText()));
        QCOMPARE(config.getViewType(), FilterViewConfiguration::Grid);
        const FilterGridViewConfiguration &grid = config.getGridConfig();
        QCOMPARE(grid.getTitle(), QStringLiteral("Areas"));
        QCOMPARE(grid.getSpacing(), 4);
        QCOMPARE(grid.getBackColor(), QStringLiteral("_3DFace"));
        QCOMPARE(grid.getItems().size(), 2);
        QVERIFY(grid.getItems().at(0).getFilter().isFilterEqual(systemFilter(QStringLiteral("SysA"))));
        const FilterViewItemConfiguration &b = grid.getItems().at(1);
        QCOMPARE(b.getRow(), 1);
        QCOMPARE(b.getColumn(), 2);
        QVERIFY(b.getBackColorSource().isEmpty());

        QVERIFY(config.parse(QStringLiteral(R"({"view": "tree"})")));
        QCOMPARE(config.getViewType(), FilterViewConfiguration::Tree);
    }

    void malformedConfiguration_data()
    {
        QTest::addColumn<QString>("json");
        QTest::addColumn<QString>("error");
        QTest::addColumn<bool>("fullMessage");
        QTest::newRow("syntax") << QStringLiteral(R"({"view": "grid", )") << QStringLiteral("Filter set JSON is not valid") << true;
        QTest::newRow("not an object") << QStringLiteral("[1]") << QStringLiteral("Filter set JSON is not valid") << true;
        QTest::newRow("view") << QStringLiteral(R"({"view": "pie"})") << QStringLiteral("view must be \"grid\" or \"tree\"") << false;
        QTest::newRow("no grid") << QStringLiteral(R"({"view": "grid"})") << QStringLiteral("grid") << false;
        QTest::newRow("no items") << QStringLiteral(R"({"grid": {}})") << QStringLiteral("grid.items") << false;
        QTest::newRow("typo") << QStringLiteral(R"({"grid": {"items": [], "spaceing": 3}})") << QStringLiteral("spaceing") << false;
        QTest::newRow("item without id") << QStringLiteral(R"({"grid": {"items": [{"row": 1}]}})")
                                         << QStringLiteral("grid.items[0].id") << false;
        QTest::newRow("row type") << QStringLiteral(R"({"grid": {"items": [{"id": "x", "row": "1"}]}})")
                                  << QStringLiteral("grid.items[0].row") << false;
        QTest::newRow("row beyond the integers") << QStringLiteral(R"({"grid": {"items": [{"id": "x", "row": 1e10}]}})")
                                                 << QStringLiteral("'grid.items[0].row' must be an integer") << false;
        QTest::newRow("spacing beyond the integers") << QStringLiteral(R"({"grid": {"items": [], "spacing": -1e300}})")
                                                     << QStringLiteral("'grid.spacing' must be an integer") << false;
        QTest::newRow("negative") << QStringLiteral(R"({"grid": {"items": [{"id": "x", "column": -1}]}})")
                                  << QStringLiteral("must not be negative") << false;
        QTest::newRow("twice") << QStringLiteral(R"({"grid": {"items": [{"id": "x"}, {"id": "x"}]}})")
                               << QStringLiteral("grid.items[1]: the id 'x' is used twice") << false;
        QTest::newRow("quantity") << QStringLiteral(R"({"grid": {"items": [{"id": "x", "colors": {"%c%": {"rules": [{"when": "many", "color": "red"}]}}}]}})")
                                  << QStringLiteral("names no statistics quantity: many") << false;
        QTest::newRow("filter") << QStringLiteral(R"({"grid": {"items": [{"id": "x", "filter": {"format": 3}}]}})")
                                << QStringLiteral("grid.items[0].filter: ") << false;
    }
    void malformedConfiguration()
    {
        QFETCH(QString, json);
        QFETCH(QString, error);
        QFETCH(bool, fullMessage);
        FilterViewConfiguration config;
        QVERIFY(config.parse(validConfigText()));
        QVERIFY(!config.parse(json));
        QVERIFY2(config.getErrorText().contains(error), qPrintable(config.getErrorText()));
        QCOMPARE(config.isErrorFullMessage(), fullMessage);
        // Nothing of the earlier configuration survives a failed parse.
        QCOMPARE(config.getViewType(), FilterViewConfiguration::NoView);
        QVERIFY(config.getGridConfig().getItems().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestStatistics)
#include "tst_statistics.moc"
