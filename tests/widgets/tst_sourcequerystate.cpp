#include "QueryStateDisplay.h"
#include "SourceStateStyle.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {

// Lets the test move the start of the measured query instead of waiting.
class TestableDisplay : public QueryStateDisplay
{
public:
    void startedSecondsAgo(qint64 seconds) { m_queryStart = QDateTime::currentDateTime().addSecs(-seconds); }
    QDateTime queryStart() const { return m_queryStart; }
};

QColor fillOf(const QLabel *label)
{
    return label->autoFillBackground() ? label->palette().color(QPalette::Window) : QColor();
}

} // namespace

class TestQueryStateDisplay : public QObject
{
    Q_OBJECT
private slots:
    void elapsedText_data();
    void elapsedText();
    void stateColors_data();
    void stateColors();
    void clockRunsAcrossMeasuredStates();
    void countsAndAbort();
};

void TestQueryStateDisplay::elapsedText_data()
{
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << qint64(0) << "00:00:00";
    QTest::newRow("one of each") << qint64(3661) << "01:01:01";
    QTest::newRow("past a day") << qint64(25 * 3600 + 59) << "25:00:59";
    QTest::newRow("100 hours") << qint64(100 * 3600) << "100:00:00";
    QTest::newRow("clock set back") << qint64(-5) << "00:00:00";
}

void TestQueryStateDisplay::elapsedText()
{
    QFETCH(qint64, seconds);
    QFETCH(QString, text);
    const QDateTime start(QDate(2024, 3, 1), QTime(10, 0), Qt::UTC);
    QCOMPARE(SourceStateStyle::elapsedText(start, start.addSecs(seconds)), text);
}

void TestQueryStateDisplay::stateColors_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QColor>("color");
    const QColor busy(255, 255, 192, 255);
    const QColor bad(255, 192, 192, 255);
    const QVector<QColor> expected{bad, QColor(), busy, busy, QColor(), busy, busy, QColor(), bad, QColor()};
    for (int state = 0; state < expected.size(); ++state)
        QTest::addRow("state %d", state) << state << expected.at(state);
}

void TestQueryStateDisplay::stateColors()
{
    QFETCH(int, state);
    QFETCH(QColor, color);
    const auto sourceState = Constants::SourceState(state);
    QCOMPARE(SourceStateStyle::findStateColor(sourceState), color);

    QueryStateDisplay display;
    display.displaySourceState(Constants::SourceState((state + 1) % 10)); // leave any previous colour behind
    display.displaySourceState(sourceState);
    auto *label = display.findChild<QLabel *>(QStringLiteral("labelState"));
    QCOMPARE(label->text(), Constants::getSourceStateVisibleName(sourceState));
    QCOMPARE(fillOf(label), color);
    QCOMPARE(display.findChild<QPushButton *>(QStringLiteral("pushButtonAbort"))->isEnabled(),
             SourceStateStyle::isMeasuredState(sourceState));
}

void TestQueryStateDisplay::clockRunsAcrossMeasuredStates()
{
    TestableDisplay display;
    auto *time = display.findChild<QLabel *>(QStringLiteral("labelTime"));
    display.show();
    display.displaySourceState(Constants::QueryStarting);
    QVERIFY(display.queryStart().isValid());
    display.startedSecondsAgo(3725);
    display.displaySourceState(Constants::QueryRunning); // same query: the clock keeps running
    display.stateTimerTick();
    QCOMPARE(time->text(), QStringLiteral("01:02:05"));

    display.hide();
    display.startedSecondsAgo(7200);
    display.stateTimerTick(); // not shown: not updated
    QCOMPARE(time->text(), QStringLiteral("01:02:05"));

    display.show();
    display.displaySourceState(Constants::QueryFinished);
    QVERIFY(!display.queryStart().isValid());
    display.stateTimerTick();
    QCOMPARE(time->text(), QStringLiteral("01:02:05")); // the time spent stays readable
}

void TestQueryStateDisplay::countsAndAbort()
{
    QueryStateDisplay display;
    display.displaySourceCounts(10, 3);
    QCOMPARE(display.findChild<QLabel *>(QStringLiteral("labelTotal"))->text(), QStringLiteral("10"));
    QCOMPARE(display.findChild<QLabel *>(QStringLiteral("labelMatching"))->text(), QStringLiteral("3"));

    QSignalSpy abort(&display, &QueryStateDisplay::abortQuery);
    display.displaySourceState(Constants::QueryRunning);
    QTest::mouseClick(display.findChild<QPushButton *>(QStringLiteral("pushButtonAbort")), Qt::LeftButton);
    QCOMPARE(abort.count(), 1);
}

QTEST_MAIN(TestQueryStateDisplay)
#include "tst_sourcequerystate.moc"
