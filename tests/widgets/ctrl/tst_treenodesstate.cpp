// The expansion record of a grouped alarm table, on the real table proxy.

#include "AlarmTestFactory.h"
#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "LogCapture.h"
#include "TreeNodesState.h"

#include <QTreeView>
#include <QtTest>

using namespace AlarmTestFactory;

namespace {

// Three systems, two alarm classes ("alert" from priority 100), priorities 10/50/100/200.
QVector<AlarmInstancePtr> sampleAlarms()
{
    QVector<AlarmInstancePtr> alarms;
    for (int i = 0; i < 24; ++i) {
        const QString system = QStringLiteral("Sys%1").arg(QChar('A' + i % 3));
        const int priority = QVector<int>{10, 50, 100, 200}.at(i % 4);
        alarms.append(makeAlarm(system, i + 1, priority, QStringLiteral("text %1").arg(i), 1700000000000 + i));
    }
    return alarms;
}

GroupingConfiguration grouping(const QStringList &properties)
{
    GroupingConfiguration config(nullptr, QStringLiteral("test"));
    for (const QString &property : properties)
        config.addRule(QSharedPointer<AlarmsGroupRule>::create(Constants::ValueSourceAlarm, property));
    return config;
}

// The group below `parent` whose value is `value`.
QModelIndex group(const QAbstractItemModel &model, const QVariant &value, const QModelIndex &parent = {})
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        if (index.data(Qt::EditRole) == value)
            return index;
    }
    return {};
}

// The record as "value=flag" lines, depth first, indented per level.
QStringList record(const TreeNodesState::SingleNodeState &node, int depth = 0)
{
    QStringList lines;
    for (const auto &child : node.getChildren()) {
        lines << QString(depth * 2, QLatin1Char(' ')) + child.getMainValue().toString() + QLatin1Char('=')
                     + QString::number(child.isExpanded());
        lines += record(child, depth + 1);
    }
    return lines;
}

// The expanded groups of a view, as "value/value" paths.
QStringList expandedPaths(const QTreeView &view, const QModelIndex &parent = {}, const QString &prefix = {})
{
    QStringList paths;
    const QAbstractItemModel &model = *view.model();
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex index = model.index(row, 0, parent);
        const QString path = prefix + index.data(Qt::EditRole).toString();
        if (view.isExpanded(index))
            paths << path;
        paths += expandedPaths(view, index, path + QLatin1Char('/'));
    }
    return paths;
}

struct GroupedTable
{
    GroupedTable()
    {
        model->setAlarms(sampleAlarms());
        proxy.setAlarmsModel(model);
        proxy.setGrouping(grouping({QStringLiteral("system"), QStringLiteral("alarmClass")}));
        view.setModel(&proxy);
        state.setGroupingConfig(proxy.getGrouping());
        state.setTreeView(&view);
    }

    LogCapture log;
    QSharedPointer<AlarmsModel> model = QSharedPointer<AlarmsModel>::create();
    AlarmsProxyModel proxy;
    QTreeView view;
    TreeNodesState state{&log.producer};
};

} // namespace

