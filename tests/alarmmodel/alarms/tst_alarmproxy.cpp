#include "AlarmTestFactory.h"
#include "AlarmsModel.h"
#include "AlarmsModelConsumer.h"
#include "ModelRowSelection.h"

#include <QtTest>

using namespace AlarmTestFactory;

namespace {

const qint64 baseTime = 1700000000000;
const QStringList texts = {QStringLiteral("Pump fault"), QStringLiteral("Valve open"),
                           QStringLiteral("Level high"), QStringLiteral("pump overload")};

// 30 alarms over three systems with mixed priorities and texts.
QVector<AlarmInstancePtr> sampleAlarms()
{
    QVector<AlarmInstancePtr> alarms;
    for (int i = 0; i < 30; ++i) {
        const QString system = QStringLiteral("Sys%1").arg(QChar('A' + i % 3));
        const int priority = QVector<int>{10, 50, 100, 200}.at(i % 4);
        alarms.append(makeAlarm(system, i + 1, priority, texts.at((i / 2) % 4), baseTime + 1000 * ((i * 7) % 30)));
    }
    return alarms;
}

QVector<AlarmInstancePtr> shownAlarms(const AlarmsProxyModel &proxy)
{
    QVector<AlarmInstancePtr> result;
    for (const QModelIndex &index : ModelRowSelection::allRowsDepthFirst(&proxy)) {
        if (const auto alarm = proxy.getAlarmAtRow(index))
            result.append(alarm);
    }
    return result;
}

// A proxy over a model of the sample alarms, checked by the model tester.
struct Table {
    explicit Table(const QStringList &groups = {}, int incrementalLimit = 1000)
    {
        model->setAlarms(sampleAlarms());
        proxy.setIncrementalBurstLimit(incrementalLimit);
        proxy.setAlarmsModel(model);
        proxy.setGrouping(grouping(groups));
    }
    QSharedPointer<AlarmsModel> model = QSharedPointer<AlarmsModel>::create();
    AlarmsProxyModel proxy;
    QAbstractItemModelTester tester{&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

void groupingsAndBurstModes()
{
    QTest::addColumn<QStringList>("groups");
    QTest::addColumn<int>("incrementalLimit");
    const QStringList twoLevels{QStringLiteral("system"), QStringLiteral("priority")};
    QTest::newRow("flat, row by row") << QStringList() << 1000;
    QTest::newRow("flat, merged") << QStringList() << 0;
    QTest::newRow("grouped, row by row") << twoLevels << 1000;
    QTest::newRow("grouped, merged") << twoLevels << 0;
}

// Records what consumers are told.
class RecordingConsumer : public AlarmsModelConsumer
{
public:
    int resets = 0;
    QVector<AlarmChanges> changes;
    void alarmsReset(const AlarmsModel &) override { ++resets; }
    void alarmsChanged(const AlarmsModel &, const AlarmChanges &c) override { changes.append(c); }
};

} // namespace

class TestAlarmProxy : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        qRegisterMetaType<QList<QPersistentModelIndex>>();
        qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
    }

