#include "BitVar.h"
#include "CCodeExternData.h"
#include "Controller.h"
#include "DoneCB.h"
#include "DynVar.h"
#include "FloatVar.h"
#include "IntegerVar.h"
#include "MappingVar.h"
#include "MixedVar.h"
#include "PlatformLogCapture.h"
#include "TestProject.h"
#include "TextVar.h"
#include "TimeVar.h"

#include <QtTest>

namespace {

// Records what the controller does with a callback. With a guard, it stands
// for a caller's callback that refers back to an object which may be gone.
struct CallRecord
{
    int executed = 0;
    int dropped = 0;
    bool deleted = false;
    bool gotNull = false;
    std::unique_ptr<Variable> result;
};

class RecordingCb : public DoneCB
{
public:
    explicit RecordingCb(CallRecord *record, QObject *guard = nullptr)
        : m_record(record), m_guarded(guard), m_guard(guard)
    {
    }
    ~RecordingCb() override { m_record->deleted = true; }
    void execute(const Variable *result) override
    {
        if (m_guarded && !m_guard) {
            ++m_record->dropped;
            return;
        }
        ++m_record->executed;
        m_record->gotNull = !result;
        m_record->result.reset(result ? result->clone() : nullptr);
    }
    DoneCB *clone() const override { return new RecordingCb(*this); }

private:
    CallRecord *m_record;
    bool m_guarded;
    QPointer<QObject> m_guard;
};

// Starts a call and waits until the controller has answered it.
std::unique_ptr<CallRecord> call(int id, const CharString &function, const Variable &arguments)
{
    auto record = std::make_unique<CallRecord>();
    if (Controller::thisPtr->startFunc(id, function, arguments, new RecordingCb(record.get())) == 0)
        static_cast<void>(QTest::qWaitFor([&record] { return record->deleted; }, 60000));
    return record;
}

int checkInScript(const QString &script)
{
    CCodeExternData extern_("TestController", "TestController");
    return Controller::thisPtr->checkIn(CharString::fromQString(script), DynVar(), &extern_, nullptr, 0, 0, 0);
}

int checkIn(const QString &library)
{
    return checkInScript(QStringLiteral("#uses \"%1\"").arg(library));
}

DynVar args(std::initializer_list<const Variable *> values)
{
    DynVar dyn;
    for (const Variable *v : values)
        dyn.append(*v);
    return dyn;
}

const char LibrarySource[] = R"(
var calls = 0;
function describe(map, list) {
    calls++;
    return {
        greeting: "hello " + map.name,
        count: list.length,
        sum: list[0] + list[1],
        half: map.value / 2,
        flag: !map.flag,
        items: list,
        nested: { depth: 2 },
        nothing: null,
        when: new Date(Date.UTC(2024, 0, 2, 3, 4, 5, 6))
    };
}
function callCount() { return calls; }
function fail(text) {
    var x = 1;
    throw new Error("failed with " + text);
}
function failWithString() { throw "plain text"; }
function spin() { while (true) { } }
function nothingBack() { }
)";

// Answers at and beyond the bounds of a script answer.
const char BoundsLibrarySource[] = R"(
function holes(n) { var a = []; a.length = n; return a; }
function doubled(n) { var v = 1; for (var i = 0; i < n; ++i) v = [v, v]; return v; }
function nested(n) { var v = 1; for (var i = 0; i < n; ++i) v = [v]; return v; }
function throwingGetter() { return { a: 1, get b() { throw new Error("no b"); } }; }
function throwingIndex() {
    var a = [1, 2];
    Object.defineProperty(a, 1, { get: function () { throw "no second"; } });
    return a;
}
function slowGetter() {
    return { get slow() { var end = Date.now() + 3000; while (Date.now() < end) { } return 1; } };
}
)";

} // namespace

