#include "AlarmTestFactory.h"
#include "LogCapture.h"
#include "ValueFilterDate.h"
#include "ValueFilterFixed.h"
#include "ValueFilterFixedMulti.h"
#include "ValueFilterNumbers.h"
#include "ValueFilterSingleValue.h"
#include "ValueFilterStringPattern.h"
#include "ValueFilterText.h"

#include <QtTest>

namespace {
const QString column = QStringLiteral("text");
const Constants::ValueSource alarm = Constants::ValueSourceAlarm;

using AlarmTestFactory::json;

WildcardConfig wildcards(QChar matchAll = QLatin1Char('*'), QChar emptyPattern = QChar())
{
    return WildcardConfig(nullptr, matchAll, emptyPattern);
}

using FilterPtr = QSharedPointer<ValueFilter>;

FilterPtr pattern(const QString &text, bool matchCase = false)
{
    auto f = QSharedPointer<ValueFilterStringPattern>::create(wildcards(), column, alarm, matchCase);
    f->setFilterText(text);
    return f;
}

FilterPtr textItem(int method, const QString &text)
{
    auto f = QSharedPointer<ValueFilterText>::create(wildcards(), column, alarm, false);
    return f->addItem(text, method, false) ? f : FilterPtr();
}

FilterPtr numbers(const QString &rules)
{
    auto f = QSharedPointer<ValueFilterNumbers>::create(wildcards(), column, alarm, false);
    return f->setFilterText(rules) ? f : FilterPtr();
}

const QDateTime firstDate(QDate(2024, 3, 1), QTime(10, 0), Qt::UTC);

// Methods 1 before, 2 after, 3 between the first date and an hour later.
FilterPtr date(int method)
{
    auto f = QSharedPointer<ValueFilterDate>::create(wildcards(), column, alarm, false);
    f->setComparisonMethod(method);
    f->setFirstDate(firstDate);
    f->setSecondDate(firstDate.addSecs(3600));
    return f;
}
} // namespace

Q_DECLARE_METATYPE(FilterPtr)