    void ruleSetsAndQuickFilterTogether()
    {
        Table table;
        AlarmsProxyModel &proxy = table.proxy;
        QCOMPARE(proxy.rowCount(), 30);

        // Include priority 50 to 100 or any "Valve" text, exclude system SysC.
        proxy.setFilter(sourceFilter({ruleSet(true, {numberFilter(QStringLiteral("priority"), QStringLiteral("50-100"))}),
                                      ruleSet(true, {patternFilter(QStringLiteral("text"), QStringLiteral("Valve*"))}),
                                      ruleSet(false, {patternFilter(QStringLiteral("system"), QStringLiteral("SysC"))})}));
        const auto structured = [](const AlarmInstancePtr &a) {
            const int p = a->getData().priority;
            return ((p >= 50 && p <= 100) || a->getData().alarmText.startsWith(QLatin1String("Valve")))
                   && a->getIdent().getSystem() != QLatin1String("SysC");
        };
        int expected = 0;
        for (const auto &alarm : table.model->getAlarms())
            expected += structured(alarm);
        QVERIFY(expected > 5 && expected < 25);
        QCOMPARE(proxy.rowCount(), expected);
        for (const auto &alarm : shownAlarms(proxy))
            QVERIFY(structured(alarm));

        // The quick filter narrows the structured result (case-insensitive, any cell).
        QuickCellFilter quick;
        QVERIFY(quick.setString(QStringLiteral("pump")));
        proxy.setQuickFilter(quick);
        int both = 0;
        for (const auto &alarm : table.model->getAlarms())
            both += structured(alarm) && alarm->getData().alarmText.contains(QLatin1String("pump"), Qt::CaseInsensitive);
        QVERIFY(both > 0 && both < expected);
        QCOMPARE(proxy.rowCount(), both);

        // A full-column wildcard must match a whole cell; an invalid expression shows nothing.
        quick.setMatchFullColumn(true);
        QVERIFY(quick.setString(QStringLiteral("pump*")));
        proxy.setQuickFilter(quick);
        for (const auto &alarm : shownAlarms(proxy))
            QVERIFY(alarm->getData().alarmText.startsWith(QLatin1String("pump"), Qt::CaseInsensitive));
        quick.setMode(QuickCellFilter::ModeRegularExpression);
        QVERIFY(!quick.setString(QStringLiteral("(unbalanced")));
        proxy.setQuickFilter(quick);
        QCOMPARE(proxy.rowCount(), 0);

        proxy.setQuickFilter(QuickCellFilter());
        proxy.setFilter(SourceAndFilter());
        QCOMPARE(proxy.rowCount(), 30);

        // The systems chosen in the record restrict the alarms too.
        SourceAndFilter bySystems;
        bySystems.setSystems({QStringLiteral("SysB")});
        proxy.setFilter(bySystems);
        QCOMPARE(proxy.rowCount(), 10);
    }

    void sortingKeepsPersistentIndexes()
    {
        Table table;
        AlarmsProxyModel &proxy = table.proxy;

        // Newest first by default.
        const auto shown = shownAlarms(proxy);
        for (int i = 1; i < shown.size(); ++i)
            QVERIFY(shown.at(i - 1)->getData().timeMs >= shown.at(i)->getData().timeMs);

        const QPersistentModelIndex tracked = proxy.index(3, 2);
        const AlarmIdent trackedIdent = proxy.getAlarmAtRow(tracked)->getIdent();
        QSignalSpy layout(&proxy, &QAbstractItemModel::layoutChanged);
        proxy.sort(columnOf(proxy, QStringLiteral("priority")), Qt::AscendingOrder);
        QCOMPARE(layout.size(), 1);
        const auto sorted = shownAlarms(proxy);
        for (int i = 1; i < sorted.size(); ++i)
            QVERIFY(sorted.at(i - 1)->getData().priority <= sorted.at(i)->getData().priority);
        QVERIFY(tracked.isValid());
        QCOMPARE(tracked.column(), 2);
        QCOMPARE(proxy.getAlarmAtRow(tracked)->getIdent(), trackedIdent);
        QCOMPARE(proxy.findAlarm(trackedIdent), tracked.sibling(tracked.row(), 0));
    }

