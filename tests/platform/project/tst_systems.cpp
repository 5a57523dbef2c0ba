#include "SystemRegistry.h"

#include <QtTest>

using SystemMap = QMap<unsigned int, SystemInfo>;

class TestSystems : public QObject
{
    Q_OBJECT
private slots:
    void startsWithTheOwnSystem()
    {
        SystemRegistry *registry = SystemRegistry::instance();
        QCOMPARE(registry->getSystems().keys(), QList<unsigned int>{1});
        QCOMPARE(registry->getSystem(1), SystemInfo(1, QStringLiteral("System1"), true));
        QCOMPARE(registry->findSystem(QStringLiteral("System1")), 1u);
        QCOMPARE(registry->findSystem(QStringLiteral("nope")), 0u);
    }

    void listAndConnectionChangesAreSignalledApart()
    {
        SystemRegistry *registry = SystemRegistry::instance();
        QSignalSpy list(registry, &SystemRegistry::systemListChanged);
        QSignalSpy connections(registry, &SystemRegistry::systemConnectionsChanged);

        QVERIFY(registry->addSystem(SystemInfo(7, QStringLiteral("Remote"), false)));
        QVERIFY(!registry->addSystem(SystemInfo(7, QStringLiteral("Other"), false)));
        QVERIFY(!registry->addSystem(SystemInfo(8, QStringLiteral("Remote"), false)));
        QVERIFY(!registry->addSystem(SystemInfo(0, QStringLiteral("Zero"), false)));
        QCOMPARE(list.count(), 1);
        QCOMPARE(list.last().at(0).value<SystemMap>().keys(), (QList<unsigned int>{1, 7}));

        QVERIFY(registry->setConnected(7, true));
        QVERIFY(registry->setConnected(7, true)); // no change, no signal
        QVERIFY(!registry->setConnected(99, true));
        QCOMPARE(connections.count(), 1);
        QVERIFY(connections.last().at(0).value<SystemMap>().value(7).isConnected());

        SystemMap systems = registry->getSystems();
        systems[7].setConnected(false);
        registry->setSystems(systems);
        QCOMPARE(connections.count(), 2);
        QCOMPARE(list.count(), 1);

        systems[7] = SystemInfo(7, QStringLiteral("Renamed"), false);
        registry->setSystems(systems);
        registry->setSystems(systems);
        QCOMPARE(list.count(), 2);
        QCOMPARE(connections.count(), 2);

        QVERIFY(registry->removeSystem(7));
        QVERIFY(!registry->removeSystem(7));
        QCOMPARE(list.count(), 3);
        QCOMPARE(registry->getSystems().size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestSystems)
#include "tst_systems.moc"