class TestController : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        Controller::thisPtr->registerNativeLibrary(
            QStringLiteral("native"),
            {{QStringLiteral("echo"), [](const DynVar &a) -> Variable * { return a.clone(); }},
             {QStringLiteral("nothing"), [](const DynVar &) -> Variable * { return nullptr; }}});
        m_project.write(QStringLiteral("scripts/libs/jslib.js"), LibrarySource);
        m_project.write(QStringLiteral("scripts/libs/bounds.js"), BoundsLibrarySource);
    }

    void answersArriveOnlyFromTheEventLoop()
    {
        const int id = checkIn(QStringLiteral("native"));
        QVERIFY(id > 0);
        CallRecord first, second;
        const DynVar a = args({std::make_unique<IntegerVar>(1).get()});
        QCOMPARE(Controller::thisPtr->startFunc(id, "echo", a, new RecordingCb(&first)), 0);
        QCOMPARE(Controller::thisPtr->startFunc(id, "echo", TextVar("single"), new RecordingCb(&second)), 0);
        QCOMPARE(first.executed, 0);
        QCOMPARE(Controller::thisPtr->pendingCallCount(), 2);

        QTRY_VERIFY(second.deleted);
        QVERIFY(first.deleted);
        QCOMPARE(first.executed, 1);
        QCOMPARE(second.executed, 1);
        QCOMPARE(first.result->formatValue(), QStringLiteral("[1]"));
        // A single variable that is not a dyn is the only argument.
        QCOMPARE(second.result->formatValue(), QStringLiteral("[single]"));
        QCOMPARE(Controller::thisPtr->pendingCallCount(), 0);
    }

    void refusedStartLeavesCallbackToCaller()
    {
        PlatformLogCapture log;
        const int id = checkIn(QStringLiteral("native"));
        CallRecord record;
        auto *cb = new RecordingCb(&record);
        QCOMPARE(Controller::thisPtr->startFunc(0, "echo", DynVar(), cb), 1);
        QCOMPARE(Controller::thisPtr->startFunc(id + 1000, "echo", DynVar(), cb), 1);
        QCOMPARE(Controller::thisPtr->startFunc(id, "noSuchFunction", DynVar(), cb), 1);
        QCOMPARE(Controller::thisPtr->startFunc(id, "", DynVar(), cb), 1);
        QCOMPARE(Controller::thisPtr->pendingCallCount(), 0);
        QCoreApplication::processEvents();
        QCOMPARE(record.executed, 0);
        QVERIFY(!record.deleted);
        delete cb;
        QCOMPARE(log.lines().size(), 4);
        QVERIFY(log.lines().at(0).contains(QLatin1String("unknown script id 0")));
        QVERIFY(log.lines().at(2).contains(QLatin1String("noSuchFunction")));
    }

    void forcedStartResults()
    {
        const int before = Controller::thisPtr->checkInCount();
        const int id = checkIn(QStringLiteral("native"));
        checkIn(QStringLiteral("noSuchLibrary"));
        QCOMPARE(Controller::thisPtr->checkInCount(), before + 2);

        // A forced 1 is a refusal: nothing queued, the callback untouched.
        CallRecord refused;
        auto *cb = new RecordingCb(&refused);
        Controller::thisPtr->forceNextStartResult(1);
        QCOMPARE(Controller::thisPtr->startFunc(id, "echo", DynVar(), cb), 1);
        QCOMPARE(Controller::thisPtr->pendingCallCount(), 0);
        delete cb;
        QCOMPARE(refused.executed, 0);

        // Any other forced value is a start; only the next start is forced.
        CallRecord negative, normal;
        Controller::thisPtr->forceNextStartResult(-7);
        QCOMPARE(Controller::thisPtr->startFunc(id, "echo", DynVar(), new RecordingCb(&negative)), -7);
        QCOMPARE(Controller::thisPtr->startFunc(id, "echo", DynVar(), new RecordingCb(&normal)), 0);
        QTRY_VERIFY(negative.deleted && normal.deleted);
        QCOMPARE(negative.executed, 1);
    }

    void nullResultsAndNullCallbacks()
    {
        const int id = checkIn(QStringLiteral("native"));
        QCOMPARE(Controller::thisPtr->startFunc(id, "echo", DynVar(), nullptr), 0);
        const auto record = call(id, "nothing", DynVar());
        QVERIFY(record->deleted);
        QCOMPARE(record->executed, 1);
        QVERIFY(record->gotNull);
        QTRY_COMPARE(Controller::thisPtr->pendingCallCount(), 0);
    }

    void failedCheckInsAreNegativeAndLogged_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QByteArray>("libSource");
        QTest::addColumn<QStringList>("expectedInLog");
        QTest::newRow("unknown library")
            << "#uses \"noSuchLib\"" << QByteArray()
            << QStringList{"line 1", "scripts/libs/noSuchLib.js", "TestController/TestController"};
        QTest::newRow("syntax error")
            << "// first\n#uses \"native\"\n#uses \"broken\"" << QByteArray("function ok() {}\n\nvar x = ;\nfunction later() {}\n")
            << QStringList{"line 3", "broken.js:3:", "SyntaxError"};
        QTest::newRow("throws while loading")
            << "#uses \"throwing\"" << QByteArray("var a = 1;\nundefinedFunction();\n")
            << QStringList{"throwing.js:2:", "ReferenceError"};
        QTest::newRow("not a uses line")
            << "#uses \"native\"\nmain() {}" << QByteArray()
            << QStringList{"line 2", "main() {}"};
        QTest::newRow("empty name") << "#uses \"\"" << QByteArray() << QStringList{"line 1"};
    }
    void failedCheckInsAreNegativeAndLogged()
    {
        QFETCH(QString, script);
        QFETCH(QByteArray, libSource);
        QFETCH(QStringList, expectedInLog);
        if (!libSource.isEmpty()) {
            const QString name = QString(QTest::currentDataTag()).startsWith(QLatin1String("syntax"))
                                     ? QStringLiteral("broken") : QStringLiteral("throwing");
            m_project.write(QStringLiteral("scripts/libs/%1.js").arg(name), libSource);
        }
        PlatformLogCapture log;
        QVERIFY(checkInScript(script) < 0);
        QCOMPARE(log.lines().size(), 1);
        for (const QString &part : expectedInLog)
            QVERIFY2(log.all().contains(part), qPrintable(log.all()));
    }

    void scriptFunctionConvertsBothWays()
    {
        const int id = checkIn(QStringLiteral("jslib.ctl")); // the CTRL extension is dropped
        QVERIFY(id > 0);
        MappingVar map;
        map.setAt(TextVar("name"), TextVar("world"));
        map.setAt(TextVar("value"), IntegerVar(5));
        map.setAt(TextVar("flag"), MixedVar(BitVar(false)));
        DynVar list;
        list.append(IntegerVar(40));
        list.append(FloatVar(2.5));
        list.append(TextVar("x"));
        DynVar callArgs;
        callArgs.append(map);
        callArgs.append(list);

        const auto record = call(id, "describe", callArgs);
        QVERIFY(record->result);
        QCOMPARE(record->result->getType(), MAPPING_VAR);
        const auto &answer = static_cast<const MappingVar &>(*record->result);
        QCOMPARE(*answer.getAt(TextVar("greeting")), TextVar("hello world"));
        QCOMPARE(*answer.getAt(TextVar("count")), IntegerVar(3));
        QCOMPARE(*answer.getAt(TextVar("sum")), FloatVar(42.5));
        QCOMPARE(*answer.getAt(TextVar("half")), FloatVar(2.5));
        QCOMPARE(*answer.getAt(TextVar("flag")), BitVar(true));
        QCOMPARE(*answer.getAt(TextVar("items")), static_cast<const Variable &>(list));
        QCOMPARE(answer.getAt(TextVar("nested"))->getType(), MAPPING_VAR);
        QCOMPARE(*static_cast<const MappingVar *>(answer.getAt(TextVar("nested")))->getAt(TextVar("depth")),
                 IntegerVar(2));
        QCOMPARE(*answer.getAt(TextVar("nothing")), MixedVar());
        QCOMPARE(*answer.getAt(TextVar("when")),
                 TimeVar(QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 6), Qt::UTC)));
        // Keys come back in the order the object was built.
        QCOMPARE(answer.keyAt(0)->formatValue(), QStringLiteral("greeting"));
        QCOMPARE(answer.keyAt(8)->formatValue(), QStringLiteral("when"));
    }

    // Thrown errors, runaway scripts and answers beyond the documented bounds
    // (100000 values, 64 levels of nesting, read within the script timeout).
    void failingFunctionsAnswerNull_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<QString>("function");
        QTest::addColumn<QString>("argument");
        QTest::addColumn<QStringList>("expectedInLog");
        const QString js = QStringLiteral("jslib");
        const QString bounds = QStringLiteral("bounds");
        QTest::newRow("Error object") << js << "fail" << "now"
                                      << QStringList{"jslib.js:20: Error: failed with now", "fail"};
        QTest::newRow("thrown text") << js << "failWithString" << "" << QStringList{"plain text", "failWithString"};
        QTest::newRow("runaway loop") << js << "spin" << "" << QStringList{"interrupted after 200 ms", "spin"};
        QTest::newRow("one value too many")
            << bounds << "holes" << "100000" << QStringList{"more than 100000 values (an array of 100000 elements)"};
        QTest::newRow("doubled 17 times") << bounds << "doubled" << "17" << QStringList{"more than 100000 values"};
        QTest::newRow("one level too deep") << bounds << "nested" << "65" << QStringList{"deeper than 64 levels"};
        QTest::newRow("throwing getter") << bounds << "throwingGetter" << "" << QStringList{"'b'", "Error: no b"};
        QTest::newRow("throwing index") << bounds << "throwingIndex" << "" << QStringList{"'1'", "no second"};
        QTest::newRow("getter beyond the timeout")
            << bounds << "slowGetter" << "" << QStringList{"interrupted after 200 ms"};
    }
    void failingFunctionsAnswerNull()
    {
        QFETCH(QString, library);
        QFETCH(QString, function);
        QFETCH(QString, argument);
        QFETCH(QStringList, expectedInLog);
        const int id = checkIn(library);
        // Only what is meant to run into the timeout may; the others are
        // refused for what they answer, whatever the speed of the machine.
        const bool timed = expectedInLog.first().startsWith(QLatin1String("interrupted"));
        Controller::thisPtr->setScriptTimeout(timed ? 200 : 60000);
        PlatformLogCapture log;
        const TextVar arg(argument);
        const auto record = call(id, CharString::fromQString(function), args({&arg}));
        Controller::thisPtr->setScriptTimeout(5000);
        QVERIFY(record->deleted);
        QCOMPARE(record->executed, 1);
        QVERIFY(record->gotNull);
        QCOMPARE(log.lines().size(), 1);
        for (const QString &part : expectedInLog)
            QVERIFY2(log.all().contains(part), qPrintable(log.all()));

        // The library keeps working afterwards, with its state intact.
        const bool js = library == QLatin1String("jslib");
        const TextVar one("1");
        const auto after = call(id, js ? "callCount" : "nested", args({&one}));
        QVERIFY(after->result);
        QCOMPARE(after->result->getType(), js ? INTEGER_VAR : DYN_VAR);
    }

    void answersUpToTheBoundsArrive()
    {
        const int id = checkIn(QStringLiteral("bounds"));
        const IntegerVar count(99999); // with the array itself, 100000 values
        const auto flat = call(id, "holes", args({&count}));
        QVERIFY(flat->result);
        QCOMPARE(static_cast<const DynVar &>(*flat->result).count(), 99999);
        QCOMPARE(*static_cast<const DynVar &>(*flat->result).at(99998), MixedVar());

        const IntegerVar levels(64);
        const auto deep = call(id, "nested", args({&levels}));
        QVERIFY(deep->result);
        QCOMPARE(deep->result->getType(), DYN_VAR);
    }

    void libraryRunsOncePerProcessAndLastPathWins()
    {
        TestProject lower;
        lower.write(QStringLiteral("scripts/libs/layered.js"), "function which() { return 'lower'; }");
        TestProject upper;
        upper.write(QStringLiteral("scripts/libs/layered.js"),
                    "var n = 0; function which() { n++; return 'upper ' + n; }");
        Resources::setProjectPaths({lower.path(), upper.path()});

        const int first = checkIn(QStringLiteral("layered"));
        const int second = checkIn(QStringLiteral("layered"));
        QVERIFY(first > 0 && second > 0 && first != second);
        CallRecord a, b;
        Controller::thisPtr->startFunc(first, "which", DynVar(), new RecordingCb(&a));
        Controller::thisPtr->startFunc(second, "which", DynVar(), new RecordingCb(&b));
        QTRY_VERIFY(b.deleted);
        QCOMPARE(a.result->formatValue(), QStringLiteral("upper 1"));
        QCOMPARE(b.result->formatValue(), QStringLiteral("upper 2"));
    }

    // The first #uses line that brings a function answers for it, whatever the
    // libraries are called; the later ones still serve the rest.
    void firstLibraryDefiningAFunctionAnswers()
    {
        TestProject project;
        project.write(QStringLiteral("scripts/libs/pumps.js"), "function origin() { return 'pumps'; }");
        project.write(QStringLiteral("scripts/libs/alarms.js"),
                      "function origin() { return 'alarms'; }\nfunction onlyHere() { return 'alarms'; }");
        const int id = checkInScript(QStringLiteral("#uses \"pumps\"\n#uses \"alarms\""));
        QVERIFY(id > 0);
        const auto first = call(id, "origin", DynVar());
        QVERIFY(first->result);
        QCOMPARE(first->result->formatValue(), QStringLiteral("pumps"));
        const auto second = call(id, "onlyHere", DynVar());
        QVERIFY(second->result);
        QCOMPARE(second->result->formatValue(), QStringLiteral("alarms"));
    }

    void callerDestroyedWhileCallInFlight()
    {
        Controller::thisPtr->setAnswerDelay(QStringLiteral("native"), 30);
        const int id = checkIn(QStringLiteral("native"));
        CallRecord record;
        auto *gone = new QObject;
        QObject kept;
        const TextVar text("x");
        QCOMPARE(Controller::thisPtr->startFunc(id, "echo", args({&text}), new RecordingCb(&record, gone)), 0);
        QCOMPARE(Controller::thisPtr->startFunc(id, "echo", args({&text}), new RecordingCb(&record, &kept)), 0);
        QCoreApplication::processEvents(); // the delay keeps both in flight
        QCOMPARE(Controller::thisPtr->pendingCallCount(), 2);
        delete gone;
        QTRY_COMPARE(Controller::thisPtr->pendingCallCount(), 0);
        Controller::thisPtr->setAnswerDelay(QStringLiteral("native"), 0);
        QCOMPARE(record.dropped, 1);
        QCOMPARE(record.executed, 1);
        QCOMPARE(record.result->formatValue(), QStringLiteral("[x]"));
    }

private:
    TestProject m_project;
};

QTEST_GUILESS_MAIN(TestController)
#include "tst_controller.moc"
