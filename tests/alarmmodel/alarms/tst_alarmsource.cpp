#include "AlarmSimulator.h"
#include "AlarmSource.h"
#include "AlarmTestFactory.h"
#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "SimulationTestConfig.h"
#include "SysOracleArchive.h"
#include "SystemConnectionsControl.h"
#include "SystemRegistry.h"

#include <QtTest>

using namespace AlarmTestFactory;

namespace {

const qint64 startMs = 1700000000000;

SimulationConfig config()
{
    SimulationConfig c = threeSystemConfig(11, 150, {60, 20, 200});
    c.systems[2].archiveFails = true;
    return c;
}

// "system#serial=state/connected" of every alarm, sorted.
QStringList content(const QVector<AlarmInstancePtr> &alarms)
{
    QStringList lines;
    for (const auto &a : alarms)
        lines << QStringLiteral("%1=%2/%3").arg(a->getIdent().toString()).arg(a->getData().state).arg(a->isConnected());
    lines.sort();
    return lines;
}

QStringList content(const AlarmRecordList &records)
{
    QVector<AlarmInstancePtr> alarms;
    for (const AlarmRecord &r : records)
        alarms.append(AlarmSource::toInstance(r));
    return content(alarms);
}

// The simulated systems feeding a model through an alarm source.
struct Source {
    Source() { sim.setConfig(config(), startMs); }
    AlarmSimulator sim;
    QSharedPointer<AlarmsModel> model = QSharedPointer<AlarmsModel>::create();
    AlarmSource source{&sim, model};
};

SourceAndFilter historyFilter(qint64 fromMs, qint64 toMs, const QStringList &systems)
{
    SourceAndFilter filter = sourceFilter({ruleSet(true, {numberFilter(QStringLiteral("priority"), QStringLiteral(">99"))})});
    filter.setSourceMode(Constants::SourceModeHistory);
    TimeRange range;
    range.setRangeType(TimeRange::CustomInterval);
    range.setStartTime(QDateTime::fromMSecsSinceEpoch(fromMs));
    range.setEndTime(QDateTime::fromMSecsSinceEpoch(toMs));
    filter.setTimeRange(range);
    filter.setSystems(systems);
    return filter;
}

} // namespace

class TestAlarmSource : public QObject
{
    Q_OBJECT
private slots:
    void liveAlarmsFollowTheSystems()
    {
        Source live;
        auto &[sim, model, source] = live;
        QCOMPARE(SysOracleArchive::getInstance()->getSystems(),
                 (QStringList{QStringLiteral("Sys1"), QStringLiteral("Sys2"), QStringLiteral("Sys3")}));
        QCOMPARE(SystemRegistry::instance()->getSystems().size(), 3);

        QSignalSpy states(&source, &AlarmSource::sourceStateChanged);
        source.startLive();
        QCOMPARE(states.size(), 3);
        QCOMPARE(states.at(0).at(0).toInt(), int(Constants::SourceConnecting));
        QCOMPARE(states.at(2).at(0).toInt(), int(Constants::SourceLive));
        QCOMPARE(model->count(), 60);

        QSignalSpy bursts(model.data(), &AlarmsModel::alarmsChanged);
        for (int i = 0; i < 40; ++i)
            sim.step(15);
        QCOMPARE(bursts.size(), 40); // one model step per delivered burst
        QCOMPARE(content(model->getAlarms()), content(sim.getCurrentAlarms()));
        // Went rows name the came row they close, and both are in the model.
        int pairs = 0;
        for (const auto &alarm : model->getAlarms()) {
            if (alarm->getData().direction == AlarmInstance::Went) {
                const auto came = model->getAlarm(alarm->getRelatedIdent());
                QVERIFY(came);
                QCOMPARE(came->getRelatedIdent(), alarm->getIdent());
                ++pairs;
            }
        }
        QVERIFY(pairs > 0);
    }

    void disconnectedSystemKeepsItsAlarms()
    {
        Source live;
        auto &[sim, model, source] = live;
        source.startLive();
        AlarmsProxyModel proxy;
        proxy.setAlarmsModel(model);
        SystemConnectionsControl *control = proxy.getConnectionControl();
        QVERIFY(control->isSystemConnected(QStringLiteral("Sys2")));
        QSignalSpy proxyConnections(&proxy, &AlarmsProxyModel::connectedSystemsChanged);

        const auto ofSystem = [&live](const QString &system) {
            QVector<AlarmInstancePtr> result;
            for (const auto &a : live.model->getAlarms()) {
                if (a->getIdent().getSystem() == system)
                    result.append(a);
            }
            return result;
        };
        const int sys2Before = ofSystem(QStringLiteral("Sys2")).size();
        sim.setSystemConnected(QStringLiteral("Sys2"), false);
        QVERIFY(!control->isSystemConnected(QStringLiteral("Sys2")));
        QVERIFY(proxyConnections.size() >= 1);
        QVERIFY(!SystemRegistry::instance()->getSystem(2).isConnected());
        QCOMPARE(ofSystem(QStringLiteral("Sys2")).size(), sys2Before);
        for (const auto &a : ofSystem(QStringLiteral("Sys2"))) {
            QVERIFY(!a->isConnected());
            QCOMPARE(a->getText(AlarmProp::Connection), QStringLiteral("disconnected"));
            QVERIFY(proxy.findAlarm(a->getIdent()).isValid()); // still in the table
        }

        // The other systems go on; the silent one's alarms stay frozen.
        const QStringList frozen = content(ofSystem(QStringLiteral("Sys2")));
        for (int i = 0; i < 30; ++i)
            sim.step(10);
        QCOMPARE(content(ofSystem(QStringLiteral("Sys2"))), frozen);
        QStringList othersInModel = content(ofSystem(QStringLiteral("Sys1"))) + content(ofSystem(QStringLiteral("Sys3")));
        othersInModel.sort();
        QCOMPARE(othersInModel, content(sim.getCurrentAlarms()));

        // Back again: the alarms are what the system holds now, connected.
        sim.setSystemConnected(QStringLiteral("Sys2"), true);
        QVERIFY(control->isSystemConnected(QStringLiteral("Sys2")));
        QCOMPARE(content(model->getAlarms()), content(sim.getCurrentAlarms()));
        QVERIFY(content(ofSystem(QStringLiteral("Sys2"))) != frozen);
    }

