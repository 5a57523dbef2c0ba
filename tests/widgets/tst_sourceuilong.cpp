#include "AlarmScreenConfiguration.h"
#include "EwoActions.h"
#include "LogCapture.h"
#include "QueryStateDisplay.h"
#include "SourceAndFilter.h"
#include "SourceUiLong.h"
#include "SysOracleArchive.h"
#include "SystemSelectionModel.h"
#include "SystemSelectionTable.h"
#include "TimeRangeEditor.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

namespace {

const QStringList Systems{"Dist1", "Dist2", "Plant_A", "Plant_B", "Sys10"};

// Lets the test move the start of the measured query instead of waiting.
template <typename Display> class Testable : public Display
{
public:
    using Display::Display;
    void startedSecondsAgo(qint64 seconds) { this->m_queryStart = QDateTime::currentDateTime().addSecs(-seconds); }
    QDateTime queryStart() const { return this->m_queryStart; }
};
using TestableSource = Testable<SourceUiLong>;
using TestableDisplay = Testable<QueryStateDisplay>; // the pop-up variant of the state display

struct Fixture {
    LogCapture log;
    AlarmScreenConfiguration config{&log.producer};
    QScopedPointer<TestableSource> source;
    QScopedPointer<QSignalSpy> changed;
    Fixture()
    {
        SysOracleArchive::getInstance()->setSystems(Systems);
        source.reset(new TestableSource(config));
        source->show();
        changed.reset(new QSignalSpy(source.data(), &SourceUi::changed));
    }
    template <typename T> T *child(const char *name) const { return source->findChild<T *>(QLatin1String(name)); }
    bool shown(const char *name) const { return !child<QWidget>(name)->isHidden(); }
    QString text(const char *name) const { return child<QLabel>(name)->text(); }
    void activateMode(int index) const
    {
        auto *combo = child<QComboBox>("comboBoxMode");
        combo->setCurrentIndex(index);
        emit combo->activated(index); // as the operator's choice does
    }
    SourceAndFilter filter() const
    {
        SourceAndFilter result(&config);
        source->addToFilter(result);
        return result;
    }
    void tickAfter(qint64 seconds) const
    {
        source->startedSecondsAgo(seconds);
        source->stateTimerTick();
    }
};

QColor fillOf(const QLabel *label)
{
    return label->autoFillBackground() ? label->palette().color(QPalette::Window) : QColor();
}

} // namespace

class TestSourceUiLong : public QObject
{
    Q_OBJECT
private slots:
    void modeSwitching()
    {
        Fixture f;
        QCOMPARE(f.filter().getSourceMode(), Constants::SourceModeLive);
        QVERIFY(!f.shown("pushButtonTimeRange"));
        QVERIFY(!f.shown("pushButtonSystems"));

        f.activateMode(1);
        f.activateMode(1);
        QCOMPARE(f.changed->count(), 1);
        QCOMPARE(f.filter().getSourceMode(), Constants::SourceModeHistory);
        QVERIFY(f.shown("pushButtonTimeRange"));
        QVERIFY(f.shown("pushButtonSystems"));

        f.activateMode(0);
        QCOMPARE(f.changed->count(), 2);
        QCOMPARE(f.filter().getSourceMode(), Constants::SourceModeLive);
        QVERIFY(!f.shown("pushButtonSystems"));

        f.source->sourceModeIndexActivated(7);
        QCOMPARE(f.changed->count(), 2);
        QCOMPARE(f.log.lines().last(), QStringLiteral("2|unexpected combo box index for new mode: 7"));
        QCOMPARE(f.filter().getSourceMode(), Constants::SourceModeLive);
    }

    void historyStartsFromConnectedSystems()
    {
        Fixture f;
        f.source->connectedSystemsChanged({"Dist2", "Sys10"});
        f.activateMode(1);
        QCOMPARE(f.filter().getSystems(), (QStringList{"Dist2", "Sys10"}));

        // The operator's own choice survives the next switch to history.
        f.activateMode(0);
        SystemSelectionModel *model = f.source->getSystemSelectionTable()->getModel();
        QVERIFY(model->setData(model->index(0, 0), Qt::Checked, Qt::CheckStateRole));
        f.activateMode(1);
        QCOMPARE(f.filter().getSystems(), (QStringList{"Dist2", "Sys10", "Dist1"}));
    }

