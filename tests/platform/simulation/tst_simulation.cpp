#include "AlarmSimulator.h"
#include "HistoryQuery.h"
#include "Resources.h"
#include "SimulationTestConfig.h"
#include "TestProject.h"

#include <QtTest>

namespace {

SimulationConfig smallConfig(quint64 seed = 7)
{
    return threeSystemConfig(seed, 100, {40, 10, 120});
}

using RowMap = QHash<QPair<QString, qint64>, AlarmRecord>;

// Applies delivered records the way a consumer would.
void apply(RowMap &rows, const AlarmRecordList &records)
{
    for (const AlarmRecord &record : records) {
        const auto key = qMakePair(record.system, record.serial);
        if (record.removed)
            QVERIFY2(rows.remove(key) == 1, "a removed row was not pending");
        else
            rows.insert(key, record);
    }
}

RowMap toMap(const AlarmRecordList &records)
{
    RowMap rows;
    apply(rows, records);
    return rows;
}

QString fingerprint(const AlarmRecordList &records)
{
    QStringList parts;
    for (const AlarmRecord &r : records)
        parts << QStringLiteral("%1/%2/%3/%4/%5").arg(r.system).arg(r.serial).arg(r.state).arg(r.dpe).arg(r.removed);
    return parts.join(QLatin1Char(';'));
}

const qint64 startMs = 1700000000000;

} // namespace

class TestSimulation : public QObject
{
    Q_OBJECT
private slots:
    void configParsing_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("error"); // empty: accepted