    void nestedGroups()
    {
        Table table({QStringLiteral("system"), QStringLiteral("priority")});
        AlarmsProxyModel &proxy = table.proxy;

        QCOMPARE(proxy.rowCount(), 3);
        int alarms = 0;
        for (int s = 0; s < 3; ++s) {
            const QModelIndex system = proxy.index(s, 0);
            QCOMPARE(system.data(Qt::EditRole).toString(), QStringLiteral("Sys%1").arg(QChar('A' + s)));
            QCOMPARE(system.data().toString(), QStringLiteral("Sys%1 (10)").arg(QChar('A' + s)));
            QVERIFY(!proxy.getAlarmAtRow(system));
            QVERIFY(!proxy.index(s, 1).data().isValid());
            int lastPriority = -1;
            for (int p = 0; p < proxy.rowCount(system); ++p) {
                const QModelIndex priority = proxy.index(p, 0, system);
                // Priorities are ordered as numbers, not as texts ("100" < "50").
                QVERIFY(priority.data(Qt::EditRole).toInt() > lastPriority);
                lastPriority = priority.data(Qt::EditRole).toInt();
                QVERIFY(!proxy.getAlarmAtRow(priority));
                for (int a = 0; a < proxy.rowCount(priority); ++a) {
                    const auto alarm = proxy.getAlarmAtRow(proxy.index(a, 3, priority));
                    QVERIFY(alarm);
                    QCOMPARE(alarm->getIdent().getSystem(), system.data(Qt::EditRole).toString());
                    QCOMPARE(alarm->getData().priority, lastPriority);
                    QCOMPARE(proxy.rowCount(proxy.index(a, 0, priority)), 0);
                    ++alarms;
                }
            }
        }
        QCOMPARE(alarms, 30);
        // The walk of an export reaches every row, collapsed or not.
        QCOMPARE(ModelRowSelection::allRowsDepthFirst(&proxy).size(), 3 + 12 + 30);
        const ModelRowSelection top(&proxy);
        QCOMPARE(top.count(), 3);
        QVERIFY(top.hasChildren(0));
        QCOMPARE(top.childSelection(0).count(), 4);

        // Filtering empties groups: they disappear; regrouping keeps the filter.
        proxy.setFilter(sourceFilter({ruleSet(false, {numberFilter(QStringLiteral("priority"), QStringLiteral("<60"))})}));
        for (int s = 0; s < 3; ++s)
            QCOMPARE(proxy.rowCount(proxy.index(s, 0)), 2);
        proxy.setGrouping(grouping({QStringLiteral("priority")}));
        QCOMPARE(proxy.rowCount(), 2);
        QCOMPARE(proxy.index(0, 0).data(Qt::EditRole).toInt(), 100);
        proxy.setGrouping(grouping({}));
        QCOMPARE(proxy.rowCount(), 14);
        QVERIFY(proxy.getAlarmAtRow(proxy.index(0, 0)));
    }

    void burstsAreAppliedInOneStep_data() { groupingsAndBurstModes(); }
    void burstsAreAppliedInOneStep()
    {
        QFETCH(QStringList, groups);
        QFETCH(int, incrementalLimit);
        Table table(groups, incrementalLimit);
        AlarmsProxyModel &proxy = table.proxy;
        const auto alarms = sampleAlarms();
        const SourceAndFilter filter =
            sourceFilter({ruleSet(false, {patternFilter(QStringLiteral("text"), QStringLiteral("Level*"))})});
        proxy.setFilter(filter);
        const QPersistentModelIndex untouched = proxy.findAlarm(alarms.at(0)->getIdent());
        QVERIFY(untouched.isValid());

        AlarmBurst burst;
        burst.remove(alarms.at(1)->getIdent());                                        // shown, goes
        burst.remove(AlarmIdent(QStringLiteral("SysA"), 999));                           // unknown: ignored
        QVERIFY(proxy.findAlarm(alarms.at(8)->getIdent()).isValid());
        QVERIFY(proxy.findAlarm(alarms.at(6)->getIdent()).isValid());
        burst.upsert(changed(alarms.at(8), 7, AlarmInstance::CameAcknowledged));       // moves to a new group
        burst.upsert(changed(alarms.at(6), 100, AlarmInstance::WentUnacknowledged));  // same place
        burst.upsert(makeAlarm(QStringLiteral("SysD"), 100, 300, QStringLiteral("Pump fault"), baseTime + 99999));
        burst.upsert(makeAlarm(QStringLiteral("SysA"), 101, 50, QStringLiteral("Level low"), baseTime)); // filtered out
        auto leaving = alarms.at(9);                                                  // filtered out by the update
        burst.upsert(makeAlarm(leaving->getIdent().getSystem(), leaving->getIdent().getSerial(), 50,
                               QStringLiteral("Level low"), baseTime));
        // Every alarm of group SysC/200 goes: the group must go with it.
        for (const auto &alarm : alarms) {
            if (alarm->getIdent().getSystem() == QLatin1String("SysC") && alarm->getData().priority == 200)
                burst.remove(alarm->getIdent());
        }

        QSignalSpy resets(&proxy, &QAbstractItemModel::modelReset);
        QSignalSpy layouts(&proxy, &QAbstractItemModel::layoutChanged);
        table.model->applyBurst(burst);
        // Merged or row by row, the operator keeps their place.
        QCOMPARE(resets.size(), 0);
        if (incrementalLimit == 0)
            QCOMPARE(layouts.size(), 1);
        QVERIFY(untouched.isValid());
        QCOMPARE(proxy.getAlarmAtRow(untouched)->getIdent(), alarms.at(0)->getIdent());

        // The result is what a table built from scratch shows.
        QCOMPARE(dump(proxy), freshDump(table.model, grouping(groups), filter));
        QVERIFY(!proxy.findAlarm(alarms.at(1)->getIdent()).isValid());
        QVERIFY(!proxy.findAlarm(leaving->getIdent()).isValid());
        QVERIFY(proxy.findAlarm(AlarmIdent(QStringLiteral("SysD"), 100)).isValid());
        const auto updated = proxy.getAlarmAtRow(proxy.findAlarm(alarms.at(6)->getIdent()));
        QVERIFY(updated);
        QCOMPARE(updated->getData().state, AlarmInstance::WentUnacknowledged);
    }