    void prepareArchiveMode_data()
    {
        QTest::addColumn<int>("timeSpec");
        QTest::addColumn<QStringList>("systems");
        QTest::addColumn<QStringList>("expectedSystems"); // empty: refused, nothing changes
        QTest::newRow("local time, chosen systems") << int(Qt::LocalTime) << QStringList{"Plant_B", "Dist1"}
                                                    << QStringList{"Plant_B", "Dist1"};
        QTest::newRow("UTC, chosen systems") << int(Qt::UTC) << QStringList{"Sys10"} << QStringList{"Sys10"};
        QTest::newRow("no systems: connected ones") << int(Qt::LocalTime) << QStringList() << QStringList{"Dist2"};
        QTest::newRow("unknown system") << int(Qt::LocalTime) << QStringList{"Dist1", "Atlantis"} << QStringList();
    }
    void prepareArchiveMode()
    {
        QFETCH(int, timeSpec);
        QFETCH(QStringList, systems);
        QFETCH(QStringList, expectedSystems);
        Fixture f;
        f.source->connectedSystemsChanged({"Dist2"});
        f.source->setTimeSpec(Qt::TimeSpec(timeSpec));
        const QDateTime start(QDate(2024, 3, 1), QTime(8, 0, 0, 500), Qt::UTC);
        const QDateTime end = start.addSecs(7200);

        if (expectedSystems.isEmpty()) {
            const TimeRange before = f.filter().getTimeRange();
            QCOMPARE(f.source->prepareArchiveMode(start, end, systems), QStringLiteral("Unknwon system name: Atlantis"));
            QCOMPARE(f.changed->count(), 0);
            QCOMPARE(f.child<QComboBox>("comboBoxMode")->currentIndex(), 0);
            QCOMPARE(f.filter().getSourceMode(), Constants::SourceModeLive);
            QCOMPARE(f.source->getSystemSelectionTable()->getSelectedSystems(), QStringList());
            QCOMPARE(f.filter().getTimeRange(), before);
            return;
        }
        QCOMPARE(f.source->prepareArchiveMode(start, end, systems), QString());
        QVERIFY(!f.changed->isEmpty()); // the systems chosen and the mode each announce a change
        f.changed->clear();
        QCOMPARE(f.child<QComboBox>("comboBoxMode")->currentIndex(), 1);
        const SourceAndFilter filter = f.filter();
        QCOMPARE(filter.getSourceMode(), Constants::SourceModeHistory);
        QCOMPARE(filter.getSystems(), expectedSystems);
        const TimeRange &range = filter.getTimeRange();
        QCOMPARE(range.getRangeType(), TimeRange::CustomInterval);
        QCOMPARE(range.getStartTime().toSecsSinceEpoch(), start.toSecsSinceEpoch());
        QCOMPARE(range.getEndTime().toSecsSinceEpoch(), end.toSecsSinceEpoch());
        QCOMPARE(range.getTimeSpec(), Qt::TimeSpec(timeSpec));
        QCOMPARE(f.child<QPushButton>("pushButtonTimeRange")->text(), range.getDescription());
        // The pop-up edits the requested range, not the one it was built with.
        QCOMPARE(f.source->getTimeRangeEditor()->getTimeRange(), range);

        f.source->prepareOnlineMode();
        QCOMPARE(f.changed->count(), 1);
        QCOMPARE(f.child<QComboBox>("comboBoxMode")->currentIndex(), 0);
        QCOMPARE(f.filter().getSourceMode(), Constants::SourceModeLive);
    }

    void addToFilterResetsSelectionKind()
    {
        Fixture f;
        QCOMPARE(f.source->getSystemSelectionTable()->setSelectedSystems({"Plant_A"}), QString());
        SourceAndFilter filter(&f.config);
        filter.setSelectionKind(SourceAndFilter::SelectByDpNames);
        filter.setSystems({"Elsewhere"});
        filter.setSourceMode(Constants::SourceModeHistory);
        f.source->addToFilter(filter);
        QCOMPARE(filter.getSelectionKind(), int(SourceAndFilter::SelectBySystems));
        QCOMPARE(filter.getSystems(), QStringList{"Plant_A"});
        QCOMPARE(filter.getSourceMode(), Constants::SourceModeLive);
    }

