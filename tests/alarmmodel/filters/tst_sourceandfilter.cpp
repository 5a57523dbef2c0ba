#include "AlarmTestFactory.h"
#include "FilterRuleContainer.h"
#include "SourceAndFilter.h"
#include "ValueFilterDate.h"
#include "ValueFilterNumbers.h"
#include "ValueFilterStringPattern.h"
#include "ValueFilterText.h"

#include <QtTest>

using namespace AlarmTestFactory;

namespace {
const Constants::ValueSource alarm = Constants::ValueSourceAlarm;

// An alarm as a map from column id to value.
using Alarm = QVariantMap;

bool passes(const FilterRuleContainer &filter, const Alarm &a)
{
    return filter.matches([&a](const QString &id, Constants::ValueSource) { return a.value(id); });
}

// A record with every member set to something other than its default.
SourceAndFilter fullRecord()
{
    SourceAndFilter r;
    r.setSourceMode(Constants::SourceModeHistory);
    TimeRange range;
    range.setRangeType(TimeRange::CustomInterval);
    range.setTimeSpec(Qt::UTC);
    range.setStartTime(QDateTime(QDate(2024, 5, 1), QTime(8, 0), Qt::UTC));
    range.setEndTime(QDateTime(QDate(2024, 5, 2), QTime(8, 30, 15, 250), Qt::UTC));
    r.setTimeRange(range);
    r.setSystems({QStringLiteral("System1"), QStringLiteral("System2")});
    r.setDpNames({QStringLiteral("pump1.alarm")});
    r.setSelectionKind(SourceAndFilter::SelectByDpNames);
    auto text = QSharedPointer<ValueFilterText>::create(WildcardConfig(), QStringLiteral("text"), alarm, true);
    text->addItem(QStringLiteral("^Leak"), 2, false);
    auto date = QSharedPointer<ValueFilterDate>::create(WildcardConfig(), QStringLiteral("time"), alarm, true);
    date->setComparisonMethod(ValueFilterDate::After);
    date->setFirstDate(QDateTime(QDate(2024, 5, 1), QTime(9, 0)));
    r.setFilterContainer(QSharedPointer<FilterRuleContainer>::create(
        WildcardConfig(),
        QList<FilterRuleSet>{ruleSet(true, {patternFilter("dp", "pump*;!*test*"), text}),
                             ruleSet(false, {numberFilter("prio", "<10"), date})},
        true));
    return r;
}
} // namespace

class TestSourceAndFilter : public QObject
{
    Q_OBJECT
private slots:
    void includeAndExcludeSets_data()
    {
        QTest::addColumn<Alarm>("alarm");
        QTest::addColumn<bool>("expected");
        // Include: pumps of priority >50, or any valve. Exclude: anything in test.
        QTest::newRow("pump high") << Alarm{{"dp", "pump1"}, {"prio", 80}, {"area", "hall"}} << true;
        QTest::newRow("pump low") << Alarm{{"dp", "pump1"}, {"prio", 20}, {"area", "hall"}} << false;
        QTest::newRow("valve any prio") << Alarm{{"dp", "valve2"}, {"prio", 1}, {"area", "hall"}} << true;
        QTest::newRow("valve in test") << Alarm{{"dp", "valve2"}, {"prio", 1}, {"area", "test"}} << false;
        QTest::newRow("neither") << Alarm{{"dp", "motor"}, {"prio", 99}, {"area", "hall"}} << false;
    }
    void includeAndExcludeSets()
    {
        QFETCH(Alarm, alarm);
        QFETCH(bool, expected);
        FilterRuleContainer filter(WildcardConfig(),
                                   QList<FilterRuleSet>{
                                       ruleSet(true, {patternFilter("dp", "pump*"), numberFilter("prio", ">50")}),
                                       ruleSet(true, {patternFilter("dp", "valve*")}),
                                       ruleSet(false, {patternFilter("area", "test")}),
                                       ruleSet(false, {patternFilter("dp", "*")}), // restricts nothing: ignored
                                   },
                                   false);
        QCOMPARE(passes(filter, alarm), expected);
    }

    void onlyExcludeSetsAndEmptiness()
    {
        FilterRuleContainer filter(WildcardConfig(), QList<FilterRuleSet>{ruleSet(false, {patternFilter("dp", "x*")})},
                                   false);
        QVERIFY(passes(filter, Alarm{{"dp", "pump"}}));
        QVERIFY(!passes(filter, Alarm{{"dp", "x1"}}));

        SourceAndFilter record;
        QVERIFY(record.isEmpty());
        // One empty include tab, as the editor produces it, is still no filter.
        record.setFilterContainer(QSharedPointer<FilterRuleContainer>::create(
            WildcardConfig(), QList<FilterRuleSet>{ruleSet(true, {patternFilter("dp", " ")})}, false));
        QVERIFY(record.isEmpty());
        QVERIFY(!fullRecord().isEmpty());
    }

