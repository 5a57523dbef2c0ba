#include "DpHLGroup.h"
#include "DpMsgAnswer.h"
#include "DynVar.h"
#include "HotLinkWaitForAnswer.h"
#include "IntegerVar.h"
#include "Manager.h"
#include "MappingVar.h"
#include "PlatformLogCapture.h"
#include "TestProject.h"
#include "TextVar.h"
#include "TimeVar.h"
#include "UIntegerVar.h"

#include <QtTest>

namespace {

// Writes every message it receives as one line: kind, then the values.
class Recorder : public HotLinkWaitForAnswer
{
public:
    QStringList events;
    DpMsgAnswer lastAnswer;

    void hotLinkCallBack(DpMsgAnswer &answer) override
    {
        lastAnswer = answer;
        events.append(QStringLiteral("answer ") + describe(answer));
    }
    void hotLinkCallBack(DpHLGroup &group) override
    {
        events.append(QStringLiteral("group ") + describe(group));
    }

private:
    static QString describe(const DpItemContainer &items)
    {
        QStringList values;
        for (int i = 0; i < items.count(); ++i)
            values.append(items.at(i).getValue()->formatValue());
        return values.join(QLatin1Char('|'));
    }
};

DpIdentList idsOf(const QStringList &names)
{
    DpIdentList ids;
    for (const QString &name : names) {
        DpIdentifier id;
        if (!Manager::getId(name, id))
            qFatal("no element %s", qPrintable(name));
        ids.append(id);
    }
    return ids;
}

void define(const QString &name, const Variable &value)
{
    QString error;
    if (!Manager::dpCreateElement(name, value, error))
        qFatal("%s", qPrintable(error));
}

} // namespace

