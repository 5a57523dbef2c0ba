#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "ConnectionMapWidget.h"
#include "DialogSystemConnections.h"
#include "SysConnectModel.h"
#include "SystemConnectionsControl.h"
#include "SystemRegistry.h"

#include <QTableView>
#include <QtTest>

namespace {

// Systems numbered out of name order, so that number order and name order differ.
QMap<unsigned int, SystemInfo> systemsOf(const QStringList &names, const QSet<QString> &disconnected = {})
{
    QMap<unsigned int, SystemInfo> systems;
    for (int i = 0; i < names.size(); ++i) {
        const unsigned int number = unsigned(i * 37 + 6) % 101 + 1; // distinct for up to 101 systems
        systems.insert(number, SystemInfo(number, names.at(i), !disconnected.contains(names.at(i))));
    }
    return systems;
}

struct Installation {
    QSharedPointer<AlarmsModel> model = QSharedPointer<AlarmsModel>::create();
    AlarmsProxyModel proxy;
    SystemConnectionsControl *alarms = model->getConnectionControl();
    Installation() { proxy.setAlarmsModel(model); }
};

QColor colourAt(QWidget &widget, const QPoint &pos)
{
    return widget.grab().toImage().pixelColor(pos);
}

} // namespace

class TestSystemConnections : public QObject
{
    Q_OBJECT
private slots:
    void init() { SystemRegistry::instance()->setSystems(systemsOf({QStringLiteral("System1")})); }