class TestValueFilters : public QObject
{
    Q_OBJECT
private slots:
    void matching_data()
    {
        QTest::addColumn<FilterPtr>("filter");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("expected");
        const auto row = [](const char *name, const FilterPtr &f, const QVariant &value, bool expected) {
            QTest::newRow(name) << f << value << expected;
        };
        // Patterns: "*" and "?" wildcards, ";" or "," lists, "\" escapes, "!" negation.
        row("plain text is the whole value", pattern("pump"), "pump 1", false);
        row("star prefix", pattern("pump*"), "Pump 1", true);
        row("star prefix, match case", pattern("pump*", true), "Pump 1", false);
        row("question mark one char", pattern("valve?"), "valve7", true);
        row("question mark not two", pattern("valve?"), "valve77", false);
        row("infix", pattern("*temp*"), "High TEMP alarm", true);
        row("star in the middle", pattern("a*c"), "abbbc", true);
        row("second of a list", pattern("a;b,c"), "c", true);
        row("blanks around parts", pattern(" a ; b "), "b", true);
        row("escaped separator is text", pattern("a\\;b"), "a;b", true);
        row("escaped separator no split", pattern("a\\;b"), "a", false);
        row("escaped star is literal", pattern("a\\*"), "a*", true);
        row("escaped star no wildcard", pattern("a\\*"), "ab", false);
        row("negation only", pattern("!*test*"), "pump", true);
        row("negation excludes", pattern("!*test*"), "a test b", false);
        row("include and exclude", pattern("p*;!*2"), "p2", false);
        row("include and exclude pass", pattern("p*;!*2"), "p1", true);
        row("escaped negation is text", pattern("\\!x"), "!x", true);
        row("regex characters are text", pattern("a.c"), "abc", false);
        row("match-all matches empty", pattern("*"), "", true);
        // Alarm texts and descriptions can hold line breaks; "*" and "?" match them.
        row("question mark before a line break", pattern("l?ne*"), "line1\nline2", true);
        row("stars across a line break", pattern("*ne*2"), "line1\nline2", true);
        row("question mark is a line break", pattern("a?b"), "a\nb", true);
        // A character beyond the Basic Multilingual Plane is one character.
        row("star before a surrogate pair", pattern("pump*\U0001F525"), "pump\U0001F525", true);
        row("surrogate pair after a question mark", pattern("p?mp\U0001F525"), "pump\U0001F525", true);
        row("surrogate pair between stars", pattern("*mp*\U0001F525*"), "pump\U0001F525", true);
        row("question mark is a surrogate pair", pattern("pump?"), "pump\U0001F525", true);
        row("two question marks are not one pair", pattern("pump??"), "pump\U0001F525", false);
        row("escaped surrogate pair", pattern("?ump\\\U0001F525"), "pump\U0001F525", true);
        // Runs of stars are one star; patterns the expression engine gives up
        // on still get the right answer.
        const QString pumpValve = QStringLiteral("pumpvalve") + QString(63, QLatin1Char('x'));
        row("repeated stars", pattern("******pump******valve******"), pumpValve, true);
        const QString as = QString(300, QLatin1Char('a'));
        row("beyond the engine's limits, matching", pattern("a*a*a*a*a*a*a*a*b*c"), as + "B" + as + "C", true);
        row("beyond the engine's limits, not matching", pattern("a*a*a*a*a*a*a*a*b"), as + "bc", false);
        // Text items: 0 exact, 1 wildcard, 2 regular expression.
        row("exact", textItem(0, "Pump*"), "Pump*", true);
        row("exact is not wildcard", textItem(0, "Pump*"), "Pump 1", false);
        row("exact ignores case", textItem(0, "PUMP"), "pump", true);
        row("wildcard", textItem(1, "Pump*"), "pump 1", true);
        row("wildcard across a line break", textItem(1, "l?ne*"), "line1\nline2", true);
        row("wildcard beyond the BMP", textItem(1, "p?mp\U0001F525"), "pump\U0001F525", true);
        row("regex searches", textItem(2, "\\d{3}"), "id 123 x", true);
        row("regex anchored", textItem(2, "^\\d+$"), "id 123", false);
        row("regex alternatives", textItem(2, "(warn|err)"), "ERROR", true);
        // Number rules.
        row("equal", numbers("5"), 5, true);
        row("equal other", numbers("5"), 6, false);
        row("greater", numbers(">10"), 10.5, true);
        row("greater is strict", numbers(">10"), 10, false);
        row("less negative", numbers("<-3.5"), -4, true);
        row("range lower end", numbers("10-20"), 10, true);
        row("range upper end", numbers("10-20"), 20, true);
        row("range outside", numbers("10-20"), 21, false);
        row("range reversed", numbers("20-10"), 15, true);
        row("negative range", numbers("-5--3"), -4, true);
        row("negated comparison", numbers("!>100"), 150, false);
        row("negated only passes others", numbers("!>100"), 50, true);
        row("one of two", numbers("1;3"), 3, true);
        row("plain and negated", numbers("0-10,!5"), 5, false);
        row("text value as number", numbers(">1"), "2.5", true);
        row("text that is no number", numbers("!1"), "abc", false);
        row("blanks inside rule", numbers("> 10"), 11, true);
        // Dates, also given as ISO text.
        row("before", date(1), firstDate.addSecs(-1), true);
        row("before not at", date(1), firstDate, false);
        row("after", date(2), firstDate.addSecs(1), true);
        row("after not before", date(2), firstDate.addSecs(-1), false);
        row("between start", date(3), firstDate, true);
        row("between end", date(3), firstDate.addSecs(3600), true);
        row("between beyond", date(3), firstDate.addSecs(3601), false);
        row("no method passes all", date(0), firstDate.addSecs(-99), true);
    }
    void matching()
    {
        QFETCH(FilterPtr, filter);
        QFETCH(QVariant, value);
        QFETCH(bool, expected);
        QVERIFY(filter); // the pattern was accepted
        QCOMPARE(filter->matches(value), expected);
        if (value.userType() == QMetaType::QDateTime)
            QCOMPARE(filter->matches(value.toDateTime().toString(Qt::ISODate)), expected);
    }

