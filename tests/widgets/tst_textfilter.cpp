#include "WTextFilter.h"

#include <QToolButton>
#include <QSignalSpy>
#include <QtTest>

class TestTextFilter : public QObject
{
    Q_OBJECT
private slots:
    void clearButtonSignalsOnce()
    {
        WTextFilter edit;
        QVERIFY(!edit.isClearButtonEnabled());
        QSignalSpy cleared(&edit, SIGNAL(textCleared()));
        edit.enableClearButtonSignal();
        edit.enableClearButtonSignal();
        QVERIFY(edit.isClearButtonEnabled());
        edit.setText(QStringLiteral("abc"));
        // The button that the operator clicks carries the clear action.
        auto *button = edit.findChild<QToolButton *>();
        QVERIFY(button);
        button->click();
        QCOMPARE(cleared.count(), 1);
        QVERIFY(edit.text().isEmpty());
        // Typing is not clearing.
        QTest::keyClicks(&edit, QStringLiteral("x"));
        edit.clear();
        QCOMPARE(cleared.count(), 1);
    }
};

QTEST_MAIN(TestTextFilter)
#include "tst_textfilter.moc"