    void stateTable_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("abortShown");
        QTest::addColumn<bool>("labelsShown");
        QTest::addColumn<QColor>("color");
        const QColor busy(255, 255, 192, 255);
        const QColor bad(255, 192, 192, 255);
        QTest::newRow("0 disconnected") << 0 << false << false << bad;
        QTest::newRow("1 no query") << 1 << false << false << QColor();
        QTest::newRow("2") << 2 << false << false << busy;
        QTest::newRow("3") << 3 << false << false << busy;
        QTest::newRow("4 live") << 4 << false << false << QColor();
        QTest::newRow("5 starting") << 5 << true << true << busy;
        QTest::newRow("6 running") << 6 << true << true << busy;
        QTest::newRow("7 finished") << 7 << false << true << QColor();
        QTest::newRow("8 failed") << 8 << false << true << bad;
        QTest::newRow("9 aborted") << 9 << false << true << QColor();
    }
    void stateTable()
    {
        QFETCH(int, state);
        QFETCH(bool, abortShown);
        QFETCH(bool, labelsShown);
        QFETCH(QColor, color);
        Fixture f;
        // Come from the opposite corner of the table so that every property changes.
        f.source->displaySourceState(state >= 5 ? Constants::SourceDisconnected : Constants::QueryRunning);
        f.source->displaySourceState(Constants::SourceState(state));
        for (const char *abort : {"pushButtonAbort", "lineAbort"})
            QCOMPARE(f.shown(abort), abortShown);
        for (const char *label : {"labelState", "labelTime", "labelCounts"})
            QCOMPARE(f.shown(label), labelsShown);
        QCOMPARE(f.text("labelState"), Constants::getSourceStateVisibleName(Constants::SourceState(state)));
        QCOMPARE(fillOf(f.child<QLabel>("labelState")), color);
        QCOMPARE(f.source->queryStart().isValid(), state == 5 || state == 6);
    }

    void clockAndCounts()
    {
        Fixture f;
        f.source->displaySourceState(Constants::QueryStarting);
        f.source->startedSecondsAgo(3725);
        const QDateTime firstStart = f.source->queryStart();
        f.source->displaySourceState(Constants::QueryRunning); // same query: the clock keeps running
        QCOMPARE(f.source->queryStart(), firstStart);
        f.source->stateTimerTick();
        QCOMPARE(f.text("labelTime"), QStringLiteral("01:02:05"));

        f.source->displaySourceState(Constants::QueryFinished);
        QVERIFY(!f.source->queryStart().isValid());
        f.source->stateTimerTick();
        QCOMPARE(f.text("labelTime"), QStringLiteral("01:02:05")); // the time spent stays readable

        f.source->displaySourceState(Constants::QueryStarting); // a new query measures afresh
        f.source->stateTimerTick();
        QCOMPARE(f.text("labelTime"), QStringLiteral("00:00:00"));
        // Hours are not limited to two digits.
        f.tickAfter(100 * 3600);
        QCOMPARE(f.text("labelTime"), QStringLiteral("100:00:00"));
        f.tickAfter(99 * 3600 + 59 * 60 + 59);
        QCOMPARE(f.text("labelTime"), QStringLiteral("99:59:59"));

        f.source->displaySourceCounts(10, 3);
        QCOMPARE(f.text("labelCounts"), QStringLiteral("Matching: 3 / Total read: 10"));
    }

    void startsWithTheQueryStripAndApplyShown()
    {
        Fixture f;
        for (const char *hidden : {"pushButtonAbort", "lineAbort", "labelModified"})
            QVERIFY2(!f.shown(hidden), hidden);
        for (const char *shown : {"labelState", "labelTime", "labelCounts", "pushButtonApply"})
            QVERIFY2(f.shown(shown), shown);
        QCOMPARE(f.text("labelState"), QStringLiteral("NoQuery"));
        // Whether the owner lets the operator apply is its own call to make.
        QVERIFY(!f.source->mayApplySettings());
    }

    void filterModifiedNeedsMayApply()
    {
        Fixture f;
        f.source->displayFilterModified(false);
        QVERIFY(!f.shown("labelModified"));

        f.source->setMayApplySettings(false);
        QVERIFY(!f.shown("pushButtonApply"));
        f.source->setMayApplySettings(true);
        QVERIFY(f.shown("pushButtonApply"));
        f.source->displayFilterModified(false);
        QVERIFY(f.shown("labelModified"));
        f.source->displayFilterModified(true);
        QVERIFY(!f.shown("labelModified"));

        f.source->displayFilterModified(false);
        f.source->setMayApplySettings(false);
        QVERIFY(!f.shown("pushButtonApply"));
        f.source->displayFilterModified(true); // no longer listened to
        QVERIFY(f.shown("labelModified"));
    }

    void popupsAndTheirSummaries()
    {
        Fixture f;
        f.activateMode(1);
        f.changed->clear();
        auto *systemsButton = f.child<QPushButton>("pushButtonSystems");
        QTest::mouseClick(systemsButton, Qt::LeftButton);
        QVERIFY(f.source->getSystemSelectionTable()->isVisible());
        QTest::mouseClick(systemsButton, Qt::LeftButton);
        QVERIFY(!f.source->getSystemSelectionTable()->isVisible());
        QTest::mouseClick(f.child<QPushButton>("pushButtonTimeRange"), Qt::LeftButton);
        QVERIFY(f.source->getTimeRangeEditor()->isVisible());
        QVERIFY(!f.source->getSystemSelectionTable()->isVisible());
        f.source->sourceButtonClicked(); // no sender
        QCOMPARE(f.log.lines().last(), QStringLiteral("3|click signal from unexpected button"));

        QCOMPARE(systemsButton->text(), QStringLiteral("Systems 0 / 5"));
        QCOMPARE(f.source->getSystemSelectionTable()->setSelectedSystems({"Dist1", "Sys10"}), QString());
        QCOMPARE(systemsButton->text(), QStringLiteral("Systems 2 / 5"));
        QCOMPARE(f.changed->count(), 1);
        f.source->getTimeRangeEditor()->typeSelected(QStringLiteral("Today"));
        QCOMPARE(f.changed->count(), 2);
        QCOMPARE(f.child<QPushButton>("pushButtonTimeRange")->text(), f.filter().getTimeRange().getDescription());
    }

    void actionRights()
    {
        Fixture f;
        f.source->setActionState(EwoActions::SourceControl, ActionAccess::Hidden);
        QVERIFY(f.source->isHidden());
        f.source->setActionState(EwoActions::SourceControl, ActionAccess::Enabled);
        QVERIFY(!f.source->isHidden());
    }

    void popupDisplayClock()
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

    void popupDisplayCountsAndAbort()
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
};

QTEST_MAIN(TestSourceUiLong)
#include "tst_sourceuilong.moc"
