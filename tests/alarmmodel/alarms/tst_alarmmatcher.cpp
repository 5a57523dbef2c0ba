#include "AlarmFilterValues.h"
#include "AlarmMatcher.h"
#include "AlarmTestFactory.h"
#include "ValueFilterDate.h"
#include "ValueFilterText.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace AlarmTestFactory;

namespace {

const qint64 baseTime = 1700000000000;

QVector<AlarmInstancePtr> mixedAlarms()
{
    const QStringList systems = {QStringLiteral("System1"), QStringLiteral("system1"), QStringLiteral("System10"),
                                 QStringLiteral("SysB")};
    const QStringList texts = {QStringLiteral("Pump fault"),   QStringLiteral("PUMP overload"),
                               QStringLiteral("\u00dcber Temp"), QStringLiteral("\u00fcber temp"),
                               QStringLiteral("Kelvin \u212a"), QStringLiteral("Valve open"),
                               QString()};
    const QStringList classes = {QStringLiteral("alert"), QStringLiteral("Info"), QStringLiteral("warning")};
    QRandomGenerator random(2121);
    QVector<AlarmInstancePtr> alarms;
    for (int i = 0; i < 600; ++i) {
        AlarmInstance::Data d;
        d.ident = AlarmIdent(systems.at(int(random.bounded(systems.size()))), i + 1);
        d.dpe = QStringLiteral("%1:dp%2.alarm").arg(d.ident.getSystem()).arg(i);
        d.alias = QStringLiteral("APum-%1").arg(random.bounded(300));
        d.description = QStringLiteral("device %1").arg(random.bounded(1000));
        d.alarmText = texts.at(int(random.bounded(texts.size())));
        d.alarmClass = classes.at(int(random.bounded(classes.size())));
        d.priority = int(random.bounded(256));
        d.value = random.bounded(20.0);
        d.timeMs = baseTime + qint64(random.bounded(7200)) * 1000;
        d.ackTimeMs = random.bounded(2) ? d.timeMs + 5000 : 0;
        d.state = AlarmInstance::State(random.bounded(4));
        alarms.append(QSharedPointer<AlarmInstance>::create(d));
    }
    return alarms;
}

QSharedPointer<ValueFilter> casedPattern(const QString &property, const QString &pattern)
{
    auto filter = patternFilter(property, pattern);
    filter->setMatchCase(true);
    return filter;
}

QSharedPointer<ValueFilter> timeAfter(qint64 ms)
{
    auto filter = QSharedPointer<ValueFilterDate>::create(WildcardConfig(), QStringLiteral("time"),
                                                          Constants::ValueSourceAlarm, false);
    filter->setComparisonMethod(ValueFilterDate::After);
    filter->setFirstDate(QDateTime::fromMSecsSinceEpoch(ms));
    return filter;
}

QSharedPointer<ValueFilter> textRules()
{
    auto filter = QSharedPointer<ValueFilterText>::create(WildcardConfig(), QStringLiteral("text"),
                                                          Constants::ValueSourceAlarm, false);
    filter->addItem(QStringLiteral("p[au]mp"), 2, false);
    filter->addItem(QStringLiteral("*overload"), 1, true);
    return filter;
}

} // namespace

Q_DECLARE_METATYPE(QList<FilterRuleSet>)

