#include "MsgLoggerModel.h"
#include "TimeRangeEditor.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QMetaEnum>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

namespace {

QVector<TimeRange::RangeType> allTypes()
{
    const QMetaEnum types = QMetaEnum::fromType<TimeRange::RangeType>();
    QVector<TimeRange::RangeType> result;
    for (int i = 0; i < types.keyCount(); ++i)
        result.append(static_cast<TimeRange::RangeType>(types.value(i)));
    return result;
}

QString typeKey(TimeRange::RangeType type)
{
    return QString::fromLatin1(QMetaEnum::fromType<TimeRange::RangeType>().valueToKey(type));
}

QString valueLabelOf(const TimeRange &base, TimeRange::RangeType type)
{
    TimeRange range(base);
    range.setRangeType(type);
    return range.getValueLabel();
}

// A type whose count is shown (or not) by the editor.
TimeRange::RangeType findType(const TimeRange &base, bool withValueLabel)
{
    for (TimeRange::RangeType type : allTypes()) {
        if (valueLabelOf(base, type).isEmpty() != withValueLabel && type != TimeRange::CustomInterval)
            return type;
    }
    return TimeRange::CustomInterval;
}

// An editor with its logger wired to a buffer, shown unless asked otherwise.
struct Fixture {
    QSharedPointer<MsgLoggerModel> log = QSharedPointer<MsgLoggerModel>::create();
    MsgLoggingProducer config;
    QScopedPointer<TimeRangeEditor> editor;
    explicit Fixture(Qt::TimeSpec timeSpec = Qt::LocalTime, bool show = true)
    {
        config.setLogThreshold(4);
        config.setLogUserLogThreshold(0);
        config.setLogFunc(0);
        config.setLogBuffer(log);
        editor.reset(new TimeRangeEditor(TimeRange(&config, timeSpec)));
        if (show)
            editor->show();
    }
    template <typename T> T *child(const char *name) const
    {
        return editor->findChild<T *>(QLatin1String(name));
    }
    QString lastLog() const
    {
        return log->data(log->index(log->rowCount() - 1, MsgLoggerModel::TextColumn)).toString();
    }
};

} // namespace

class TestTimeRangeEditor : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { qRegisterMetaType<TimeRange>(); }
    void customIntervalAloneEnablesStartAndEnd();
    void countShownOnlyForTypesWithValueLabel();
    void unknownTypeTextChangesNothing();
    void redisplayWhileHiddenWaitsUntilForcedOrShown();
    void nowButtons_data();
    void nowButtons();
    void nowWithoutButtonIsIgnored();
    void timeSpecShownAndApplied();
};

void TestTimeRangeEditor::customIntervalAloneEnablesStartAndEnd()
{
    Fixture f;
    auto *combo = f.child<QComboBox>("comboBoxType");
    QSignalSpy changed(f.editor.data(), &TimeRangeEditor::changed);
    const QList<QWidget *> intervalWidgets{f.child<QWidget>("dateTimeEditStart"), f.child<QWidget>("dateTimeEditEnd"),
                                           f.child<QWidget>("pushButtonStartNow"),
                                           f.child<QWidget>("pushButtonEndNow")};
    for (TimeRange::RangeType type : allTypes()) {
        emit combo->textActivated(typeKey(type)); // as if the operator picked it
        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.takeFirst().at(0).value<TimeRange>().getRangeType(), type);
        QCOMPARE(f.editor->getTimeRange().getRangeType(), type);
        for (QWidget *w : intervalWidgets)
            QVERIFY2(w->isEnabled() == (type == TimeRange::CustomInterval), qPrintable(w->objectName() + " " + typeKey(type)));
    }
}

