#include "IntegerVar.h"
#include "LogCapture.h"
#include "MappingVar.h"
#include "MenuDescription.h"
#include "MixedVar.h"
#include "TextVar.h"

#include <QtTest>

namespace {

MappingVar answer(const QString &menu, bool withY = true)
{
    MappingVar map;
    map.setAt(TextVar("menuX"), IntegerVar(10));
    if (withY)
        map.setAt(TextVar("menuY"), MixedVar(IntegerVar(20))); // held in a mixed, as CTRL may
    map.setAt(TextVar("menu"), TextVar(menu));
    return map;
}

// The tree in one line: each node's short form, its value, flags and children.
QString dump(const MenuDescription &node)
{
    QString text = node.toString();
    if (node.getType() == MenuDescription::Push || node.getType() == MenuDescription::Check)
        text += QLatin1Char('=') + QString::number(node.getValue());
    if (!node.isEnabled())
        text += QStringLiteral(" disabled");
    if (node.isChecked())
        text += QStringLiteral(" checked");
    if (!node.getItems().isEmpty()) {
        QStringList children;
        for (const auto &child : node.getItems()) {
            children << dump(*child);
        }
        text += QStringLiteral(" [") + children.join(QStringLiteral(", ")) + QLatin1Char(']');
    }
    return text;
}

} // namespace

class TestMenuDescription : public QObject
{
    Q_OBJECT
private slots:
    void menus_data()
    {
        QTest::addColumn<QString>("menu");
        QTest::addColumn<QString>("tree"); // empty: the menu is refused
        QTest::addColumn<QStringList>("messages");

        QTest::newRow("one push") << R"([{"type": "push", "label": "Ack", "value": 1}])"
                                  << "root [push(Ack)=1]" << QStringList();
        QTest::newRow("all kinds, values truncated toward zero")
            << R"([{"type": "label", "label": "Alarm", "enabled": false},
                  {"type": "separator"},
                  {"type": "push", "label": "A", "value": 2.9},
                  {"type": "check", "label": "B", "value": -2.9, "checked": true},
                  {"type": "check", "label": "C", "value": 3},
                  {"type": "cascade", "label": "More", "items": [{"type": "push", "label": "D", "value": 4}]},
                  {"type": "cascade", "label": "Empty"}])"
            << "root [label(Alarm) disabled, separator, push(A)=2, check(B)=-2 checked, check(C)=3, "
               "cascade(More) [push(D)=4], cascade(Empty)]"
            << QStringList();
        QTest::newRow("faulty entries dropped at the top")
            << R"([{"type": "Push", "label": "X", "value": 1},
                  {"type": "check", "label": "Y", "value": 1, "checked": "yes"},
                  {"type": "label"},
                  {"type": "push", "label": "Z", "value": "1"},
                  {"type": "push", "label": "W"},
                  {"type": "label", "label": 5},
                  {"type": "push", "label": "V", "value": 1, "enabled": 1},
                  7,
                  {"type": "push", "label": "Ok", "value": 5}])"
            << "root [push(Ok)=5]"
            << QStringList{"3|Unexpected value 'Push' of 'type' for root - ",
                           "3|value of 'checked' is not bool for root - ",
                           "3|JSON object does not contain 'label' for root - ",
                           "3|the value of 'value' (1) is not number for push(Z) at root - ",
                           "3|missing 'value' for push(W) at root - ",
                           "3|The value of 'label' is not string for root - ",
                           "3|value of 'enabled' is not bool for root - ",
                           "3|The item is not oject for root - "};
        QTest::newRow("one faulty entry spoils its cascade")
            << R"([{"type": "cascade", "label": "File", "items": [
                     {"type": "push", "label": "Ok", "value": 1},
                     {"type": "cascade", "label": "Sub", "items": {}}]}])"
            << QString()
            << QStringList{"3|the value of 'items' is not array for cascade(Sub) at root - cascade(File) - ",
                           "3|Empty menu returned by fn"};
        QTest::newRow("object") << "{}" << QString()
                                << QStringList{"3|the root of menu description, returned by fn, is not array"};
        QTest::newRow("empty") << "[]" << QString() << QStringList{"3|Empty menu returned by fn"};
        QTest::newRow("not JSON") << "[{\"type\": " << QString()
                                  << QStringList{"3|Failed to parse menu description returned by fn: "
                                                 "unterminated object"};
    }

    void menus()
    {
        QFETCH(QString, menu);
        QFETCH(QString, tree);
        QFETCH(QStringList, messages);
        LogCapture log;
        log.producer.setLogUserLogThreshold(1); // without the dump of the text
        const MappingVar map = answer(menu);
        const MenuDescription root(&log.producer, QStringLiteral("fn"), &map);
        QCOMPARE(root.isValid(), !tree.isEmpty());
        if (root.isValid()) {
            QCOMPARE(dump(root), tree);
            QCOMPARE(root.getMenuX(), 10);
            QCOMPARE(root.getMenuY(), 20);
            QCOMPARE(root.getItems().first()->getParent(), &root);
        }
        QCOMPARE(log.lines(), messages);
    }

    void badAnswers()
    {
        LogCapture log(MsgLoggerEnums::ShortFuncName);
        log.producer.setLogUserLogThreshold(1);
        const MenuDescription none(&log.producer, QStringLiteral("fn"), nullptr);
        const TextVar text("menu");
        const MenuDescription wrongType(&log.producer, QStringLiteral("fn"), &text);
        const MappingVar withoutY = answer(QStringLiteral("[{\"type\": \"separator\"}]"), false);
        const MenuDescription missingY(&log.producer, QStringLiteral("fn"), &withoutY);
        MappingVar textX = answer(QStringLiteral("[]"));
        textX.setAt(TextVar("menuX"), TextVar("10"));
        const MenuDescription badX(&log.producer, QStringLiteral("fn"), &textX);
        QVERIFY(!none.isValid() && !wrongType.isValid() && !missingY.isValid() && !badX.isValid());
        QCOMPARE(log.lines(),
                 QStringList({"3|MenuDescription: No return value from CTRL function fn",
                              "3|MenuDescription: The value returned by CTRL function fn is TEXT_VAR, expected "
                              "type is MAPPING_VAR",
                              "3|getMapValue: mapping returned by fn doesn't contain key 'menuY",
                              "3|getMapValue: value for 'menuX' key in mapping returned by fn has a type TEXT_VAR, "
                              "expected INTEGER_VAR"}));
    }
};

QTEST_GUILESS_MAIN(TestMenuDescription)
#include "tst_menudescription.moc"