    void mapGeometryWrapsIntoRows_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("rows");
        QTest::newRow("5 systems, one row") << 5 << 1;
        QTest::newRow("6 systems, two rows") << 6 << 2;
        QTest::newRow("20 systems, two rows") << 20 << 2;
        QTest::newRow("21 systems, three rows") << 21 << 3;
        QTest::newRow("45 systems, three rows") << 45 << 3;
        QTest::newRow("46 systems, four rows") << 46 << 4;
    }
    void mapGeometryWrapsIntoRows()
    {
        QFETCH(int, count);
        QFETCH(int, rows);
        QStringList names;
        for (int i = 0; i < count; ++i)
            names << QStringLiteral("S%1").arg(i);
        SystemRegistry::instance()->setSystems(systemsOf(names));
        Installation inst;
        ConnectionMapWidget map;
        map.setProxyModel(&inst.proxy);
        QCOMPARE(map.getSystems().size(), count);
        QCOMPARE(map.findNumberOfRows(QSize(300, 101)), rows);

        QVERIFY(map.buildSystemGeometry(QSize(300, 101)));
        QVERIFY(!map.buildSystemGeometry(QSize(300, 101))); // nothing new to ask for
        const int side = 100 / rows;
        const int perRow = (count + rows - 1) / rows;
        int i = 0;
        int right = 0;
        // Squares in ascending system number, row by row.
        for (const ConnectionMapWidget::SystemConnectionInfo &info : map.getSystems()) {
            QCOMPARE(info.rect, QRect(i % perRow * side, i / perRow * side, side, side));
            right = std::max(right, info.rect.right());
            ++i;
        }
        QCOMPARE(map.sizeHint(), QSize(right + 2, 101));
        if (rows == 2)
            QCOMPARE(side, 50);
    }

    void mapFollowsConnectionsAndIsClickable()
    {
        SystemRegistry *registry = SystemRegistry::instance();
        registry->setSystems(systemsOf({"Alpha", "Beta", "Gamma"}, {"Gamma"}));
        Installation inst;
        inst.alarms->setConnectedSystems({"Alpha", "Gamma"});
        ConnectionMapWidget map;
        map.resize(200, 21);
        map.setProxyModel(&inst.proxy);
        const auto centreOf = [&map](const QString &name) {
            for (const auto &info : map.getSystems()) {
                if (info.name == name)
                    return info.rect.center();
            }
            return QPoint(-1, -1);
        };
        const QColor red(255, 0, 0), yellow(255, 255, 0), green(0, 255, 0);
        QCOMPARE(colourAt(map, centreOf("Alpha")), green);
        QCOMPARE(colourAt(map, centreOf("Beta")), yellow);   // reached, but its alarms do not arrive
        QCOMPARE(colourAt(map, centreOf("Gamma")), red);     // lost, whatever the alarm connection says

        // Both kinds of change reach the map through the proxy's signals.
        registry->setConnected(registry->findSystem("Alpha"), false);
        QCOMPARE(colourAt(map, centreOf("Alpha")), red);
        inst.alarms->setSystemConnected("Beta", true);
        QCOMPARE(colourAt(map, centreOf("Beta")), green);
        SystemInfo delta(90, "Delta", true);
        QVERIFY(registry->addSystem(delta));
        QCOMPARE(map.getSystems().size(), 4);
        QCOMPARE(colourAt(map, centreOf("Delta")), yellow);

        QSignalSpy activated(&map, &ConnectionMapWidget::activated);
        QTest::mouseClick(&map, Qt::LeftButton, {}, centreOf("Beta"));
        QTest::mouseClick(&map, Qt::LeftButton, {}, QPoint(195, 10)); // beside the squares
        QCOMPARE(activated.size(), 1);
        QCOMPARE(activated.at(0).at(0).toString(), QStringLiteral("Beta"));
        // The keyboard walks the squares from the clicked one.
        QTest::keyClick(&map, Qt::Key_Right);
        QTest::keyClick(&map, Qt::Key_Return);
        QCOMPARE(activated.size(), 2);
        QCOMPARE(activated.at(1).at(0).toString(), map.getSystems().values().at(2).name);

        // Without a proxy there is nothing to show.
        map.setProxyModel(nullptr);
        QVERIFY(map.getSystems().isEmpty());
        registry->setConnected(registry->findSystem("Alpha"), true);
        QVERIFY(map.getSystems().isEmpty());
    }

    void dialogGridFollowsTheSystemList()
    {
        SystemRegistry *registry = SystemRegistry::instance();
        registry->setSystems(systemsOf({"Echo", "Alpha", "Delta", "Charlie", "Bravo"}, {"Delta"}));
        Installation inst;
        DialogSystemConnections dialog(&inst.proxy);
        SysConnectModel *model = dialog.getModel();
        QCOMPARE(dialog.getView()->model(), model);
        // Five systems, sorted by name, in a grid of three columns.
        QCOMPARE(model->columnCount(), 3);
        QCOMPARE(model->rowCount(), 2);
        QCOMPARE(model->index(0, 2).data().toString(), QStringLiteral("Charlie"));
        QCOMPARE(model->index(1, 1).data().toString(), QStringLiteral("Echo"));
        QVERIFY(!model->index(1, 2).data().isValid());
        QCOMPARE(model->flags(model->index(1, 2)), Qt::NoItemFlags);
        QCOMPARE(model->findSystemIdx("Delta"), 3);
        QCOMPARE(model->findSystemIdx("Foxtrot"), -1);
        QCOMPARE(model->itemIndex(model->index(1, 0)), 3);
        const QModelIndex delta = model->index(1, 0);
        QVERIFY(!delta.data(Qt::DecorationRole).value<QIcon>().isNull());
        QVERIFY(!model->index(0, 0).data(Qt::DecorationRole).isValid());

        QVERIFY(model->setData(model->index(0, 1), Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(model->index(0, 1).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));

        // A connection change touches only its cell.
        QSignalSpy changed(model, &QAbstractItemModel::dataChanged);
        QSignalSpy widths(model, &SysConnectModel::columnWidhtCanChange);
        registry->setConnected(registry->findSystem("Delta"), true);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.at(0).at(0).toModelIndex(), delta);
        QVERIFY(!delta.data(Qt::DecorationRole).isValid());
        QCOMPARE(widths.size(), 1);

        // A new system rebuilds the grid; the operator's check stays with Bravo.
        QSignalSpy resets(model, &QAbstractItemModel::modelReset);
        QVERIFY(registry->addSystem(SystemInfo(60, "Able", false)));
        QCOMPARE(resets.size(), 1);
        QCOMPARE(widths.size(), 2);
        QCOMPARE(model->index(0, 0).data().toString(), QStringLiteral("Able"));
        QVERIFY(!model->index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
        const QModelIndex bravo = model->modelIndex(model->findSystemIdx("Bravo"));
        QCOMPARE(bravo.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
        QCOMPARE(model->index(0, 1).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked)); // Alpha now
    }
};

QTEST_MAIN(TestSystemConnections)
#include "tst_systemconnections.moc"
