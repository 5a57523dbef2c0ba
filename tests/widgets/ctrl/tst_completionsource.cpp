#include "CompletionSource.h"
#include "Controller.h"
#include "FilterWidgetConfiguration.h"
#include "LogCapture.h"
#include "PlatformLogCapture.h"
#include "TestProject.h"

#include <QtTest>

namespace {

const char Library[] = R"(
var masterCalls = 0;
function master(property, systems) {
    masterCalls++;
    if (property === "single")
        return {type: 1, list: ["a", "", "b", 7]};
    if (property === "perSystem") {
        var map = {};
        for (var i = 0; i < systems.length; ++i)
            map[systems[i]] = [systems[i] + "-x", "call" + masterCalls, ""];
        return {type: 3, map: map};
    }
    if (property === "overlap")
        return {type: 3, map: {S1: ["x", "y"], S2: ["y", "z"]}};
    if (property === "dependent")
        return {type: 2, list: ["alarmClass"]};
    if (property === "four")
        return {type: 4};
    if (property === "text")
        return "not a mapping";
    if (property === "noList")
        return {type: 1};
    if (property === "badMap")
        return {type: 3, map: {S1: "x"}};
    if (property === "throws")
        throw new Error("broken");
    if (property === "spins")
        while (true) { }
    return {type: 0};
}
function slave(property, values) {
    return {list: [property + " for " + values.alarmClass]};
}
)";

FilterWidgetConfiguration config(const QString &library, const QMap<QString, QStringList> &fixed = {})
{
    FilterWidgetConfiguration c;
    c.setCtrlLibrary(library);
    c.setMasterFunction(QStringLiteral("master"));
    c.setSlaveFunction(QStringLiteral("slave"));
    c.setFixedCompletions(fixed);
    return c;
}

using Ready = QList<QPair<void *, QSharedPointer<FilterCompletions>>>;

} // namespace

class TestCompletionSource : public QObject
{
    Q_OBJECT

    // Collects completionsReady until `count` arrived.
    Ready waitReady(CompletionSource &source, int count, const std::function<void()> &action)
    {
        Ready ready;
        auto connection = connect(&source, &CompletionSource::completionsReady, this,
                                  [&ready](void *consumer, const QSharedPointer<FilterCompletions> &c) {
                                      ready.append({consumer, c});
                                  });
        action();
        const bool arrived = QTest::qWaitFor([&] { return ready.size() >= count; }, 3000);
        disconnect(connection);
        if (!arrived)
            qWarning("only %d of %d completionsReady arrived", int(ready.size()), count);
        return ready;
    }

private slots:
    void initTestCase() { m_project.write(QStringLiteral("scripts/libs/completions.js"), Library); }

    void checkInIsRetriedAfterFailureAndStartResultsCount()
    {
        LogCapture log(MsgLoggerEnums::ShortFuncName);
        log.producer.setLogUserLogThreshold(1);
        CompletionSource source(&log.producer, config(QStringLiteral("notYetThere")));
        const int before = Controller::thisPtr->checkInCount();
        int consumer = 0;
        QSignalSpy ready(&source, &CompletionSource::completionsReady);
        {
            PlatformLogCapture platformLog;
            source.requestCompletions(&consumer, QStringLiteral("single"), {});
            source.requestCompletions(&consumer, QStringLiteral("single"), {}); // answered from the failure
            source.requestCompletions(&consumer, QStringLiteral("perSystem"), {QStringLiteral("S1")});
        }
        QCOMPARE(Controller::thisPtr->checkInCount(), before + 2);
        const QString failure = QStringLiteral("3|loadCtrlLib: Failed to check in script: #uses \"notYetThere\"");
        QCOMPARE(log.lines(), QStringList({failure, failure}));
        QCOMPARE(source.getCompletions(QStringLiteral("single"))->getType(), 0);
        QCOMPARE(source.getScriptId(), -1);
        QCOMPARE(ready.count(), 1);
        QVERIFY(ready.first().at(1).value<QSharedPointer<FilterCompletions>>()->getList().isEmpty());

        // The library appears; the next request checks it in.
        m_project.write(QStringLiteral("scripts/libs/notYetThere.js"), Library);
        log.clear();
        const Ready answered = waitReady(source, 1, [&] {
            source.requestCompletions(&consumer, QStringLiteral("overlap"), {QStringLiteral("S1")});
        });
        QCOMPARE(Controller::thisPtr->checkInCount(), before + 3);
        QVERIFY(source.getScriptId() > 0);
        QCOMPARE(answered.size(), 1);
        QCOMPARE(answered.first().second->getCompletionsForSystems({QStringLiteral("S1"), QStringLiteral("S2")}),
                 QStringList({"x", "y", "z"}));

        // A refused start fails the query; any other result is a running call.
        Controller::thisPtr->forceNextStartResult(1);
        source.requestCompletions(&consumer, QStringLiteral("four"), {});
        QCOMPARE(log.lines(), QStringList{QStringLiteral(
                                  "3|startCall: call of function master in library notYetThere failed")});
        QCOMPARE(source.getCompletions(QStringLiteral("four"))->getType(), 0);
        Controller::thisPtr->forceNextStartResult(-4);
        const Ready negative = waitReady(source, 2, [&] {
            source.requestCompletions(&consumer, QStringLiteral("single"), {});
            source.requestCompletions(&consumer, QStringLiteral("dependent"), {});
        });
        QCOMPARE(negative.size(), 2); // "single" at once, "dependent" when answered
        QCOMPARE(negative.last().second->getMasterList(), QStringList{"alarmClass"});
        QCOMPARE(Controller::thisPtr->checkInCount(), before + 3);

        // No library: a failure without asking the controller.
        LogCapture emptyLog;
        emptyLog.producer.setLogUserLogThreshold(1);
        CompletionSource empty(&emptyLog.producer, config(QString()));
        empty.requestCompletions(&consumer, QStringLiteral("single"), {});
        QCOMPARE(Controller::thisPtr->checkInCount(), before + 3);
        QCOMPARE(emptyLog.lines(),
                 QStringList{QStringLiteral("3|Empty CTRL library name for requesting gilter completions")});
    }

