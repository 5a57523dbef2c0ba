#include "QueryStateDisplay.h"

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

} // namespace

class TestQueryStateDisplay : public QObject
{
    Q_OBJECT
private slots:
    void clockRunsAcrossMeasuredStates();
    void countsAndAbort();
};

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

    auto *abortButton = display.findChild<QPushButton *>(QStringLiteral("pushButtonAbort"));
    QVERIFY(!abortButton->isEnabled()); // nothing to abort yet
    QSignalSpy abort(&display, &QueryStateDisplay::abortQuery);
    display.displaySourceState(Constants::QueryRunning);
    QTest::mouseClick(abortButton, Qt::LeftButton);
    QCOMPARE(abort.count(), 1);
    display.displaySourceState(Constants::QueryAborted);
    QVERIFY(!abortButton->isEnabled());
}

QTEST_MAIN(TestQueryStateDisplay)
#include "tst_sourcequerystate.moc"
