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

// JSON written with single quotes, to keep the test tables readable.
QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

WildcardConfig wildcards(QChar matchAll = QLatin1Char('*'), QChar emptyPattern = QChar())
{
    return WildcardConfig(nullptr, matchAll, emptyPattern);
}
} // namespace

class TestValueFilters : public QObject
{
    Q_OBJECT
private slots:
    void stringPattern_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("matchCase");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("expected");
        QTest::newRow("plain text is the whole value") << "pump" << false << "pump 1" << false;
        QTest::newRow("star prefix") << "pump*" << false << "Pump 1" << true;
        QTest::newRow("star prefix, match case") << "pump*" << true << "Pump 1" << false;
        QTest::newRow("question mark one char") << "valve?" << false << "valve7" << true;
        QTest::newRow("question mark not two") << "valve?" << false << "valve77" << false;
        QTest::newRow("infix") << "*temp*" << false << "High TEMP alarm" << true;
        QTest::newRow("star in the middle") << "a*c" << false << "abbbc" << true;
        QTest::newRow("second of a list") << "a;b,c" << false << "c" << true;
        QTest::newRow("blanks around parts") << " a ; b " << false << "b" << true;
        QTest::newRow("escaped separator is text") << "a\\;b" << false << "a;b" << true;
        QTest::newRow("escaped separator no split") << "a\\;b" << false << "a" << false;
        QTest::newRow("escaped star is literal") << "a\\*" << false << "a*" << true;
        QTest::newRow("escaped star no wildcard") << "a\\*" << false << "ab" << false;
        QTest::newRow("negation only") << "!*test*" << false << "pump" << true;
        QTest::newRow("negation excludes") << "!*test*" << false << "a test b" << false;
        QTest::newRow("include and exclude") << "p*;!*2" << false << "p2" << false;
        QTest::newRow("include and exclude pass") << "p*;!*2" << false << "p1" << true;
        QTest::newRow("escaped negation is text") << "\\!x" << false << "!x" << true;
        QTest::newRow("regex characters are text") << "a.c" << false << "abc" << false;
        QTest::newRow("match-all matches empty") << "*" << false << "" << true;
    }
    void stringPattern()
    {
        QFETCH(QString, pattern);
        QFETCH(bool, matchCase);
        QFETCH(QString, value);
        QFETCH(bool, expected);
        ValueFilterStringPattern f(wildcards(), column, alarm, matchCase);
        f.setFilterText(pattern);
        QCOMPARE(f.matches(value), expected);
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

    void text_data()
    {
        QTest::addColumn<int>("method");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QString>("value");
        QTest::addColumn<bool>("expected");
        QTest::newRow("exact") << 0 << "Pump*" << "Pump*" << true;
        QTest::newRow("exact is not wildcard") << 0 << "Pump*" << "Pump 1" << false;
        QTest::newRow("exact ignores case") << 0 << "PUMP" << "pump" << true;
        QTest::newRow("wildcard") << 1 << "Pump*" << "pump 1" << true;
        QTest::newRow("regex searches") << 2 << "\\d{3}" << "id 123 x" << true;
        QTest::newRow("regex anchored") << 2 << "^\\d+$" << "id 123" << false;
        QTest::newRow("regex alternatives") << 2 << "(warn|err)" << "ERROR" << true;
    }
    void text()
    {
        QFETCH(int, method);
        QFETCH(QString, pattern);
        QFETCH(QString, value);
        QFETCH(bool, expected);
        ValueFilterText f(wildcards(), column, alarm, false);
        QVERIFY(f.addItem(pattern, method, false));
        QCOMPARE(f.matches(value), expected);
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

    void numbers_data()
    {
        QTest::addColumn<QString>("rules");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("expected");
        QTest::newRow("equal") << "5" << QVariant(5) << true;
        QTest::newRow("equal other") << "5" << QVariant(6) << false;
        QTest::newRow("greater") << ">10" << QVariant(10.5) << true;
        QTest::newRow("greater is strict") << ">10" << QVariant(10) << false;
        QTest::newRow("less negative") << "<-3.5" << QVariant(-4) << true;
        QTest::newRow("range lower end") << "10-20" << QVariant(10) << true;
        QTest::newRow("range upper end") << "10-20" << QVariant(20) << true;
        QTest::newRow("range outside") << "10-20" << QVariant(21) << false;
        QTest::newRow("range reversed") << "20-10" << QVariant(15) << true;
        QTest::newRow("negative range") << "-5--3" << QVariant(-4) << true;
        QTest::newRow("negated comparison") << "!>100" << QVariant(150) << false;
        QTest::newRow("negated only passes others") << "!>100" << QVariant(50) << true;
        QTest::newRow("one of two") << "1;3" << QVariant(3) << true;
        QTest::newRow("plain and negated") << "0-10,!5" << QVariant(5) << false;
        QTest::newRow("text value as number") << ">1" << QVariant(QStringLiteral("2.5")) << true;
        QTest::newRow("text that is no number") << "!1" << QVariant(QStringLiteral("abc")) << false;
        QTest::newRow("blanks inside rule") << "> 10" << QVariant(11) << true;
    }
    void numbers()
    {
        QFETCH(QString, rules);
        QFETCH(QVariant, value);
        QFETCH(bool, expected);
        ValueFilterNumbers f(wildcards(), column, alarm, false);
        QVERIFY(f.setFilterText(rules));
        QCOMPARE(f.matches(value), expected);
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

    void date_data()
    {
        QTest::addColumn<int>("method");
        QTest::addColumn<int>("offset"); // seconds after the first date
        QTest::addColumn<bool>("expected");
        QTest::newRow("before") << 1 << -1 << true;
        QTest::newRow("before not at") << 1 << 0 << false;
        QTest::newRow("after") << 2 << 1 << true;
        QTest::newRow("after not before") << 2 << -1 << false;
        QTest::newRow("between start") << 3 << 0 << true;
        QTest::newRow("between end") << 3 << 3600 << true;
        QTest::newRow("between beyond") << 3 << 3601 << false;
        QTest::newRow("no method passes all") << 0 << -99 << true;
    }
    void date()
    {
        QFETCH(int, method);
        QFETCH(int, offset);
        QFETCH(bool, expected);
        const QDateTime first(QDate(2024, 3, 1), QTime(10, 0), Qt::UTC);
        ValueFilterDate f(wildcards(), column, alarm, false);
        f.setComparisonMethod(method);
        f.setFirstDate(first);
        f.setSecondDate(first.addSecs(3600));
        QCOMPARE(f.matches(first.addSecs(offset)), expected);
        // A time as ISO text is read the same way.
        QCOMPARE(f.matches(first.addSecs(offset).toString(Qt::ISODate)), expected);
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