    void stringPatternSpecialCharacters()
    {
        // "%" matches all and "#" stands for an empty value.
        ValueFilterStringPattern f(wildcards(QLatin1Char('%'), QLatin1Char('#')), column, alarm, false);
        f.setFilterText(QStringLiteral("%"));
        QVERIFY(f.isEmpty());
        QVERIFY(f.matches(QStringLiteral("anything")));
        f.setFilterText(QStringLiteral("#"));
        QVERIFY(!f.isEmpty());
        QVERIFY(f.matches(QString()));
        QVERIFY(!f.matches(QStringLiteral("x")));
        f.setFilterText(QStringLiteral("!#"));
        QVERIFY(f.matches(QStringLiteral("x")));
        QVERIFY(!f.matches(QString()));
        // Match case switched later recompiles the patterns.
        f.setFilterText(QStringLiteral("Ab"));
        QVERIFY(f.matches(QStringLiteral("ab")));
        f.setMatchCase(true);
        QVERIFY(!f.matches(QStringLiteral("ab")));
        QVERIFY(f.matches(QStringLiteral("Ab")));
    }

    void stringPatternEmptiness()
    {
        ValueFilterStringPattern f(wildcards(), column, alarm, false);
        f.setFilterText(QStringLiteral(" ; , "));
        QVERIFY(f.isEmpty());
        f.setFilterText(QStringLiteral("a;*"));
        QVERIFY(f.isEmpty()); // "*" lets everything through anyway
        f.setFilterText(QStringLiteral("*;!b"));
        QVERIFY(!f.isEmpty());
        QCOMPARE(f.getExcludedPatterns(), QStringList{QStringLiteral("b")});
    }

    void descriptionKeepsPercentSignsOfValues()
    {
        // Property names and patterns are the operator's: a "%1" in them is
        // text, not a place for the next part of the description.
        ValueFilterStringPattern f(wildcards(), QStringLiteral("load%1"), alarm, true);
        f.setFilterText(QStringLiteral("50%2;%1"));
        QCOMPARE(f.toString(), QStringLiteral("load%1 (source 0, match case): pattern '50%2;%1'"));
    }

    void textIncludeExcludeAndRefusals()
    {
        ValueFilterText f(wildcards(), column, alarm, true);
        QVERIFY(f.addItem(QStringLiteral("P*"), 1, false));
        QVERIFY(f.addItem(QStringLiteral("*x"), 1, true));
        QVERIFY(f.matches(QStringLiteral("Pa")));
        QVERIFY(!f.matches(QStringLiteral("pa"))); // match case
        QVERIFY(!f.matches(QStringLiteral("Pax")));

        QString error;
        QVERIFY(!f.addItem(QStringLiteral("(unclosed"), 2, false, &error));
        QVERIFY2(error.contains(QLatin1String("(unclosed")), qPrintable(error));
        QVERIFY(!f.addItem(QString(), 1, false, &error));
        QVERIFY(!f.addItem(QStringLiteral("a"), 3, false, &error));
        QCOMPARE(f.getItems().size(), 2); // nothing added by the refusals
    }

    void textRuleTheEngineGivesUpOn()
    {
        // Nested repetitions backtrack past the expression engine's limits: the
        // rule cannot tell, so it hides nothing, and the log says so once.
        LogCapture log;
        const QString text = QString(40, QLatin1Char('a')) + QLatin1Char('!');
        ValueFilterText include(WildcardConfig(&log.producer, QLatin1Char('*'), QChar()), column, alarm, false);
        QVERIFY(include.addItem(QStringLiteral("(a+)+$"), 2, false));
        QVERIFY(include.matches(text));
        QVERIFY(include.matches(text));
        QVERIFY(!include.matches(QStringLiteral("b")));
        QCOMPARE(log.lines().size(), 1);
        QVERIFY2(log.lines().first().contains(QLatin1String("(a+)+$")), qPrintable(log.lines().first()));

        ValueFilterText exclude(WildcardConfig(&log.producer, QLatin1Char('*'), QChar()), column, alarm, false);
        QVERIFY(exclude.addItem(QStringLiteral("(a+)+$"), 2, true));
        QVERIFY(exclude.matches(text));
        QVERIFY(!exclude.matches(QStringLiteral("a")));
        QCOMPARE(log.lines().size(), 2);
    }