    void answersOfEachType()
    {
        CompletionSource source(&m_log.producer, config(QStringLiteral("completions")));
        int a = 0;
        int b = 0;
        const Ready ready = waitReady(source, 2, [&] {
            source.requestCompletions(&a, QStringLiteral("single"), {QStringLiteral("S1")});
            source.requestCompletions(&b, QStringLiteral("perSystem"), {QStringLiteral("S1")});
        });
        QCOMPARE(ready.size(), 2);
        // Master answers are for every consumer.
        QCOMPARE(ready.at(0).first, nullptr);
        QCOMPARE(ready.at(0).second->getList(), QStringList({"a", "b", "7"}));
        const QSharedPointer<FilterCompletions> perSystem = source.getCompletions(QStringLiteral("perSystem"));
        QCOMPARE(perSystem->getType(), 3);
        const QStringList s1 = perSystem->getSystemMap().value(QStringLiteral("S1"));
        QCOMPARE(s1.size(), 3); // empty texts stay
        QCOMPARE(s1.first(), QStringLiteral("S1-x"));

        // Systems asked for while a request runs are collected and asked for
        // in one further call.
        Controller::thisPtr->setAnswerDelay(QStringLiteral("completions"), 100);
        const Ready more = waitReady(source, 2, [&] {
            source.requestCompletions(&a, QStringLiteral("perSystem"), {QStringLiteral("S1"), QStringLiteral("S2")});
            source.requestCompletions(&b, QStringLiteral("perSystem"), {QStringLiteral("S3")});
            source.requestCompletions(&b, QStringLiteral("perSystem"), {QStringLiteral("S2"), QStringLiteral("S4")});
            QCOMPARE(perSystem->getPendingSystems(), QStringList({"S3", "S2", "S4"}));
        });
        Controller::thisPtr->setAnswerDelay(QStringLiteral("completions"), 0);
        QCOMPARE(more.size(), 2);
        const QMap<QString, QStringList> map = perSystem->getSystemMap();
        QCOMPARE(map.keys(), QStringList({"S1", "S2", "S3", "S4"}));
        QVERIFY(map.value("S2").at(1) != map.value("S3").at(1));
        QCOMPARE(map.value("S3").at(1), map.value("S4").at(1));
        QVERIFY(perSystem->getPendingSystems().isEmpty());
        // Everything known: answered at once.
        QSignalSpy at(&source, &CompletionSource::completionsReady);
        source.requestCompletions(&a, QStringLiteral("perSystem"), {QStringLiteral("S4")});
        QCOMPARE(at.count(), 1);
    }

    void slaveCompletionsFollowTheFilter()
    {
        CompletionSource source(&m_log.producer, config(QStringLiteral("completions")));
        int consumer = 0;
        waitReady(source, 1, [&] { source.requestCompletions(&consumer, QStringLiteral("dependent"), {}); });
        const QSharedPointer<FilterCompletions> dependent = source.getCompletions(QStringLiteral("dependent"));
        QVERIFY(dependent->dependsOnFilter(QStringLiteral("alarmClass")));

        QSignalSpy ready(&source, &CompletionSource::completionsReady);
        source.filterChanged(&consumer, QStringLiteral("text"), {{"text", "x"}});
        QVERIFY(!dependent->isRequestRunning());
        const Ready answer = waitReady(source, 1, [&] {
            source.filterChanged(&consumer, QStringLiteral("alarmClass"), {{"alarmClass", "info"}});
        });
        QCOMPARE(answer.size(), 1);
        QCOMPARE(answer.first().first, &consumer); // a slave answer is for the one who changed
        QCOMPARE(dependent->getList(), QStringList{"dependent for info"});
        QCOMPARE(ready.count(), 1);
    }