    void historyQueryStatesAndCounts()
    {
        Source live;
        auto &[sim, model, source] = live;
        source.startLive();
        QSignalSpy states(&source, &AlarmSource::sourceStateChanged);
        QSignalSpy counts(&source, &AlarmSource::sourceCountsChanged);

        QString error;
        QVERIFY(source.apply(historyFilter(startMs - 3 * 3600000, startMs, {QStringLiteral("Sys1"), QStringLiteral("Sys2")}),
                             error));
        QCOMPARE(source.getMode(), Constants::SourceModeHistory);
        QCOMPARE(source.getState(), Constants::QueryStarting);
        QCOMPARE(model->count(), 0); // the live alarms are gone
        QTRY_COMPARE(source.getState(), Constants::QueryFinished);
        QCOMPARE(states.size(), 3);
        QCOMPARE(states.at(1).at(0).toInt(), int(Constants::QueryRunning));

        // Counts grow step by step; the final ones describe the model.
        QVERIFY(counts.size() > 4);
        unsigned int lastTotal = 0;
        for (const auto &args : counts) {
            QVERIFY(args.at(0).toUInt() >= lastTotal);
            QVERIFY(args.at(1).toUInt() <= args.at(0).toUInt());
            lastTotal = args.at(0).toUInt();
        }
        QVERIFY(source.getTotalRead() > 1000);
        QCOMPARE(counts.last().at(0).toUInt(), source.getTotalRead());
        QCOMPARE(counts.last().at(1).toUInt(), source.getMatching());
        QCOMPARE(unsigned(model->count()), source.getMatching());
        QVERIFY(source.getMatching() < source.getTotalRead());
        for (const auto &a : model->getAlarms())
            QVERIFY(a->getData().priority >= 100);

        // Live again: the pending alarms come back.
        source.startLive();
        QCOMPARE(source.getState(), Constants::SourceLive);
        QCOMPARE(content(model->getAlarms()), content(sim.getCurrentAlarms()));
    }

    void historyQueryAbortRefusalAndFailure()
    {
        Source live;
        auto &[sim, model, source] = live;
        source.startLive();
        QString error;

        // A range without an end is refused and nothing changes.
        SourceAndFilter open = historyFilter(startMs - 3600000, startMs, {QStringLiteral("Sys1")});
        TimeRange range = open.getTimeRange();
        range.setEndTime(QDateTime());
        open.setTimeRange(range);
        QVERIFY(!open.getTimeRange().getEndTime().isValid());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("history query refused")));
        QVERIFY(!source.apply(open, error));
        QVERIFY(error.contains(QStringLiteral("start and an end")));
        QCOMPARE(source.getState(), Constants::SourceLive);
        QCOMPARE(model->count(), 60);

        // Abort while running.
        QSignalSpy counts(&source, &AlarmSource::sourceCountsChanged);
        QVERIFY(source.apply(historyFilter(startMs - 48 * 3600000, startMs, {QStringLiteral("Sys1")}), error));
        QTRY_VERIFY(counts.size() >= 3);
        QCOMPARE(source.getState(), Constants::QueryRunning);
        source.abortQuery();
        QCOMPARE(source.getState(), Constants::QueryAborted);
        const unsigned int atAbort = source.getTotalRead();
        QVERIFY(atAbort > 0 && atAbort < 48 * 200);
        QVERIFY(!counts.wait(50));
        QCOMPARE(unsigned(model->count()), source.getMatching());

        // A failing archive ends in the failed state with its reason.
        QVERIFY(source.apply(historyFilter(startMs - 3600000, startMs, {QStringLiteral("Sys3")}), error));
        QTRY_COMPARE(source.getState(), Constants::QueryFailed);
        QCOMPARE(source.getErrorText(), QStringLiteral("The alarm archive of system Sys3 is not available"));
    }
};

QTEST_GUILESS_MAIN(TestAlarmSource)
#include "tst_alarmsource.moc"