    // Random bursts that empty groups and open new ones at both levels,
    // interleaved with filter changes: the table always equals one built from
    // scratch, and every persistent index either still shows its alarm or,
    // when the alarm left, is invalid.
    void randomBurstsKeepTableAndIndexes_data() { groupingsAndBurstModes(); }
    void randomBurstsKeepTableAndIndexes()
    {
        QFETCH(QStringList, groups);
        QFETCH(int, incrementalLimit);
        QRandomGenerator random(21);
        const auto randomAlarm = [&random](qint64 serial) {
            return makeAlarm(QStringLiteral("Sys%1").arg(QChar('A' + random.bounded(4))), serial,
                             QVector<int>{10, 50, 100, 200}.at(int(random.bounded(4))),
                             texts.at(int(random.bounded(texts.size()))), baseTime + 1000 * random.bounded(50));
        };
        auto model = QSharedPointer<AlarmsModel>::create();
        QVector<AlarmInstancePtr> alarms;
        for (int serial = 1; serial <= 60; ++serial)
            alarms.append(randomAlarm(serial));
        model->setAlarms(alarms);
        AlarmsProxyModel proxy;
        // Fatal: the QtTest mode formats a message for every check of every round.
        QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
        proxy.setIncrementalBurstLimit(incrementalLimit);
        proxy.setAlarmsModel(model);
        proxy.setGrouping(grouping(groups));
        QSignalSpy resets(&proxy, &QAbstractItemModel::modelReset);

        QuickCellFilter pump;
        QVERIFY(pump.setString(QStringLiteral("pump")));
        const SourceAndFilter urgent = sourceFilter({ruleSet(true, {numberFilter(QStringLiteral("priority"), QStringLiteral(">60"))})});
        const SourceAndFilter notSysA = sourceFilter({ruleSet(false, {patternFilter(QStringLiteral("system"), QStringLiteral("sysa"))})});
        for (int round = 0; round < 40; ++round) {
            QHash<AlarmIdent, QPersistentModelIndex> tracked;
            for (const auto &alarm : shownAlarms(proxy))
                tracked.insert(alarm->getIdent(), QPersistentModelIndex(proxy.findAlarm(alarm->getIdent(), 1)));
            if (round % 5 == 4) {
                // In turn: everything shown again, the first filter over
                // everything, another filter on top, one filter for another.
                const int step = round / 5 % 4;
                proxy.setQuickFilter(step == 1 || step == 2 ? pump : QuickCellFilter());
                proxy.setFilter(step == 2 ? urgent : step == 3 ? notSysA : SourceAndFilter());
            } else {
                AlarmBurst burst;
                for (int i = int(random.bounded(1, 25)); i > 0; --i) {
                    const qint64 serial = random.bounded(1, 90);
                    if (random.bounded(3) == 0)
                        burst.remove(AlarmIdent(QStringLiteral("SysA"), serial));
                    burst.upsert(randomAlarm(serial));
                    if (random.bounded(4) == 0)
                        burst.remove(randomAlarm(serial)->getIdent());
                }
                model->applyBurst(burst);
            }
            QCOMPARE(dump(proxy), freshDump(model, grouping(groups), proxy.getFilter(), proxy.getQuickFilter()));
            for (auto it = tracked.cbegin(); it != tracked.cend(); ++it)
                QCOMPARE(QModelIndex(it.value()), proxy.findAlarm(it.key(), 1));
        }
        QCOMPARE(resets.size(), 0);
    }

