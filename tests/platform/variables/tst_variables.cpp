#include "BitVar.h"
#include "CharString.h"
#include "DynVar.h"
#include "FloatVar.h"
#include "IntegerVar.h"
#include "MappingVar.h"
#include "MixedVar.h"
#include "TextVar.h"
#include "TimeVar.h"
#include "UIntegerVar.h"

#include <QtTest>

class TestVariables : public QObject
{
    Q_OBJECT
private slots:
    void equalityNeedsSameTypeAndValue()
    {
        QVERIFY(IntegerVar(1) == IntegerVar(1));
        QVERIFY(IntegerVar(1) != IntegerVar(2));
        QVERIFY(IntegerVar(1) != UIntegerVar(1));
        QVERIFY(MixedVar() == MixedVar());
        QVERIFY(MixedVar(IntegerVar(3)) == MixedVar(IntegerVar(3)));
        QVERIFY(MixedVar(IntegerVar(3)) != MixedVar());
        QVERIFY(MixedVar(IntegerVar(3)) != IntegerVar(3));

        DynVar a;
        a.append(IntegerVar(1));
        a.append(TextVar("x"));
        DynVar b;
        b.append(TextVar("x"));
        b.append(IntegerVar(1));
        QVERIFY(a != b); // order matters in a dyn
    }

    void mappingKeysByTypeAndValueInInsertionOrder()
    {
        MappingVar map;
        map.setAt(TextVar("b"), IntegerVar(1));
        map.setAt(IntegerVar(1), TextVar("int key"));
        map.setAt(TextVar("1"), TextVar("text key"));
        map.setAt(TextVar("a"), IntegerVar(2));
        map.setAt(TextVar("b"), IntegerVar(3)); // replaces, keeps position

        QCOMPARE(map.count(), 4);
        QCOMPARE(map.keyAt(0)->formatValue(), QStringLiteral("b"));
        QCOMPARE(map.keyAt(3)->formatValue(), QStringLiteral("a"));
        QCOMPARE(*map.getAt(TextVar("b")), IntegerVar(3));
        QCOMPARE(map.getAt(IntegerVar(1))->formatValue(), QStringLiteral("int key"));
        QCOMPARE(map.getAt(TextVar("1"))->formatValue(), QStringLiteral("text key"));
        QVERIFY(!map.getAt(UIntegerVar(1)));
        QVERIFY(!map.getAt(TextVar("c")));
        QVERIFY(!map.keyAt(4));

        QVERIFY(map.remove(IntegerVar(1)));
        QVERIFY(!map.remove(IntegerVar(1)));
        QCOMPARE(map.keyAt(1)->formatValue(), QStringLiteral("1"));

        MappingVar reordered;
        reordered.setAt(TextVar("a"), IntegerVar(2));
        reordered.setAt(TextVar("1"), TextVar("text key"));
        reordered.setAt(TextVar("b"), IntegerVar(3));
        QVERIFY(map == reordered); // a mapping's equality ignores order
        reordered.setAt(TextVar("a"), IntegerVar(5));
        QVERIFY(map != reordered);
    }

    void mappingIsNotEqualToASubOrSuperset()
    {
        MappingVar map;
        map.setAt(TextVar("a"), IntegerVar(1));
        map.setAt(TextVar("b"), IntegerVar(2));
        MappingVar subset;
        subset.setAt(TextVar("a"), IntegerVar(1));
        QVERIFY(map != subset && subset != map);
        QVERIFY(MappingVar() != subset && subset != MappingVar());
    }

    void copiesAreDeep()
    {
        DynVar inner;
        inner.append(TextVar("x"));
        MappingVar map;
        map.setAt(TextVar("list"), inner);
        map.setAt(TextVar("mixed"), MixedVar(IntegerVar(1)));

        std::unique_ptr<Variable> copy(map.clone());
        QVERIFY(*copy == map);

        static_cast<DynVar *>(map.getAt(TextVar("list")))->append(TextVar("y"));
        static_cast<MixedVar *>(map.getAt(TextVar("mixed")))->setValue(IntegerVar(2));
        QVERIFY(*copy != map);
        const auto &copied = static_cast<const MappingVar &>(*copy);
        QCOMPARE(static_cast<const DynVar *>(copied.getAt(TextVar("list")))->count(), 1);
        QCOMPARE(copied.getAt(TextVar("mixed"))->formatValue(), QStringLiteral("1"));

        DynVar assigned;
        assigned = *static_cast<const DynVar *>(map.getAt(TextVar("list")));
        QCOMPARE(assigned.count(), 2);
    }

    void printableForms()
    {
        DynVar dyn;
        dyn.append(IntegerVar(-4));
        dyn.append(FloatVar(0.25));
        dyn.append(BitVar(true));
        MappingVar map;
        map.setAt(TextVar("d"), dyn);
        map.setAt(UIntegerVar(7), MixedVar());
        QCOMPARE(map.formatValue(), QStringLiteral("{d: [-4, 0.25, TRUE], 7: }"));
        const QDateTime t(QDate(2024, 2, 29), QTime(13, 5, 7, 9));
        QCOMPARE(TimeVar(t).formatValue(), QStringLiteral("2024.02.29 13:05:07.009"));
        QCOMPARE(Variable::getTypeName(static_cast<VariableType>(0x123)), QStringLiteral("UNKNOWN_VAR(0x123)"));
    }

    void textValidityAndLatin1()
    {
        QVERIFY(TextVar().isValid());
        QVERIFY(TextVar("").isValid());
        QVERIFY(!TextVar(static_cast<const char *>(nullptr)).isValid());
        QVERIFY(!TextVar("ab\xff\xfe").isValid());
        const TextVar umlaut("gr\xc3\xbc\xc3\x9f");
        QVERIFY(umlaut.isValid());
        QCOMPARE(umlaut.getValue(), QString::fromUtf8("grüß"));

        // Latin-1 both ways, byte for byte.
        QCOMPARE(umlaut.getString().bytes(), QByteArray("gr\xfc\xdf"));
        QCOMPARE(TextVar(CharString("gr\xfc\xdf")).getValue(), QString::fromUtf8("grüß"));

        TextVar repaired(static_cast<const char *>(nullptr));
        repaired.setValue(QStringLiteral("ok"));
        QVERIFY(repaired.isValid());
    }
};

QTEST_GUILESS_MAIN(TestVariables)
#include "tst_variables.moc"