        QTest::newRow("full") << QByteArray(R"({"seed": 3, "eventsPerSecond": 50, "flood": true,
            "systems": [{"name": "A", "id": 4, "datapoints": 10, "initialAlarms": 5,
                         "disconnectAfterBursts": 3, "reconnectAfterBursts": 2}]})")
                              << QString();
        QTest::newRow("not JSON") << QByteArray("{\"seed\": ") << QStringLiteral("invalid JSON at offset");
        QTest::newRow("array") << QByteArray("[]") << QStringLiteral("must be a JSON object");
        QTest::newRow("wrong type") << QByteArray(R"({"seed": "x", "systems": []})")
                                    << QStringLiteral("'seed' must be a number");
        QTest::newRow("typo") << QByteArray(R"({"sytems": []})") << QStringLiteral("unknown key 'sytems'");
        QTest::newRow("no systems") << QByteArray(R"({"seed": 1})") << QStringLiteral("'systems' must be a list");
        QTest::newRow("nameless") << QByteArray(R"({"systems": [{"id": 2}]})")
                                  << QStringLiteral("systems[0]: 'name' is missing");
        QTest::newRow("twice") << QByteArray(R"({"systems": [{"name": "A"}, {"name": "A"}]})")
                               << QStringLiteral("systems[1]: system 'A' is listed twice");
        QTest::newRow("too many initial") << QByteArray(R"({"systems": [{"name": "A", "datapoints": 2, "initialAlarms": 3}]})")
                                          << QStringLiteral("'initialAlarms' must not exceed");
        QTest::newRow("fraction") << QByteArray(R"({"systems": [{"name": "A", "datapoints": 2.5}]})")
                                  << QStringLiteral("'datapoints' must be a whole number");
        QTest::newRow("never back") << QByteArray(R"({"systems": [{"name": "A", "disconnectAfterBursts": 2}]})")
                                    << QStringLiteral("'reconnectAfterBursts' must be at least 1");
    }
    void configParsing()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, error);
        SimulationConfig config = SimulationConfig::defaults();
        QString errorText;
        const bool ok = SimulationConfig::parse(json, config, errorText);
        QCOMPARE(ok, error.isEmpty());
        if (ok) {
            QCOMPARE(config.seed, quint64(3));
            QCOMPARE(config.systems.size(), 1);
            QCOMPARE(config.systems.at(0).id, 4u);
            QCOMPARE(config.systems.at(0).reconnectAfterBursts, 2);
            QVERIFY(config.flood);
        } else {
            QVERIFY2(errorText.contains(error), qPrintable(errorText));
            QCOMPARE(config.systems.size(), 3); // untouched
        }
    }

    void configDefaultsAndFile()
    {
        TestProject project;
        QString errorText;
        SimulationConfig config;
        QVERIFY(!SimulationConfig::load(project.path() + QStringLiteral("/missing.json"), config, errorText));
        QVERIFY(errorText.contains(QStringLiteral("missing.json")));

        // The project's configuration directory supplies the file.
        project.write(QLatin1String(SimulationConfig::projectConfigName()), R"({"systems": [{"name": "Only"}]})");
        QVERIFY(SimulationConfig::load(SimulationConfig::findProjectConfig(), config, errorText));
        QCOMPARE(config.systems.size(), 1);
        QCOMPARE(config.systems.at(0).name, QStringLiteral("Only"));
    }

    void liveEventsAreSeededAndConsistent()
    {
        AlarmSimulator a;
        AlarmSimulator b;
        AlarmSimulator other;
        a.setConfig(smallConfig(), startMs);
        b.setConfig(smallConfig(), startMs);
        other.setConfig(smallConfig(8), startMs);
        QCOMPARE(a.getCurrentAlarms().size(), 30);

        QSignalSpy spyA(&a, &AlarmSimulator::alarmBurst);
        QSignalSpy spyB(&b, &AlarmSimulator::alarmBurst);
        QSignalSpy spyOther(&other, &AlarmSimulator::alarmBurst);
        RowMap rows = toMap(a.getCurrentAlarms());
        for (int i = 0; i < 50; ++i) {
            a.step(20);
            b.step(20);
            other.step(20);
        }
        QCOMPARE(spyA.size(), 50);
        QString seqA, seqB, seqOther;
        for (int i = 0; i < 50; ++i) {
            const auto records = spyA.at(i).at(0).value<AlarmRecordList>();
            apply(rows, records);
            seqA += fingerprint(records);
            seqB += fingerprint(spyB.at(i).at(0).value<AlarmRecordList>());
            seqOther += fingerprint(spyOther.at(i).at(0).value<AlarmRecordList>());
        }
        QCOMPARE(seqA, seqB);
        QVERIFY(seqA != seqOther);

        // Replaying the bursts gives exactly what the systems hold, and every
        // pair is consistent: a went row points at its came row and shares its state.
        const RowMap pending = toMap(a.getCurrentAlarms());
        QCOMPARE(rows.size(), pending.size());
        for (auto it = pending.constBegin(); it != pending.constEnd(); ++it) {
            QCOMPARE(fingerprint({rows.value(it.key())}), fingerprint({it.value()}));
            if (it->direction == AlarmRecord::Went) {
                const AlarmRecord came = pending.value(qMakePair(it->system, it->relatedSerial));
                QCOMPARE(came.relatedSerial, it->serial);
                QCOMPARE(came.state, it->state);
                QCOMPARE(it->state, AlarmRecord::WentUnacknowledged);
            }
        }
        int acked = 0;
        for (const AlarmRecord &r : pending)
            acked += r.state == AlarmRecord::CameAcknowledged;
        QVERIFY(acked > 0);
    }

    void operatorAcknowledgesOneElement()
    {
        AlarmSimulator sim;
        sim.setConfig(smallConfig(), startMs);
        QSignalSpy bursts(&sim, &AlarmSimulator::alarmBurst);
        AlarmRecord waiting;
        AlarmRecord notAckable;
        for (const AlarmRecord &r : sim.getCurrentAlarms()) {
            if (r.acknowledgeable && r.state == AlarmRecord::CameUnacknowledged)
                waiting = r;
            else if (!r.acknowledgeable)
                notAckable = r;
        }
        QVERIFY(waiting.serial > 0 && notAckable.serial > 0);
        QVERIFY(!sim.acknowledge(notAckable.system, notAckable.dpe));
        QVERIFY(!sim.acknowledge(waiting.system, QStringLiteral("no such element")));
        QVERIFY(sim.acknowledge(waiting.system, waiting.dpe));
        QCOMPARE(bursts.size(), 1);
        const AlarmRecordList changed = bursts.at(0).at(0).value<AlarmRecordList>();
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.first().serial, waiting.serial);
        QCOMPARE(changed.first().state, AlarmRecord::CameAcknowledged);
        QVERIFY(!sim.acknowledge(waiting.system, waiting.dpe)); // nothing left to acknowledge
        sim.setSystemConnected(waiting.system, false);
        QCOMPARE(bursts.size(), 1);
    }

    void disconnectedSystemIsSilentAndResynchronizes()
    {
        SimulationConfig config = smallConfig();
        config.systems[1].disconnectAfterBursts = 3;
        config.systems[1].reconnectAfterBursts = 4;
        AlarmSimulator sim;
        sim.setConfig(config, startMs);
        QSignalSpy bursts(&sim, &AlarmSimulator::alarmBurst);
        QSignalSpy connections(&sim, &AlarmSimulator::systemConnectionChanged);
        QSignalSpy resyncs(&sim, &AlarmSimulator::systemResynchronized);

        for (int i = 0; i < 3; ++i)
            sim.step(30);
        QCOMPARE(connections.size(), 1);
        QCOMPARE(connections.at(0).at(0).toString(), QStringLiteral("Sys2"));
        QCOMPARE(connections.at(0).at(1).toBool(), false);
        QVERIFY(!sim.isSystemConnected(QStringLiteral("Sys2")));

        bursts.clear();
        for (int i = 0; i < 3; ++i)
            sim.step(30);
        QCOMPARE(connections.size(), 1);
        QSet<QString> systemsSeen;
        for (const auto &args : bursts) {
            for (const AlarmRecord &r : args.at(0).value<AlarmRecordList>())
                systemsSeen.insert(r.system);
        }
        QCOMPARE(systemsSeen, (QSet<QString>{QStringLiteral("Sys1"), QStringLiteral("Sys3")}));

        sim.step(30); // seventh burst: back again
        QCOMPARE(connections.size(), 2);
        QCOMPARE(connections.at(1).at(1).toBool(), true);
        QCOMPARE(resyncs.size(), 1);
        const AlarmRecordList pending = resyncs.at(0).at(1).value<AlarmRecordList>();
        QCOMPARE(pending.size(), sim.getSystem(QStringLiteral("Sys2"))->getPendingCount());
        for (const AlarmRecord &r : pending)
            QCOMPARE(r.system, QStringLiteral("Sys2"));

        // A manual disconnection is announced once.
        sim.setSystemConnected(QStringLiteral("Sys3"), false);
        sim.setSystemConnected(QStringLiteral("Sys3"), false);
        QCOMPARE(connections.size(), 3);
    }

    // The states, counts, abort and failure of a running query are checked through
    // the alarm source that drives it; here what the archive reads and refuses.
    void historyQueryReadsItsRangeAndSystems()
    {
        AlarmSimulator sim;
        sim.setConfig(smallConfig(), startMs);
        HistoryQuery query(&sim);
        query.setMatcher([](const AlarmRecord &r) { return r.priority >= 100; });
        QSignalSpy records(&query, &HistoryQuery::recordsRead);
        const QDateTime from = QDateTime::fromMSecsSinceEpoch(startMs - 5 * SimulatedSystem::msPerHour);
        const QDateTime to = QDateTime::fromMSecsSinceEpoch(startMs);
        QString error;
        QVERIFY(query.start(from, to, {QStringLiteral("Sys1"), QStringLiteral("Sys3")}, error));
        QTRY_COMPARE(query.getState(), HistoryQuery::Finished);

        // About 5 hours x 120 rows x 2 systems.
        QVERIFY(query.getTotalRead() > 900 && query.getTotalRead() < 1500);
        quint32 delivered = 0;
        for (const auto &args : records) {
            for (const AlarmRecord &r : args.at(0).value<AlarmRecordList>()) {
                QVERIFY(r.priority >= 100);
                QVERIFY(r.timeMs >= from.toMSecsSinceEpoch() && r.timeMs <= to.toMSecsSinceEpoch());
                QVERIFY(r.system != QStringLiteral("Sys2"));
                ++delivered;
            }
        }
        QCOMPARE(delivered, query.getMatchingCount());
        QVERIFY(delivered > 0 && delivered < query.getTotalRead());

        // The archive is deterministic: the same query reads the same.
        const quint32 total = query.getTotalRead();
        QVERIFY(query.start(from, to, {QStringLiteral("Sys3"), QStringLiteral("Sys1")}, error));
        QTRY_COMPARE(query.getState(), HistoryQuery::Finished);
        QCOMPARE(query.getTotalRead(), total);
    }

    void historyQueryRefusalsAndLimits()
    {
        SimulationConfig config = smallConfig();
        config.systems[1].archive = false;
        config.historyMaxRecords = 500;
        AlarmSimulator sim;
        sim.setConfig(config, startMs);
        HistoryQuery query(&sim);
        const QDateTime to = QDateTime::fromMSecsSinceEpoch(startMs);
        const QDateTime from = to.addDays(-2);
        QString error;

        QVERIFY(!query.start(QDateTime(), to, {QStringLiteral("Sys1")}, error));
        QVERIFY(error.contains(QStringLiteral("start and an end")));
        QVERIFY(!query.start(from, QDateTime(), {QStringLiteral("Sys1")}, error));
        QVERIFY(!query.start(to, from, {QStringLiteral("Sys1")}, error));
        QVERIFY(error.contains(QStringLiteral("ends before")));
        QVERIFY(!query.start(from, to, {}, error));
        QVERIFY(!query.start(from, to, {QStringLiteral("Sys2")}, error));
        QCOMPARE(error, QStringLiteral("System Sys2 has no alarm archive"));
        QCOMPARE(query.getState(), HistoryQuery::Idle);

        // Too many rows fail the query instead of exhausting memory.
        QVERIFY(query.start(from, to, {QStringLiteral("Sys1")}, error));
        QTRY_COMPARE(query.getState(), HistoryQuery::Failed);
        QVERIFY(query.getErrorText().contains(QStringLiteral("more than 500 alarms")));
    }
};

QTEST_GUILESS_MAIN(TestSimulation)
#include "tst_simulation.moc"