// The matcher reads the rule sets once and tests them its own way (exclude
// sets first, properties looked up once, typed values and plain patterns
// without boxing or virtual calls); the rule sets' own evaluation of the
// boxed values is the reference, on every kind of rule the matcher treats
// apart.
class TestAlarmMatcher : public QObject
{
    Q_OBJECT
private slots:
    void agreesWithTheRuleSets_data()
    {
        QTest::addColumn<QList<FilterRuleSet>>("sets");
        const auto text = [](const char *pattern) { return patternFilter(QStringLiteral("text"), QLatin1String(pattern)); };
        QTest::newRow("includes and excludes")
            << QList<FilterRuleSet>{
                   ruleSet(true, {patternFilter(QStringLiteral("system"), QStringLiteral("System1;system2")),
                                  numberFilter(QStringLiteral("priority"), QStringLiteral(">150"))}),
                   ruleSet(true, {text("pump*")}),
                   ruleSet(true, {patternFilter(QStringLiteral("alias"), QStringLiteral("apum-1*"))}),
                   ruleSet(false, {patternFilter(QStringLiteral("alarmClass"), QStringLiteral("INFO"))}),
                   ruleSet(false, {patternFilter(QStringLiteral("description"), QStringLiteral("*99*"))})};
        QTest::newRow("excludes only")
            << QList<FilterRuleSet>{ruleSet(false, {text("*fault")}), ruleSet(false, {text("\u00fcber*")})};
        // A set of empty filters restricts nothing: it is no include set.
        QTest::newRow("empty filters and sets")
            << QList<FilterRuleSet>{ruleSet(true, {text("*"), text(" ; ")}),
                                    ruleSet(true, {text("*"), numberFilter(QStringLiteral("priority"), QStringLiteral("<40"))}),
                                    ruleSet(false, {})};
        QTest::newRow("only empty sets") << QList<FilterRuleSet>{ruleSet(true, {text("*")}), ruleSet(false, {text("")})};
        QTest::newRow("patterns on numbers and enumerations")
            << QList<FilterRuleSet>{ruleSet(true, {patternFilter(QStringLiteral("priority"), QStringLiteral("1*"))}),
                                    ruleSet(true, {patternFilter(QStringLiteral("value"), QStringLiteral("*.????????*"))}),
                                    ruleSet(false, {patternFilter(QStringLiteral("state"), QStringLiteral("went*"))})};
        QTest::newRow("numbers, times, unknown property")
            << QList<FilterRuleSet>{ruleSet(true, {numberFilter(QStringLiteral("value"), QStringLiteral("<5;12-14"))}),
                                    ruleSet(true, {timeAfter(baseTime + 3600 * 1000)}),
                                    ruleSet(false, {patternFilter(QStringLiteral("acknowledged"), QStringLiteral("yes"))}),
                                    ruleSet(false, {patternFilter(QStringLiteral("nosuch"), QStringLiteral("x"))})};
        QTest::newRow("case and folding")
            << QList<FilterRuleSet>{ruleSet(true, {casedPattern(QStringLiteral("system"), QStringLiteral("System1"))}),
                                    ruleSet(true, {text("\u00dcBER*")}),
                                    ruleSet(true, {text("*K")}),
                                    ruleSet(false, {casedPattern(QStringLiteral("text"), QStringLiteral("*temp"))})};
        QTest::newRow("text rules") << QList<FilterRuleSet>{ruleSet(true, {textRules()})};
    }
    void agreesWithTheRuleSets()
    {
        QFETCH(QList<FilterRuleSet>, sets);
        const SourceAndFilter filter = sourceFilter(sets);
        AlarmMatcher matcher;
        matcher.setFilter(filter);
        AlarmFilterValues values;
        // The plain form: every value boxed, every rule through its virtual match.
        const auto boxed = [&values](const QString &valueId, Constants::ValueSource source) {
            return values.filterValue(valueId, source);
        };
        int passed = 0;
        const QVector<AlarmInstancePtr> alarms = mixedAlarms();
        for (const AlarmInstancePtr &alarm : alarms) {
            values.setAlarm(alarm.data());
            const bool expected = filter.getFilterContainer()->matches(boxed);
            if (matcher.matches(*alarm) != expected)
                QFAIL(qPrintable(QStringLiteral("alarm %1 (%2, %3, %4): expected %5")
                                     .arg(QString::number(alarm->getIdent().getSerial()), alarm->getIdent().getSystem(),
                                          alarm->getData().alarmText, alarm->getText(AlarmProp::Priority),
                                          expected ? QStringLiteral("pass") : QStringLiteral("no pass"))));
            passed += expected;
        }
        // Only sets without rules let everything through; no case hides all.
        QVERIFY(passed > 0);
        QCOMPARE(passed == alarms.size(), QByteArray(QTest::currentDataTag()) == "only empty sets");
    }
};

QTEST_GUILESS_MAIN(TestAlarmMatcher)
#include "tst_alarmmatcher.moc"