class TestDatapoints : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        define(QStringLiteral("Stats.SetName"), TextVar("set 1"));
        define(QStringLiteral("Stats.ConfigDp"), TextVar("cfg"));
        define(QStringLiteral("Stats.SetJSON"), TextVar("{}"));
        define(QStringLiteral("Other.Count"), IntegerVar(0));
    }

    void currentValuesFirstThenEachChangeOnce()
    {
        const QStringList names{"Stats.SetName", "Stats.ConfigDp", "Stats.SetJSON"};
        const DpIdentList ids = idsOf(names);
        Recorder recorder;
        QVERIFY(Manager::dpConnect(ids, Manager::eventId, &recorder, true));
        QString error;
        QVERIFY(Manager::dpSet(QStringLiteral("Stats.SetName"), TextVar("set 2"), error));
        QVERIFY(Manager::dpSet(QStringLiteral("Stats.SetJSON"), TextVar("[1]"), error));
        QVERIFY(Manager::dpSet(QStringLiteral("Other.Count"), IntegerVar(1), error)); // not connected
        QVERIFY(recorder.events.isEmpty());

        QTRY_COMPARE(recorder.events.size(), 3);
        QCoreApplication::processEvents();
        QCOMPARE(recorder.events,
                 (QStringList{"answer set 1|cfg|{}", "group set 2|cfg|{}", "group set 2|cfg|[1]"}));

        // Several elements set together make one hotlink.
        DynVar values;
        values.append(TextVar("set 3"));
        values.append(TextVar("cfg 3"));
        QVERIFY(Manager::dpSet(QStringList{"Stats.SetName", "Stats.ConfigDp"}, values, error));
        QTRY_COMPARE(recorder.events.size(), 4);
        QCOMPARE(recorder.events.last(), QStringLiteral("group set 3|cfg 3|[1]"));

        // A change queued before the disconnect is not delivered either.
        QVERIFY(Manager::dpSet(QStringLiteral("Stats.SetName"), TextVar("set 4"), error));
        QVERIFY(Manager::dpDisconnect(ids, &recorder, Manager::eventId));
        QVERIFY(!Manager::dpDisconnect(ids, &recorder, Manager::eventId));
        QVERIFY(Manager::dpSet(QStringLiteral("Stats.SetName"), TextVar("set 5"), error));
        QCoreApplication::processEvents();
        QCOMPARE(recorder.events.size(), 4);
        QCOMPARE(Manager::dpGet(QStringLiteral("Stats.SetName"))->formatValue(), QStringLiteral("set 5"));
    }

    void itemsInConnectOrderAndSortedByDefinition()
    {
        const DpIdentList ids = idsOf({"Stats.SetJSON", "Other.Count", "Stats.SetName"});
        Recorder recorder;
        QVERIFY(Manager::dpConnect(ids, Manager::eventId, &recorder));
        QTRY_COMPARE(recorder.events.size(), 1);
        DpMsgAnswer &answer = recorder.lastAnswer;
        QCOMPARE(answer.at(0).getIdentifier(), ids.at(0));
        answer.sort();
        QCOMPARE(Manager::getName(answer.at(0).getIdentifier()), QStringLiteral("Stats.SetName"));
        QCOMPARE(Manager::getName(answer.at(1).getIdentifier()), QStringLiteral("Stats.SetJSON"));
        QCOMPARE(Manager::getName(answer.at(2).getIdentifier()), QStringLiteral("Other.Count"));
        QVERIFY(!answer.hasError());
    }

    void withoutAnswerOnlyChanges()
    {
        Recorder recorder;
        QVERIFY(Manager::dpConnect(idsOf({"Other.Count"}), Manager::eventId, &recorder, false));
        QString error;
        QVERIFY(Manager::dpSet(QStringLiteral("Other.Count"), IntegerVar(7), error));
        QTRY_COMPARE(recorder.events, QStringList{"group 7"});
    }

    void destroyedReceiverGetsNothing()
    {
        auto *recorder = new Recorder;
        QVERIFY(Manager::dpConnect(idsOf({"Other.Count"}), Manager::eventId, recorder));
        QString error;
        QVERIFY(Manager::dpSet(QStringLiteral("Other.Count"), IntegerVar(8), error));
        delete recorder; // with an answer and a hotlink still queued
        QCoreApplication::processEvents();
        Recorder witness; // the event loop did run
        QVERIFY(Manager::dpConnect(idsOf({"Other.Count"}), Manager::eventId, &witness));
        QTRY_COMPARE(witness.events, QStringList{"answer 8"});
    }

    void unknownNamesAndBadValuesFailClearly()
    {
        DpIdentifier id;
        QVERIFY(!Manager::getId(QStringLiteral("Stats.Missing"), id));
        QVERIFY(id.isNull());
        QVERIFY(Manager::getName(DpIdentifier(999, 1)).isEmpty());
        QVERIFY(!Manager::dpGet(QStringLiteral("Stats.Missing")));

        PlatformLogCapture log;
        Recorder recorder;
        QVERIFY(!Manager::dpConnect(DpIdentList{DpIdentifier()}, Manager::eventId, &recorder));
        QVERIFY(!Manager::dpConnect(DpIdentList(), Manager::eventId, &recorder));
        QVERIFY(!Manager::dpConnect(idsOf({"Other.Count"}), Manager::eventId, nullptr));
        QCOMPARE(log.lines().size(), 3);
        QVERIFY2(log.lines().at(0).contains(QLatin1String("dp 0 element 0")), qPrintable(log.all()));

        QString error;
        QVERIFY(!Manager::dpSet(QStringLiteral("Stats.Missing"), TextVar("x"), error));
        QVERIFY(error.contains(QLatin1String("\"Stats.Missing\" does not exist")));
        // All or nothing: the good first value is not set either.
        DynVar values;
        values.append(TextVar("changed"));
        values.append(TextVar("not an integer"));
        QVERIFY(!Manager::dpSet(QStringList{"Stats.ConfigDp", "Other.Count"}, values, error));
        QVERIFY2(error.contains(QLatin1String("INTEGER_VAR")) && error.contains(QLatin1String("TEXT_VAR")),
                 qPrintable(error));
        QVERIFY(Manager::dpGet(QStringLiteral("Stats.ConfigDp"))->formatValue() != QLatin1String("changed"));

        QVERIFY(!Manager::dpCreateElement(QStringLiteral("NoElement"), TextVar(), error));
        QVERIFY(!Manager::dpCreateElement(QStringLiteral("Stats.SetName"), TextVar(), error));
        QVERIFY(error.contains(QLatin1String("already exists")));
    }

    void namesWithoutADatapointOrElementPartAreRefused()
    {
        for (const char *name : {".Element", "Dp.", "."}) {
            QString error;
            QVERIFY2(!Manager::dpCreateElement(QLatin1String(name), IntegerVar(1), error), name);
            QVERIFY2(error.contains(QLatin1String("invalid datapoint element name")), qPrintable(error));
            DpIdentifier id;
            QVERIFY(!Manager::getId(QLatin1String(name), id));
        }
    }

    void projectDatapointFile()
    {
        TestProject project;
        QString error;
        QVERIFY(Manager::loadProjectDatapoints(error)); // none there: fine
        project.write(QStringLiteral("config/datapoints.json"), R"({
            "datapoints": [
                { "name": "Loaded", "elements": [
                    { "name": "Zeta", "value": "first" },
                    { "name": "Alpha", "type": "uint", "value": 4 },
                    { "name": "When", "type": "time", "value": "2024-05-06T07:08:09.010Z" },
                    { "name": "Map", "value": { "k": [1, 2.5, true] } }
                ] }
            ] })");
        QVERIFY2(Manager::loadProjectDatapoints(error), qPrintable(error));
        QCOMPARE(*Manager::dpGet(QStringLiteral("Loaded.Alpha")), UIntegerVar(4));
        QCOMPARE(*Manager::dpGet(QStringLiteral("Loaded.When")),
                 TimeVar(QDateTime(QDate(2024, 5, 6), QTime(7, 8, 9, 10), Qt::UTC)));
        QCOMPARE(Manager::dpGet(QStringLiteral("Loaded.Map"))->formatValue(), QStringLiteral("{k: [1, 2.5, TRUE]}"));
        DpIdentifier zeta, alpha;
        QVERIFY(Manager::getId(QStringLiteral("Loaded.Zeta"), zeta));
        QVERIFY(Manager::getId(QStringLiteral("Loaded.Alpha"), alpha));
        QVERIFY(zeta < alpha); // file order, not name order
    }

    void badDatapointFilesDefineNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("expectedError");
        QTest::newRow("not json") << QByteArray("{ \"datapoints\": [") << "not a JSON object";
        QTest::newRow("no list") << QByteArray("{}") << "\"datapoints\" must be an array";
        QTest::newRow("wrong type")
            << QByteArray(R"({"datapoints": [{"name": "Bad", "elements": [
                   {"name": "Good", "value": 1}, {"name": "Worse", "type": "int", "value": "x"}]}]})")
            << "element \"Bad.Worse\": value [\"x\"] does not fit type \"int\"";
        QTest::newRow("twice")
            << QByteArray(R"({"datapoints": [{"name": "Bad", "elements": [
                   {"name": "Good", "value": 1}, {"name": "Good", "value": 2}]}]})")
            << "\"Bad.Good\" is defined twice";
        QTest::newRow("element without a name")
            << QByteArray(R"({"datapoints": [{"name": "Bad", "elements": [
                   {"name": "Good", "value": 1}, {"name": "", "value": 2}]}]})")
            << "invalid datapoint element name \"Bad.\"";
        QTest::newRow("exists")
            << QByteArray(R"({"datapoints": [{"name": "Bad", "elements": [{"name": "Good", "value": 1}]},
                                              {"name": "Stats", "elements": [{"name": "SetName", "value": ""}]}]})")
            << "\"Stats.SetName\" already exists";
    }
    void badDatapointFilesDefineNothing()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, expectedError);
        TestProject project;
        const QString file = project.write(QStringLiteral("config/datapoints.json"), content);
        QString error;
        QVERIFY(!Manager::loadDatapoints(file, error));
        QVERIFY2(error.startsWith(file) && error.contains(expectedError), qPrintable(error));
        DpIdentifier id;
        QVERIFY(!Manager::getId(QStringLiteral("Bad.Good"), id));
    }
};

QTEST_GUILESS_MAIN(TestDatapoints)
#include "tst_datapoints.moc"
