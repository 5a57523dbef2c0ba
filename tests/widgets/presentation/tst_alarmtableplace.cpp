// The operator's place in the alarm table (selection, current alarm, the
// alarm at the top, opened groups) through an alarm flood, a quick filter
// change and a sort change, in a real tree view.

#include "AlarmTestFactory.h"
#include "AlarmBurst.h"
#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "ViewTopAnchor.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSet>
#include <QSignalSpy>
#include <QTreeView>
#include <QtTest>

using namespace AlarmTestFactory;

namespace {

const qint64 baseTime = 1700000000000;
const QStringList systems = {QStringLiteral("SysA"), QStringLiteral("SysB"), QStringLiteral("SysC"),
                             QStringLiteral("SysD"), QStringLiteral("SysE")};
const QStringList texts = {QStringLiteral("Pump fault"), QStringLiteral("Valve open"),
                           QStringLiteral("Level high"), QStringLiteral("pump overload")};
const QStringList openedGroups = {QStringLiteral("SysA"), QStringLiteral("SysB"), QStringLiteral("SysC")};

AlarmInstancePtr alarmAt(int serial, QRandomGenerator &random)
{
    return makeAlarm(systems.at(serial % systems.size()), serial, 10 * int(random.bounded(1, 30)),
                     texts.at(int(random.bounded(texts.size()))), baseTime + 1000 * random.bounded(5000));
}

AlarmInstancePtr movedInTime(const AlarmInstancePtr &alarm, qint64 timeMs)
{
    AlarmInstance::Data data = alarm->getData();
    data.timeMs = timeMs;
    return QSharedPointer<AlarmInstance>::create(data);
}

bool isPump(const AlarmInstancePtr &alarm)
{
    return alarm->getData().alarmText.contains(QLatin1String("pump"), Qt::CaseInsensitive);
}

// What the operator sees of their place, by alarm identity and group key.
struct Place {
    QSet<AlarmIdent> selected;
    AlarmIdent current;
    AlarmIdent top;
    QSet<QString> opened;
};

Place placeOf(const QTreeView &view, const AlarmsProxyModel &proxy)
{
    Place place;
    for (const QModelIndex &index : view.selectionModel()->selectedRows()) {
        if (const auto alarm = proxy.getAlarmAtRow(index))
            place.selected.insert(alarm->getIdent());
    }
    if (const auto current = proxy.getAlarmAtRow(view.currentIndex()))
        place.current = current->getIdent();
    if (const auto top = proxy.getAlarmAtRow(view.indexAt(QPoint(0, 0))))
        place.top = top->getIdent();
    for (int row = 0; row < proxy.rowCount(); ++row) {
        const QModelIndex group = proxy.index(row, 0);
        if (view.isExpanded(group))
            place.opened.insert(group.data(Qt::EditRole).toString());
    }
    return place;
}

QSet<AlarmIdent> shownOf(const QSet<AlarmIdent> &idents, const AlarmsProxyModel &proxy)
{
    QSet<AlarmIdent> shown;
    for (const AlarmIdent &ident : idents) {
        if (proxy.findAlarm(ident).isValid())
            shown.insert(ident);
    }
    return shown;
}

} // namespace