    void matchCaseReachesEveryFilter()
    {
        FilterRuleContainer filter(WildcardConfig(), QList<FilterRuleSet>{ruleSet(true, {patternFilter("dp", "Pump")})},
                                   false);
        QVERIFY(passes(filter, Alarm{{"dp", "PUMP"}}));
        filter.setMatchCase(true);
        QVERIFY(!passes(filter, Alarm{{"dp", "PUMP"}}));
        QVERIFY(filter.getRuleSets().first().getFilters().first()->isMatchCase());
    }

    void comparisons()
    {
        const SourceAndFilter a = fullRecord();
        SourceAndFilter b = fullRecord();
        QVERIFY(a.isEqual(b));
        b.setSystems({QStringLiteral("System1")});
        QVERIFY(!a.isEqual(b));
        QVERIFY(a.isFilterEqual(b)); // the filter alone is unchanged

        b = fullRecord();
        b.getFilterContainer()->setMatchCase(false);
        QVERIFY(!a.isFilterEqual(b));

        // No container and a container without rule sets filter the same.
        SourceAndFilter none, noSets;
        noSets.setFilterContainer(QSharedPointer<FilterRuleContainer>::create(WildcardConfig()));
        QVERIFY(none.isFilterEqual(noSets));
        QVERIFY(!none.isFilterEqual(a));

        // A deep copy compares equal but does not share value filters.
        const auto copy = a.getFilterContainer()->clone();
        QVERIFY(copy->isEqual(*a.getFilterContainer()));
        QVERIFY(copy->getRuleSets().first().getFilters().first() !=
                a.getFilterContainer()->getRuleSets().first().getFilters().first());
    }

    void saveAndLoadKeepEverything_data()
    {
        QTest::addColumn<SourceAndFilter>("record");
        QTest::newRow("default") << SourceAndFilter();
        QTest::newRow("full") << fullRecord();
        SourceAndFilter live;
        TimeRange range;
        range.setRangeType(TimeRange::LastDays);
        range.setValueCount(3);
        live.setTimeRange(range);
        live.setFilterContainer(QSharedPointer<FilterRuleContainer>::create(WildcardConfig()));
        QTest::newRow("live, empty container, last 3 days") << live;
    }
    void saveAndLoadKeepEverything()
    {
        QFETCH(SourceAndFilter, record);
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("filter.json"));
        QString error;
        QVERIFY2(record.saveToFile(file, error), qPrintable(error));
        SourceAndFilter loaded;
        QVERIFY2(loaded.loadFromFile(file, error), qPrintable(error));
        QVERIFY(loaded.isEqual(record));
        QCOMPARE(loaded.toJson(), record.toJson());
        QCOMPARE(bool(loaded.getFilterContainer()), bool(record.getFilterContainer()));
    }

    void badFilesChangeNothing_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("errorPart");
        const QByteArray good = fullRecord().toJsonText();
        QTest::newRow("malformed JSON") << good.left(good.size() / 2) << "malformed JSON at line";
        QTest::newRow("not an object") << QByteArray("[1, 2]") << "not an object";
        QTest::newRow("foreign file") << QByteArray("{\"format\": \"Other\", \"version\": 1}") << "not a saved filter";
        QTest::newRow("newer version") << QByteArray(good).replace("\"version\": 1", "\"version\": 9")
                                       << "unsupported filter file version 9";
        QTest::newRow("invalid regular expression") << QByteArray(good).replace("^Leak", "(Leak")
                                                    << "filter.ruleSets[0].filters[1].items[0]': invalid regular expression";
        QTest::newRow("bad number rule") << QByteArray(good).replace("<10", "<1O")
                                         << "cannot parse number rule(s) '<1O'";
        QTest::newRow("fractional selection kind")
            << QByteArray(good).replace("\"selectionKind\": 1", "\"selectionKind\": 0.5")
            << "'selectionKind' must be an integer";
        QTest::newRow("version beyond the integers")
            << QByteArray("{\"format\":\"AlarmScreen.SourceAndFilter\",\"version\":1e10}") << "'version' must be an integer";
        QTest::newRow("bad mode") << QByteArray(good).replace("\"History\"", "\"Future\"") << "unknown source mode";
        QTest::newRow("bad time") << QByteArray(good).replace("2024-05-01T08:00:00.000Z", "yesterday")
                                  << "ISO 8601";
    }
    void badFilesChangeNothing()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, errorPart);
        SourceAndFilter record = fullRecord();
        record.setSystems({QStringLiteral("Kept")});
        const QJsonObject before = record.toJson();
        QString error;
        QVERIFY(!record.fromJsonText(text, error));
        QVERIFY2(error.contains(errorPart), qPrintable(error));
        QCOMPARE(record.toJson(), before);
    }

    void travelsInQueuedSignals()
    {
        QVERIFY(QMetaType::type("SourceAndFilter") != QMetaType::UnknownType);
        QVERIFY(QMetaType::type("TimeRange") != QMetaType::UnknownType);
        QVERIFY(QMetaType::type("QuickCellFilter") != QMetaType::UnknownType);
    }
};

QTEST_GUILESS_MAIN(TestSourceAndFilter)
#include "tst_sourceandfilter.moc"