    void modelBurstResolution()
    {
        AlarmsModel model;
        RecordingConsumer consumer;
        model.addConsumer(&consumer);
        const auto alarms = sampleAlarms();
        model.setAlarms(alarms.mid(0, 3));
        QCOMPARE(consumer.resets, 1);

        AlarmBurst burst;
        burst.upsert(alarms.at(5));                                     // added, then removed: nothing
        burst.remove(alarms.at(5)->getIdent());
        burst.upsert(changed(alarms.at(0), 1, AlarmInstance::CameAcknowledged));
        burst.upsert(changed(alarms.at(0), 2, AlarmInstance::CameAcknowledged)); // the later wins
        burst.remove(alarms.at(1)->getIdent());
        burst.upsert(alarms.at(7));
        model.applyBurst(burst);

        QCOMPARE(consumer.changes.size(), 1);
        const AlarmChanges &c = consumer.changes.at(0);
        QCOMPARE(c.added, QVector<AlarmInstancePtr>{alarms.at(7)});
        QCOMPARE(c.removed, QVector<AlarmInstancePtr>{alarms.at(1)});
        QCOMPARE(c.updated.size(), 1);
        QCOMPARE(c.updated.at(0).first, alarms.at(0));
        QCOMPARE(c.updated.at(0).second->getData().priority, 2);
        QCOMPARE(model.count(), 3);
        QCOMPARE(model.getAlarm(alarms.at(0)->getIdent())->getData().priority, 2);
        QVERIFY(!model.getAlarm(alarms.at(1)->getIdent()));
        QCOMPARE(model.getAlarm(alarms.at(2)->getIdent()), alarms.at(2));

        // An empty result tells nobody; a removed consumer hears nothing more.
        AlarmBurst nothing;
        nothing.remove(AlarmIdent(QStringLiteral("SysA"), 12345));
        model.applyBurst(nothing);
        model.removeConsumer(&consumer);
        model.applyBurst(burst);
        QCOMPARE(consumer.changes.size(), 1);
    }

    void resetsAndModelChanges()
    {
        auto model = QSharedPointer<AlarmsModel>::create();
        AlarmsProxyModel proxy;
        QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::QtTest);
        proxy.setGrouping(grouping({QStringLiteral("system")}));
        proxy.setAlarmsModel(model);
        QCOMPARE(proxy.rowCount(), 0);
        model->setAlarms(sampleAlarms());
        QCOMPARE(proxy.rowCount(), 3);
        QCOMPARE(proxy.getVisibleAlarmCount(), 30);

        auto other = QSharedPointer<AlarmsModel>::create();
        other->setAlarms(sampleAlarms().mid(0, 2));
        proxy.setAlarmsModel(other);
        QCOMPARE(proxy.getVisibleAlarmCount(), 2);
        model->clear(); // the old model is no longer followed
        QCOMPARE(proxy.getVisibleAlarmCount(), 2);
        QCOMPARE(proxy.getAlarmByIdent(AlarmIdent(QStringLiteral("SysA"), 1))->getIdent().getSerial(), 1);

        // Unknown columns stay empty instead of breaking the table.
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("column 'nonsense' names no alarm property")));
        proxy.setColumns({ColumnDefinition(0, QStringLiteral("system"), QStringLiteral("System")),
                          ColumnDefinition(0, QStringLiteral("nonsense"), QStringLiteral("?"))});
        QCOMPARE(proxy.columnCount(), 2);
        QCOMPARE(proxy.headerData(0, Qt::Horizontal).toString(), QStringLiteral("System"));
        const QModelIndex alarmRow = proxy.index(0, 1, proxy.index(0, 0));
        QVERIFY(proxy.getAlarmAtRow(alarmRow));
        QVERIFY(!alarmRow.data().isValid());
    }
};

QTEST_GUILESS_MAIN(TestAlarmProxy)
#include "tst_alarmproxy.moc"