    void numbersFeedback()
    {
        ValueFilterNumbers f(wildcards(), column, alarm, false);
        QVERIFY(!f.setFilterText(QStringLiteral(">10; abc ; !1-2; >1-5; 1.2.3")));
        QCOMPARE(f.getRuleDescriptions(),
                 (QStringList{QStringLiteral("greater than 10"), QStringLiteral("not between 1 and 2")}));
        QCOMPARE(f.getFailedParts(), (QStringList{QStringLiteral("abc"), QStringLiteral(">1-5"),
                                                  QStringLiteral("1.2.3")}));
        QVERIFY(f.matches(11)); // the good rules apply
        QVERIFY(!f.setFilterText(QStringLiteral("x")));
        QVERIFY(f.isEmpty());
        QVERIFY(f.matches(QStringLiteral("anything")));
        QVERIFY(QRegularExpression(ValueFilterNumbers::rulePattern()).match(QStringLiteral("!1-2")).hasMatch());
    }

    void singleValueAndFixed()
    {
        ValueFilterSingleValue single(wildcards(), column, alarm, false);
        QVERIFY(single.isEmpty());
        single.setFilterValue(QStringLiteral("Open"));
        QVERIFY(single.matches(QStringLiteral("open")));
        single.setMatchCase(true);
        QVERIFY(!single.matches(QStringLiteral("open")));
        single.setFilterValue(5);
        QVERIFY(single.matches(5.0));

        ValueFilterFixed fixed(wildcards(), QStringLiteral("acknowledged"), alarm, false,
                               QStringLiteral("unacknowledged"), false);
        QVERIFY(fixed.isEmpty());
        QVERIFY(fixed.matches(true)); // unchecked restricts nothing
        fixed.setChecked(true);
        QVERIFY(!fixed.matches(true));
        QVERIFY(fixed.matches(false));
    }

    void fixedMulti()
    {
        ValueFilterFixedMulti multi(wildcards(), QStringLiteral("priority"), alarm, false);
        for (const char *kind : {"high", "medium", "low"})
            multi.addFixedFilter(QSharedPointer<ValueFilterFixed>::create(
                wildcards(), QStringLiteral("priority"), alarm, false, QString::fromLatin1(kind)));
        QVERIFY(multi.isEmpty());
        multi.findFixedFilter(QStringLiteral("high"))->setChecked(true);
        multi.findFixedFilter(QStringLiteral("low"))->setChecked(true);
        QVERIFY(multi.matches(QStringLiteral("HIGH")));
        QVERIFY(!multi.matches(QStringLiteral("medium")));

        // Copies are deep: changing the copy leaves the original alone.
        ValueFilterFixedMulti copy(multi);
        copy.setMatchCase(true);
        copy.findFixedFilter(QStringLiteral("high"))->setChecked(false);
        QVERIFY(multi.findFixedFilter(QStringLiteral("high"))->isChecked());
        QVERIFY(!multi.findFixedFilter(QStringLiteral("high"))->isMatchCase());
        QVERIFY(multi.isCompatible(copy));
        QVERIFY(!multi.isEqual(copy));

        ValueFilterFixedMulti other(wildcards(), QStringLiteral("priority"), alarm, false);
        other.addFixedFilter(QSharedPointer<ValueFilterFixed>::create(wildcards(), QStringLiteral("priority"), alarm,
                                                                      false, QStringLiteral("high")));
        QVERIFY(!multi.isCompatible(other));
    }

