#include "LogCapture.h"
#include "TimeRangeEditor.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

namespace {

QString typeKey(TimeRange::RangeType type)
{
    return QString::fromLatin1(QMetaEnum::fromType<TimeRange::RangeType>().valueToKey(type));
}

// An editor logging into a buffer, shown unless asked otherwise.
struct Fixture {
    LogCapture log;
    QScopedPointer<TimeRangeEditor> editor;
    QScopedPointer<QSignalSpy> changed;
    explicit Fixture(Qt::TimeSpec timeSpec = Qt::LocalTime, bool show = true)
        : editor(new TimeRangeEditor(TimeRange(&log.producer, timeSpec))),
          changed(new QSignalSpy(editor.data(), &TimeRangeEditor::changed))
    {
        if (show)
            editor->show();
    }
    template <typename T> T *child(const char *name) const { return editor->findChild<T *>(QLatin1String(name)); }
};

} // namespace

class TestTimeRangeEditor : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { qRegisterMetaType<TimeRange>(); }

    void customIntervalAloneEnablesStartAndEnd()
    {
        Fixture f;
        auto *combo = f.child<QComboBox>("comboBoxType");
        const QList<QWidget *> intervalWidgets{f.child<QWidget>("dateTimeEditStart"),
                                               f.child<QWidget>("dateTimeEditEnd"),
                                               f.child<QWidget>("pushButtonStartNow"),
                                               f.child<QWidget>("pushButtonEndNow")};
        const QMetaEnum types = QMetaEnum::fromType<TimeRange::RangeType>();
        QCOMPARE(combo->count(), types.keyCount());
        for (int i = 0; i < types.keyCount(); ++i) {
            const auto type = TimeRange::RangeType(types.value(i));
            emit combo->textActivated(typeKey(type)); // as if the operator picked it
            QCOMPARE(f.changed->count(), 1);
            QCOMPARE(f.changed->takeFirst().at(0).value<TimeRange>().getRangeType(), type);
            QCOMPARE(f.editor->getTimeRange().getRangeType(), type);
            for (QWidget *w : intervalWidgets)
                QVERIFY2(w->isEnabled() == (type == TimeRange::CustomInterval), qPrintable(w->objectName()));
        }
    }

    void countShownOnlyForTypesWithValueLabel()
    {
        Fixture f;
        auto *spin = f.child<QSpinBox>("spinBoxCount");
        f.editor->typeSelected(typeKey(TimeRange::LastDays));
        QVERIFY(!spin->isHidden());
        QCOMPARE(spin->suffix(), QStringLiteral(" days"));
        QCOMPARE(spin->value(), f.editor->getTimeRange().getValueCount());
        f.editor->typeSelected(typeKey(TimeRange::Today));
        QVERIFY(spin->isHidden());
        f.editor->typeSelected(typeKey(TimeRange::LastMinutes));
        QVERIFY(!spin->isHidden());
    }

    void badCallsChangeNothingAndAreLogged()
    {
        Fixture f;
        const TimeRange before = f.editor->getTimeRange();
        f.editor->typeSelected(QStringLiteral("Fortnight"));
        f.editor->nowButtonClicked(); // no sender
        QCOMPARE(f.changed->count(), 0);
        QCOMPARE(f.editor->getTimeRange(), before);
        QCOMPARE(f.log.lines().mid(f.log.lines().size() - 2),
                 (QStringList{QStringLiteral("3|conversion to enum value (RangeType) failed for string: Fortnight"),
                              QStringLiteral("2|nowButtonClicked() from unexpected source: NULL")}));
    }

    void redisplayWhileHiddenWaitsUntilForcedOrShown()
    {
        Fixture f(Qt::LocalTime, false);
        auto *start = f.child<QDateTimeEdit>("dateTimeEditStart");
        f.editor->typeSelected(typeKey(TimeRange::CustomInterval));
        QVERIFY(!start->isEnabled()); // hidden: not redisplayed
        f.editor->displayTimeRange(false);
        QVERIFY(!start->isEnabled());
        f.editor->displayTimeRange(true);
        QVERIFY(start->isEnabled());

        // A change while hidden is caught up when the pop-up opens.
        f.editor->typeSelected(typeKey(TimeRange::Today));
        QVERIFY(start->isEnabled());
        f.editor->show();
        QVERIFY(!start->isEnabled());
    }

    void nowButtons_data()
    {
        QTest::addColumn<int>("timeSpec");
        QTest::addColumn<bool>("startButton");
        QTest::newRow("start, local time") << int(Qt::LocalTime) << true;
        QTest::newRow("end, local time") << int(Qt::LocalTime) << false;
        QTest::newRow("start, UTC") << int(Qt::UTC) << true;
        QTest::newRow("end, UTC") << int(Qt::UTC) << false;
    }
    void nowButtons()
    {
        QFETCH(int, timeSpec);
        QFETCH(bool, startButton);
        Fixture f{Qt::TimeSpec(timeSpec)};
        f.editor->typeSelected(typeKey(TimeRange::CustomInterval));
        const TimeRange before = f.editor->getTimeRange();
        f.changed->clear();

        const QDateTime earliest = QDateTime::currentDateTime().addMSecs(-1);
        QTest::mouseClick(f.child<QPushButton>(startButton ? "pushButtonStartNow" : "pushButtonEndNow"),
                          Qt::LeftButton);
        const QDateTime latest = QDateTime::currentDateTime().addMSecs(1);

        QCOMPARE(f.changed->count(), 1);
        const TimeRange &range = f.editor->getTimeRange();
        const QDateTime set = startButton ? range.getStartTime() : range.getEndTime();
        const QDateTime untouched = startButton ? range.getEndTime() : range.getStartTime();
        QCOMPARE(untouched, startButton ? before.getEndTime() : before.getStartTime());
        QCOMPARE(set.timeSpec(), Qt::TimeSpec(timeSpec));
        QVERIFY(set >= earliest && set <= latest);

        auto *edit = f.child<QDateTimeEdit>(startButton ? "dateTimeEditStart" : "dateTimeEditEnd");
        QCOMPARE(edit->dateTime().toSecsSinceEpoch(), set.toSecsSinceEpoch());
        QCOMPARE(edit->dateTime().timeSpec(), Qt::TimeSpec(timeSpec));
    }

    void timeSpecShownAndApplied()
    {
        Fixture f;
        auto *zone = f.child<QLineEdit>("lineEditTimeZone");
        QCOMPARE(zone->text(), QStringLiteral("LocalTime"));
        f.editor->setTimeSpec(Qt::UTC);
        QCOMPARE(zone->text(), QStringLiteral("UTC"));
        QCOMPARE(f.editor->getTimeRange().getTimeSpec(), Qt::UTC);
        QCOMPARE(f.child<QDateTimeEdit>("dateTimeEditEnd")->timeSpec(), Qt::UTC);
    }
};

QTEST_MAIN(TestTimeRangeEditor)
#include "tst_timerangeeditor.moc"