void TestTimeRangeEditor::countShownOnlyForTypesWithValueLabel()
{
    Fixture f;
    auto *spin = f.child<QSpinBox>("spinBoxCount");
    const TimeRange::RangeType counted = findType(f.editor->getTimeRange(), true);
    const TimeRange::RangeType uncounted = findType(f.editor->getTimeRange(), false);
    QVERIFY(!valueLabelOf(f.editor->getTimeRange(), counted).isEmpty());
    QVERIFY(valueLabelOf(f.editor->getTimeRange(), uncounted).isEmpty());

    f.editor->typeSelected(typeKey(counted));
    QVERIFY(!spin->isHidden());
    QCOMPARE(spin->suffix(), valueLabelOf(f.editor->getTimeRange(), counted));
    QCOMPARE(spin->value(), f.editor->getTimeRange().getValueCount());

    f.editor->typeSelected(typeKey(uncounted));
    QVERIFY(spin->isHidden());

    f.editor->typeSelected(typeKey(counted));
    QVERIFY(!spin->isHidden());
}

void TestTimeRangeEditor::unknownTypeTextChangesNothing()
{
    Fixture f;
    const TimeRange::RangeType before = f.editor->getTimeRange().getRangeType();
    QSignalSpy changed(f.editor.data(), &TimeRangeEditor::changed);
    f.editor->typeSelected(QStringLiteral("Fortnight"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(f.editor->getTimeRange().getRangeType(), before);
    QCOMPARE(f.lastLog(), QStringLiteral("conversion to enum value (RangeType) failed for string: Fortnight"));
}

void TestTimeRangeEditor::redisplayWhileHiddenWaitsUntilForcedOrShown()
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
    f.editor->typeSelected(typeKey(findType(f.editor->getTimeRange(), false)));
    QVERIFY(start->isEnabled());
    f.editor->show();
    QVERIFY(!start->isEnabled());
}

void TestTimeRangeEditor::nowButtons_data()
{
    QTest::addColumn<int>("timeSpec");
    QTest::addColumn<bool>("startButton");
    QTest::newRow("start, local time") << int(Qt::LocalTime) << true;
    QTest::newRow("end, local time") << int(Qt::LocalTime) << false;
    QTest::newRow("start, UTC") << int(Qt::UTC) << true;
    QTest::newRow("end, UTC") << int(Qt::UTC) << false;
}

void TestTimeRangeEditor::nowButtons()
{
    QFETCH(int, timeSpec);
    QFETCH(bool, startButton);
    Fixture f{Qt::TimeSpec(timeSpec)};
    f.editor->typeSelected(typeKey(TimeRange::CustomInterval));
    const TimeRange before = f.editor->getTimeRange();
    QSignalSpy changed(f.editor.data(), &TimeRangeEditor::changed);

    const QDateTime earliest = QDateTime::currentDateTime().addMSecs(-1);
    QTest::mouseClick(f.child<QPushButton>(startButton ? "pushButtonStartNow" : "pushButtonEndNow"),
                      Qt::LeftButton);
    const QDateTime latest = QDateTime::currentDateTime().addMSecs(1);

    QCOMPARE(changed.count(), 1);
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

void TestTimeRangeEditor::nowWithoutButtonIsIgnored()
{
    Fixture f;
    const TimeRange before = f.editor->getTimeRange();
    QSignalSpy changed(f.editor.data(), &TimeRangeEditor::changed);
    f.editor->nowButtonClicked();
    QCOMPARE(changed.count(), 0);
    QCOMPARE(f.editor->getTimeRange().getStartTime(), before.getStartTime());
    QCOMPARE(f.lastLog(), QStringLiteral("nowButtonClicked() from unexpected source: NULL"));
}

void TestTimeRangeEditor::timeSpecShownAndApplied()
{
    Fixture f;
    auto *zone = f.child<QLineEdit>("lineEditTimeZone");
    QCOMPARE(zone->text(), QStringLiteral("LocalTime"));
    QVERIFY(zone->isReadOnly());
    f.editor->setTimeSpec(Qt::UTC);
    QCOMPARE(zone->text(), QStringLiteral("UTC"));
    QCOMPARE(f.editor->getTimeRange().getTimeSpec(), Qt::UTC);
    QCOMPARE(f.child<QDateTimeEdit>("dateTimeEditEnd")->timeSpec(), Qt::UTC);
}

QTEST_MAIN(TestTimeRangeEditor)
#include "tst_timerangeeditor.moc"
