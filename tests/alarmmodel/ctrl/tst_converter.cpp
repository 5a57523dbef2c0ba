#include "DynVar.h"
#include "FloatVar.h"
#include "IntegerVar.h"
#include "LogCapture.h"
#include "Manager.h"
#include "TimeVar.h"
#include "UIntegerVar.h"
#include "converter.h"

#include <QtTest>

class TestConverter : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_log.clear(); }

    void valuesRoundTrip_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("ctrlType");
        const QDateTime when(QDate(2023, 11, 5), QTime(22, 1, 2, 345));
        QTest::newRow("text") << QVariant(QStringLiteral("grüß")) << int(TEXT_VAR);
        QTest::newRow("empty text") << QVariant(QString()) << int(TEXT_VAR);
        QTest::newRow("int") << QVariant(-17) << int(INTEGER_VAR);
        QTest::newRow("uint") << QVariant(4000000000u) << int(UINTEGER_VAR);
        QTest::newRow("bool") << QVariant(true) << int(BIT_VAR);
        QTest::newRow("double") << QVariant(0.1) << int(FLOAT_VAR);
        QTest::newRow("time") << QVariant(when) << int(TIME_VAR);
        QTest::newRow("null") << QVariant() << int(MIXED_VAR);
        QTest::newRow("list")
            << QVariant(QVariantList{1, QStringLiteral("a"), QVariantList{false}, QVariant()}) << int(DYN_VAR);
        QTest::newRow("map")
            << QVariant(QVariantMap{{"event", QVariantMap{{"row", QVariantList{3, 5}}, {"button", 2}}},
                                    {"alarm", QVariantMap{{"text", "x"}, {"time", when}, {"prio", 1.5}}}})
            << int(MAPPING_VAR);
    }
    void valuesRoundTrip()
    {
        QFETCH(QVariant, value);
        QFETCH(int, ctrlType);
        const std::unique_ptr<Variable> ctrl(converter::nativeToCtrl(&m_logger, value));
        QVERIFY(ctrl);
        QCOMPARE(int(ctrl->getType()), ctrlType);
        const QVariant back = converter::ctrlToNative(ctrl.get());
        QCOMPARE(back, value);
        QCOMPARE(back.userType(), value.userType());
        QVERIFY(m_log.lines().isEmpty());
    }

    void argumentListsAndWidenedTypes()
    {
        const QList<QVariant> args{QStringLiteral("prop"), QStringList{"Sys1", "Sys2"},
                                   qlonglong(7), qlonglong(1) << 40, QVariant::fromValue(2.5f),
                                   QVariantHash{{"k", 1}}};
        const std::unique_ptr<DynVar> dyn(converter::nativeToCtrlArguments(&m_logger, args));
        QVERIFY(dyn);
        QCOMPARE(dyn->formatValue(), QStringLiteral("[prop, [Sys1, Sys2], 7, 1099511627776, 2.5, {k: 1}]"));
        QCOMPARE(dyn->at(1)->getType(), DYN_VAR);
        QCOMPARE(*dyn->at(2), IntegerVar(7));
        QCOMPARE(*dyn->at(3), FloatVar(1099511627776.0));
        // A list of texts comes back as a list of variants holding the texts.
        QCOMPARE(converter::ctrlToNative(dyn->at(1)).toStringList(), (QStringList{"Sys1", "Sys2"}));

        const std::unique_ptr<DynVar> none(converter::nativeToCtrlArguments(&m_logger, {}));
        QVERIFY(none && none->isEmpty());
    }

    void unconvertibleValuesFailWithALogLine()
    {
        const QList<QVariant> args{1, QVariantList{QStringLiteral("ok"), QVariantMap{{"pos", QPoint(1, 2)}}}};
        QVERIFY(!converter::nativeToCtrlArguments(&m_logger, args));
        QCOMPARE(m_log.lines().size(), 1);
        QVERIFY2(m_log.lines().first().contains(QLatin1String("argument 2[1].pos: a value of type QPoint cannot be")),
                 qPrintable(m_log.lines().first()));
        QVERIFY(!converter::nativeToCtrlArguments(nullptr, {QPoint()})); // no logger: no crash
    }

    void mappingKeysThatAreNotTexts()
    {
        MappingVar map;
        map.setAt(IntegerVar(1), TextVar("one"));
        map.setAt(MixedVar(), MixedVar(IntegerVar(2)));
        QCOMPARE(converter::ctrlToNative(&map), QVariant(QVariantMap{{"1", "one"}, {"", 2}}));
        QVERIFY(!converter::ctrlToNative(nullptr).isValid());
    }

    void getMapValue()
    {
        MappingVar map;
        map.setAt(TextVar("type"), IntegerVar(2));
        map.setAt(TextVar("wrapped"), MixedVar(IntegerVar(3)));
        map.setAt(TextVar("list"), MixedVar(DynVar()));
        map.setAt(TextVar("empty"), MixedVar());
        map.setAt(TextVar("text"), TextVar("3"));
        map.setAt(IntegerVar(5), IntegerVar(5));
        QString error;

        const IntegerVar *plain = converter::getMapValue<IntegerVar>(&m_logger, map, TextVar("type"), INTEGER_VAR, error);
        QVERIFY(plain && plain->getValue() == 2);
        const IntegerVar *wrapped =
            converter::getMapValue<IntegerVar>(&m_logger, map, TextVar("wrapped"), INTEGER_VAR, error);
        QVERIFY(wrapped && wrapped->getValue() == 3);
        QVERIFY(converter::getMapValue<DynVar>(nullptr, map, TextVar("list"), DYN_VAR, error));
        QVERIFY(error.isEmpty());

        QVERIFY(!converter::getMapValue<IntegerVar>(&m_logger, map, TextVar("5"), INTEGER_VAR, error));
        QCOMPARE(error, QStringLiteral("mapping doesn't contain key '5'"));
        QVERIFY(!converter::getMapValue<IntegerVar>(&m_logger, map, TextVar("text"), INTEGER_VAR, error));
        QCOMPARE(error, QStringLiteral("mapping value for key 'text' has a type TEXT_VAR, expected type INTEGER_VAR"));
        QVERIFY(!converter::getMapValue<MappingVar>(&m_logger, map, TextVar("wrapped"), MAPPING_VAR, error));
        QCOMPARE(error, QStringLiteral("mapping value for key 'wrapped' has a type INTEGER_VAR, expected type MAPPING_VAR"));
        QVERIFY(!converter::getMapValue<DynVar>(&m_logger, map, TextVar("empty"), DYN_VAR, error));
        QCOMPARE(error, QStringLiteral("mapping value for key 'empty' has a type NO_VAR, expected type DYN_VAR"));
        // A result class that does not fit the expected type is refused, not cast.
        QVERIFY(!converter::getMapValue<DynVar>(&m_logger, map, TextVar("type"), INTEGER_VAR, error));
        QVERIFY(m_log.lines().isEmpty()); // errors are the caller's to log
    }

    void datapointIdentifiers()
    {
        QString error;
        QVERIFY(Manager::dpCreateElement(QStringLiteral("ConvDp.A"), TextVar(), error));
        QVERIFY(Manager::dpCreateElement(QStringLiteral("ConvDp.B"), TextVar(), error));
        DpIdentList ids;
        QVERIFY(converter::getDpIds(&m_logger, {"ConvDp.B", "ConvDp.A"}, ids, error));
        QCOMPARE(ids.count(), 2);
        QCOMPARE(Manager::getName(ids.at(0)), QStringLiteral("ConvDp.B"));
        QVERIFY(!converter::getDpIds(&m_logger, {"ConvDp.A", "ConvDp.Missing"}, ids, error));
        QCOMPARE(error, QStringLiteral("datapoint element 'ConvDp.Missing' doesn't exist"));
        QVERIFY(ids.isEmpty());
    }

private:
    LogCapture m_log;
    const MsgLoggingProducer &m_logger = m_log.producer;
};

QTEST_GUILESS_MAIN(TestConverter)
#include "tst_converter.moc"