    void jsonRoundTripOfEveryKind()
    {
        const WildcardConfig config = wildcards();
        QList<QSharedPointer<ValueFilter>> filters;
        auto pattern = QSharedPointer<ValueFilterStringPattern>::create(config, column, alarm, true);
        pattern->setFilterText(QStringLiteral("a\\;b;!c*"));
        auto text = QSharedPointer<ValueFilterText>::create(config, column, Constants::ValueSourceDpConfig, false);
        text->addItem(QStringLiteral("^x+$"), 2, true);
        text->addItem(QStringLiteral("y"), 0, false);
        auto numbers = QSharedPointer<ValueFilterNumbers>::create(config, QStringLiteral("prio"), alarm, false);
        numbers->setFilterText(QStringLiteral(">10;!15"));
        auto date = QSharedPointer<ValueFilterDate>::create(config, QStringLiteral("time"), alarm, false);
        date->setComparisonMethod(3);
        date->setFirstDate(QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 6)));
        date->setSecondDate(QDateTime(QDate(2024, 1, 3), QTime(0, 0), Qt::UTC));
        auto single = QSharedPointer<ValueFilterSingleValue>::create(config, QStringLiteral("state"), alarm, false);
        single->setFilterValue(QVariant(qlonglong(7)));
        auto multi = QSharedPointer<ValueFilterFixedMulti>::create(config, QStringLiteral("prio"), alarm, false);
        multi->addFixedFilter(QSharedPointer<ValueFilterFixed>::create(config, QStringLiteral("prio"), alarm, false,
                                                                       QStringLiteral("high"), 3, true));
        filters << pattern << text << numbers << date << single << multi;

        for (const auto &f : qAsConst(filters)) {
            QString error;
            const auto back = ValueFilter::fromJson(f->toJson(), config, QStringLiteral("f"), error);
            QVERIFY2(back, qPrintable(error));
            QVERIFY2(back->isEqual(*f), qPrintable(f->toString()));
            QCOMPARE(back->toJson(), f->toJson());
        }
    }

    void jsonErrors_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("errorPart");
        QTest::newRow("unknown kind") << json("{'kind':'colour','valueId':'a','source':'Alarm'}")
                                      << "unknown filter kind 'colour'";
        QTest::newRow("unknown source") << json("{'kind':'text','valueId':'a','source':'Moon','items':[]}")
                                        << "unknown value source 'Moon'";
        QTest::newRow("bad regex")
            << json("{'kind':'text','valueId':'a','source':'Alarm','items':[{'text':'(','method':2}]}")
            << "f.items[0]': invalid regular expression '('";
        QTest::newRow("bad number rule")
            << json("{'kind':'numbers','valueId':'a','source':'Alarm','text':'>5; 7x'}")
            << "cannot parse number rule(s) '7x'";
        QTest::newRow("wrong type") << json("{'kind':'stringPattern','valueId':'a','source':'Alarm','text':5}")
                                    << "'f.text' must be a string";
        QTest::newRow("misspelt key")
            << json("{'kind':'stringPattern','valueId':'a','source':'Alarm','txt':'x'}")
            << "unknown key 'f.txt'";
        QTest::newRow("date method")
            << json("{'kind':'date','valueId':'a','source':'Alarm','method':4}") << "'f.method' must be 0 to 3";
        // A date filter holds dates: anything else would load as a filter that restricts nothing.
        const auto dateWith = [](const char *fields) {
            const QByteArray text = QByteArray("{'kind':'date','valueId':'a','source':'Alarm','method':3,") + fields + '}';
            return json(text.constData());
        };
        QTest::newRow("date as a word") << dateWith("'first':'yesterday'") << "'f.first' must be a date and time";
        QTest::newRow("date in local notation")
            << dateWith("'first':'01.05.2030 09:00'") << "'f.first' must be a date and time";
        QTest::newRow("date as a number") << dateWith("'first':5,'firstType':'int'")
                                          << "'f.first' must be a date and time";
        QTest::newRow("date as a boolean") << dateWith("'first':true") << "'f.first' must be a date and time";
        QTest::newRow("second date as a text")
            << dateWith("'first':'2030-05-01T09:00:00.000','firstType':'QDateTime','second':'later',"
                        "'secondType':'QString'")
            << "'f.second' must be a date and time";
    }
    void jsonErrors()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, errorPart);
        QString error;
        const auto f = ValueFilter::fromJson(QJsonDocument::fromJson(json).object(), wildcards(),
                                             QStringLiteral("f"), error);
        QVERIFY(!f);
        QVERIFY2(error.contains(errorPart), qPrintable(error));
    }
};

QTEST_GUILESS_MAIN(TestValueFilters)
#include "tst_valuefilters.moc"