    void fixedListsAndSharing()
    {
        const QMap<QString, QStringList> fixed{{"priority", {"low", "high"}}};
        const int before = Controller::thisPtr->checkInCount();
        const auto source = CompletionSource::getInstance(&m_log.producer, config(QStringLiteral("fixedLib"), fixed));
        QCOMPARE(CompletionSource::getInstance(&m_log.producer, config(QStringLiteral("fixedLib"), fixed)), source);
        QVERIFY(CompletionSource::getInstance(&m_log.producer,
                                              config(QStringLiteral("fixedLib"), {{"priority", {"high", "low"}}})) !=
                source);
        QVERIFY(CompletionSource::getInstance(&m_log.producer, config(QStringLiteral("fixedLib"))) == source);

        QSignalSpy ready(source.data(), &CompletionSource::completionsReady);
        int consumer = 0;
        source->requestCompletions(&consumer, QStringLiteral("priority"), {});
        QCOMPARE(ready.count(), 1);
        QCOMPARE(ready.first().at(1).value<QSharedPointer<FilterCompletions>>()->getList(),
                 QStringList({"low", "high"}));
        QCOMPARE(Controller::thisPtr->checkInCount(), before);
    }

    void badAnswersAreLoggedAndLeaveNoCompletions_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<QString>("message");
        QTest::newRow("type 4") << "four"
                                << "3|unexpected type value 4returned by master for alarm property four, "
                                   "expected one of: 0, 1, 2";
        QTest::newRow("wrong type") << "text"
                                    << "3|The value returned by CTRL function master for alarm property text "
                                       "is TEXT_VAR, expected type is MAPPING_VAR";
        QTest::newRow("missing list") << "noList"
                                      << "3|mapping returned by master for alarm property noList: mapping "
                                         "doesn't contain key 'list'";
        QTest::newRow("bad map") << "badMap"
                                 << "3|mapping returned by master for alarm property badMap: mapping value for "
                                    "key 'S1' has a type TEXT_VAR, expected type DYN_VAR";
        QTest::newRow("throws") << "throws"
                                << "3|No return value from CTRL function master for alarm property throws";
        QTest::newRow("watchdog") << "spins"
                                  << "3|No return value from CTRL function master for alarm property spins";
    }

    void badAnswersAreLoggedAndLeaveNoCompletions()
    {
        QFETCH(QString, property);
        QFETCH(QString, message);
        LogCapture log;
        PlatformLogCapture platformLog;
        Controller::thisPtr->setScriptTimeout(300);
        CompletionSource source(&log.producer, config(QStringLiteral("completions")));
        QSignalSpy ready(&source, &CompletionSource::completionsReady);
        int consumer = 0;
        source.requestCompletions(&consumer, property, {QStringLiteral("S1")});
        const QSharedPointer<FilterCompletions> completions = source.getCompletions(property);
        QTRY_VERIFY(!completions->isRequestRunning());
        Controller::thisPtr->setScriptTimeout(5000);
        QCOMPARE(log.lines(), QStringList{message});
        QCOMPARE(completions->getType(), 0);
        QCOMPARE(ready.count(), 0);
        // The library keeps answering.
        QVERIFY(!waitReady(source, 1, [&] { source.requestCompletions(&consumer, QStringLiteral("single"), {}); })
                     .isEmpty());
    }

    void answerForAGoneSourceIsDropped()
    {
        LogCapture log;
        auto source = std::make_unique<CompletionSource>(&log.producer, config(QStringLiteral("completions")));
        int consumer = 0;
        Controller::thisPtr->setAnswerDelay(QStringLiteral("completions"), 50);
        source->requestCompletions(&consumer, QStringLiteral("single"), {});
        QVERIFY(source->getCompletions(QStringLiteral("single"))->isRequestRunning());
        QPointer<FilterCompletions> completions = source->getCompletions(QStringLiteral("single")).data();
        source.reset();
        QVERIFY(!completions);
        QTRY_COMPARE(Controller::thisPtr->pendingCallCount(), 0);
        Controller::thisPtr->setAnswerDelay(QStringLiteral("completions"), 0);
        QCOMPARE(log.lines(), QStringList());
    }

private:
    TestProject m_project;
    LogCapture m_log;
};

QTEST_GUILESS_MAIN(TestCompletionSource)
#include "tst_completionsource.moc"