class TestAlarmTablePlace : public QObject
{
    Q_OBJECT
private slots:
    void operatorKeepsTheirPlace_data()
    {
        QTest::addColumn<bool>("grouped");
        QTest::newRow("flat") << false;
        QTest::newRow("grouped by system") << true;
    }
    void operatorKeepsTheirPlace()
    {
        QFETCH(bool, grouped);
        QRandomGenerator random(23);
        QVector<AlarmInstancePtr> alarms;
        for (int serial = 1; serial <= 10000; ++serial)
            alarms.append(alarmAt(serial, random));
        auto model = QSharedPointer<AlarmsModel>::create();
        model->setAlarms(alarms);

        AlarmsProxyModel proxy;
        proxy.setAlarmsModel(model);
        GroupingConfiguration grouping(nullptr, QStringLiteral("test"));
        if (grouped)
            grouping.addRule(QSharedPointer<AlarmsGroupRule>::create(Constants::ValueSourceAlarm, QStringLiteral("system")));
        proxy.setGrouping(grouping);
        // Fatal: a violation ends the run; the QtTest mode formats a message per check.
        QAbstractItemModelTester tester(&proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
        QSignalSpy resets(&proxy, &QAbstractItemModel::modelReset);

        QTreeView view;
        view.setModel(&proxy);
        view.setUniformRowHeights(true);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.resize(900, 400);
        ViewTopAnchor anchor(&view);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        for (int row = 0; grouped && row < proxy.rowCount(); ++row) {
            if (openedGroups.contains(proxy.index(row, 0).data(Qt::EditRole).toString()))
                view.expand(proxy.index(row, 0));
        }

        // 100 selected alarms of the shown ones, a pump alarm as current
        // and one at the top, both far from the start of the table.
        Place before;
        QVector<AlarmInstancePtr> visible;
        for (const auto &alarm : qAsConst(alarms)) {
            if (!grouped || openedGroups.contains(alarm->getIdent().getSystem()))
                visible.append(alarm);
        }
        for (int i = 0; i < 100; ++i) {
            const QModelIndex index = proxy.findAlarm(visible.at(i * 53 + 7)->getIdent());
            view.selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
            before.selected.insert(visible.at(i * 53 + 7)->getIdent());
        }
        AlarmInstancePtr current, top;
        for (int i = 3000; !current || !top; ++i) {
            const int priority = visible.at(i)->getData().priority;
            if (isPump(visible.at(i)) && priority >= 100 && priority <= 200
                && !before.selected.contains(visible.at(i)->getIdent()))
                (current ? top : current) = visible.at(i);
        }
        view.selectionModel()->setCurrentIndex(proxy.findAlarm(current->getIdent()), QItemSelectionModel::NoUpdate);
        view.scrollTo(proxy.findAlarm(top->getIdent()), QAbstractItemView::PositionAtTop);
        before.current = current->getIdent();
        before.top = top->getIdent();
        before.opened = grouped ? QSet<QString>(openedGroups.begin(), openedGroups.end()) : QSet<QString>();
        Place now = placeOf(view, proxy);
        QCOMPARE(now.selected, before.selected);
        QCOMPARE(now.top, before.top);

        // The flood: 3 000 changes. Selected alarms, the current and the top
        // one move in time; some selected ones go; new alarms come, some in
        // a group not shown so far.
        AlarmBurst burst;
        QSet<AlarmIdent> removed;
        const QList<AlarmIdent> selected = before.selected.values();
        for (int i = 0; i < selected.size(); ++i) {
            if (i % 5 == 0) {
                burst.remove(selected.at(i));
                removed.insert(selected.at(i));
            } else {
                burst.upsert(movedInTime(model->getAlarm(selected.at(i)), baseTime + 1000 * random.bounded(6000)));
            }
        }
        burst.upsert(movedInTime(current, baseTime + 5999000));
        burst.upsert(movedInTime(top, baseTime + 2500001));
        while (burst.size() < 1500) {
            const AlarmInstancePtr alarm = alarms.at(int(random.bounded(alarms.size())));
            if (alarm != current && alarm != top && !before.selected.contains(alarm->getIdent()))
                burst.upsert(changed(alarm, 10 * int(random.bounded(1, 30)), AlarmInstance::CameAcknowledged));
        }
        for (int serial = 10001; burst.size() < 2500; ++serial)
            burst.upsert(serial % 7 ? alarmAt(serial, random)
                                    : makeAlarm(QStringLiteral("SysNew"), serial, 10, texts.at(0), baseTime));
        while (burst.size() < 3000) {
            const AlarmInstancePtr alarm = alarms.at(int(random.bounded(alarms.size())));
            if (alarm != current && alarm != top && !before.selected.contains(alarm->getIdent()))
                burst.remove(alarm->getIdent());
        }
        model->applyBurst(burst);
        before.selected -= removed;
        QTRY_COMPARE(placeOf(view, proxy).top, before.top);
        now = placeOf(view, proxy);
        QCOMPARE(now.selected, before.selected);
        QCOMPARE(now.current, before.current);
        QCOMPARE(now.opened, before.opened);

        // The merged table is what a table built from scratch shows.
        AlarmsProxyModel reference;
        reference.setAlarmsModel(model);
        reference.setGrouping(grouping);
        QCOMPARE(dump(proxy), dump(reference));

        // A quick filter keeps the pump alarms; the other groups stay open.
        QuickCellFilter quick;
        QVERIFY(quick.setString(QStringLiteral("pump")));
        proxy.setQuickFilter(quick);
        QSet<AlarmIdent> pumps;
        for (const AlarmIdent &ident : qAsConst(before.selected)) {
            if (isPump(model->getAlarm(ident)))
                pumps.insert(ident);
        }
        QVERIFY(pumps.size() > 20 && pumps.size() < before.selected.size());
        QTRY_COMPARE(placeOf(view, proxy).top, before.top);
        now = placeOf(view, proxy);
        QCOMPARE(now.selected, pumps);
        QCOMPARE(now.current, before.current);
        QCOMPARE(now.opened, before.opened);

        // Sorted by priority: still the same place.
        int priorityColumn = -1;
        const auto columns = proxy.getColumnsDefinition(true);
        for (int c = 0; c < columns.size(); ++c) {
            if (columns.at(c).getId() == QLatin1String("priority"))
                priorityColumn = c;
        }
        QVERIFY(priorityColumn >= 0);
        view.sortByColumn(priorityColumn, Qt::AscendingOrder);
        QTRY_COMPARE(placeOf(view, proxy).top, before.top);
        now = placeOf(view, proxy);
        QCOMPARE(now.selected, pumps);
        QCOMPARE(now.current, before.current);
        QCOMPARE(now.opened, before.opened);
        QCOMPARE(shownOf(before.selected, proxy), pumps);

        // Clearing the filter brings the other alarms back; the selection is
        // what was still shown.
        proxy.setQuickFilter(QuickCellFilter());
        QTRY_COMPARE(placeOf(view, proxy).top, before.top);
        QCOMPARE(placeOf(view, proxy).selected, pumps);
        QCOMPARE(resets.size(), 0);
    }
};

QTEST_MAIN(TestAlarmTablePlace)
#include "tst_alarmtableplace.moc"