class TestTreeNodesState : public QObject
{
    Q_OBJECT
private slots:
    void expansionsSurviveResetsAndFilters()
    {
        GroupedTable t;
        // The operator opens B, then B/alert, then A/warning without A itself.
        const QModelIndex b = group(t.proxy, QStringLiteral("SysB"));
        t.view.expand(b);
        t.view.expand(group(t.proxy, QStringLiteral("alert"), b));
        t.view.expand(group(t.proxy, QStringLiteral("warning"), group(t.proxy, QStringLiteral("SysA"))));
        const QStringList recorded{QStringLiteral("SysA=0"), QStringLiteral("  warning=1"),
                                   QStringLiteral("SysB=1"), QStringLiteral("  alert=1")};
        QCOMPARE(record(t.state.getRootState()), recorded);

        // A filter that hides SysB's alarms, then one that shows them again:
        // the groups that stay keep their state in the view, and SysB comes
        // back as a new group, over which the record is laid.
        t.proxy.setFilter(sourceFilter({ruleSet(false, {patternFilter(QStringLiteral("system"), QStringLiteral("SysB"))})}));
        QCOMPARE(expandedPaths(t.view), QStringList{QStringLiteral("SysA/warning")});
        t.state.restoreState();
        QCOMPARE(expandedPaths(t.view), QStringList{QStringLiteral("SysA/warning")});
        t.proxy.setFilter(SourceAndFilter());
        t.state.restoreState();
        QCOMPARE(expandedPaths(t.view),
                 (QStringList{QStringLiteral("SysA/warning"), QStringLiteral("SysB"), QStringLiteral("SysB/alert")}));
        // Restoring expanded and collapsed nodes; none of that went into the record.
        QCOMPARE(record(t.state.getRootState()), recorded);

        // Collapsing is recorded like expanding.
        t.view.collapse(group(t.proxy, QStringLiteral("SysB")));
        t.model->setAlarms(sampleAlarms());
        t.state.restoreState();
        QCOMPARE(expandedPaths(t.view), (QStringList{QStringLiteral("SysA/warning"), QStringLiteral("SysB/alert")}));

        // "Expand all" wins over later single collapses until collapseAll.
        t.state.expandAll();
        t.view.collapse(group(t.proxy, QStringLiteral("SysC")));
        t.model->setAlarms(sampleAlarms());
        t.state.restoreState();
        QCOMPARE(expandedPaths(t.view).size(), 3 + 3 * 2);
        t.state.collapseAll();
        t.model->setAlarms(sampleAlarms());
        t.state.restoreState();
        QVERIFY(expandedPaths(t.view).isEmpty());

        // A new view starts a new record; the old one is no longer listened to.
        QTreeView other;
        other.setModel(&t.proxy);
        t.state.setTreeView(&other);
        QVERIFY(t.state.getRootState().getChildren().isEmpty());
        t.view.expand(group(t.proxy, QStringLiteral("SysC")));
        QVERIFY(t.state.getRootState().getChildren().isEmpty());
    }

    void groupingChangesKeepTheSharedLevels()
    {
        GroupedTable t;
        const QModelIndex a = group(t.proxy, QStringLiteral("SysA"));
        t.view.expand(a);
        t.view.expand(group(t.proxy, QStringLiteral("alert"), a));
        t.view.expand(group(t.proxy, QStringLiteral("SysC")));

        // (system, class) -> (system, priority): the system level stays.
        const GroupingConfiguration byPriority = grouping({QStringLiteral("system"), QStringLiteral("priority")});
        QCOMPARE(t.state.findGrooupingCompatibility(byPriority), 0);
        t.state.setGroupingConfig(byPriority);
        QCOMPARE(record(t.state.getRootState()), (QStringList{QStringLiteral("SysA=1"), QStringLiteral("SysC=1")}));
        t.proxy.setGrouping(byPriority);
        t.state.restoreState();
        QCOMPARE(expandedPaths(t.view), (QStringList{QStringLiteral("SysA"), QStringLiteral("SysC")}));

        // Priorities are integers in the record, keyed as the model gives them.
        t.view.expand(group(t.proxy, 200, group(t.proxy, QStringLiteral("SysA"))));
        QCOMPARE(record(t.state.getRootState()),
                 (QStringList{QStringLiteral("SysA=1"), QStringLiteral("  200=1"), QStringLiteral("SysC=1")}));

        // The same levels again keep everything; a new top level drops everything.
        QCOMPARE(t.state.findGrooupingCompatibility(byPriority), 1);
        const GroupingConfiguration swapped = grouping({QStringLiteral("priority"), QStringLiteral("system")});
        QCOMPARE(t.state.findGrooupingCompatibility(swapped), -1);
        t.state.setGroupingConfig(swapped);
        QVERIFY(t.state.getRootState().getChildren().isEmpty());
        QCOMPARE(t.state.findGrooupingCompatibility(GroupingConfiguration()), -1);
    }

    void equalValuesShareOneState()
    {
        // 1 as an integer, as a double and as a 64-bit number compare equal.
        TreeNodesState::SingleNodeState root;
        root.setExpanded({QVariant(1)}, 0, true);
        root.setExpanded({QVariant(1.0)}, 0, false);
        root.setExpanded({QVariant(qlonglong(1))}, 0, true);
        root.setExpanded({QVariant(2)}, 0, false);
        QCOMPARE(record(root), (QStringList{QStringLiteral("1=1"), QStringLiteral("2=0")}));
    }

    void restoringWithoutViewOrModelIsReported()
    {
        LogCapture log;
        TreeNodesState state(&log.producer);
        state.restoreState();
        QTreeView view;
        state.setTreeView(&view);
        state.restoreState();
        QCOMPARE(log.lines(), (QStringList{QStringLiteral("2|call to restoreState() without tree view"),
                                           QStringLiteral("2|call to restoreState() for tree view without model")}));
    }
};

QTEST_MAIN(TestTreeNodesState)
#include "tst_treenodesstate.moc"
