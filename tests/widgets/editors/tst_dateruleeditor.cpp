#include "ValueFilterDate.h"
#include "ValueFilterText.h"
#include "WEditFilterRuleDate.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QSignalSpy>
#include <QtTest>

namespace {

const auto kAlarm = Constants::ValueSourceAlarm;

void activate(QWidget *widget)
{
    widget->show();
    QApplication::setActiveWindow(widget);
    QVERIFY(QTest::qWaitForWindowActive(widget));
}

bool isTinted(const QWidget *widget)
{
    return widget->palette().color(QPalette::Base) != QApplication::palette(widget).color(QPalette::Base);
}

} // namespace

class TestDateRuleEditor : public QObject
{
    Q_OBJECT

private slots:
    void dateComparisons();
};

void TestDateRuleEditor::dateComparisons()
{
    WEditFilterRuleDate editor(WildcardConfig(), QStringLiteral("cameTime"), kAlarm,
                               QStringLiteral("dd.MM.yyyy HH:mm:ss"), nullptr);
    activate(&editor);
    auto *method = editor.findChild<QComboBox *>(QStringLiteral("cbCompMethod"));
    auto *first = editor.findChild<QDateTimeEdit *>(QStringLiteral("dtFirst"));
    auto *second = editor.findChild<QDateTimeEdit *>(QStringLiteral("dtSecond"));
    QCOMPARE(first->displayFormat(), QStringLiteral("dd.MM.yyyy HH:mm:ss"));
    QCOMPARE(method->currentText(), QStringLiteral("Select..."));
    QVERIFY(editor.getFilter(false).isNull());
    QVERIFY(!first->isEnabled() && !second->isEnabled());

    QSignalSpy changed(&editor, &WFilter::filterChanged);
    method->setFocus();
    QTest::keyClick(method, Qt::Key_Down);
    QTest::keyClick(method, Qt::Key_Down);
    QTest::keyClick(method, Qt::Key_Down);
    QCOMPARE(method->currentText(), QStringLiteral("Time between"));
    QCOMPARE(changed.count(), 3);
    QVERIFY(first->isEnabled() && second->isEnabled());

    const QDateTime start(QDate(2024, 3, 1), QTime(8, 0));
    const QDateTime end(QDate(2024, 3, 2), QTime(8, 0));
    first->setDateTime(start);
    second->setDateTime(end);
    auto range = editor.getFilter(false).dynamicCast<ValueFilterDate>();
    QVERIFY(range);
    QCOMPARE(range->getComparisonMethod(), int(ValueFilterDate::Between));
    QVERIFY(range->matches(QDateTime(QDate(2024, 3, 1), QTime(20, 0))));
    QVERIFY(!range->matches(QDateTime(QDate(2024, 3, 3), QTime(0, 0))));
    QVERIFY(!isTinted(second));

    // An end before the start: marked, and still a filter over the same range.
    second->setFocus();
    second->setSelectedSection(QDateTimeEdit::DaySection);
    QTest::keyClick(second, Qt::Key_Down);
    QCOMPARE(second->dateTime(), start);
    QVERIFY(!isTinted(second)); // an empty range is still in order
    second->setSelectedSection(QDateTimeEdit::HourSection);
    QTest::keyClick(second, Qt::Key_Down);
    QCOMPARE(second->dateTime(), start.addSecs(-3600));
    QVERIFY(isTinted(second));
    QCOMPARE(second->toolTip(), QStringLiteral("The end of the time range lies before its start"));
    range = editor.getFilter(false).dynamicCast<ValueFilterDate>();
    QVERIFY(range && range->matches(start.addSecs(-1800)));

    method->setFocus();
    QTest::keyClick(method, Qt::Key_Up);
    QVERIFY(!second->isEnabled());
    QVERIFY(!isTinted(second));
    const auto after = editor.getFilter(false).dynamicCast<ValueFilterDate>();
    QCOMPARE(after->getComparisonMethod(), int(ValueFilterDate::After));
    QCOMPARE(after->getSecondDate(), second->dateTime()); // passed although disabled

    // A saved comparison comes back as it was.
    WEditFilterRuleDate loadedEditor(WildcardConfig(), QStringLiteral("cameTime"), kAlarm,
                                     QStringLiteral("yyyy/MM/dd HH:mm"), nullptr);
    QString error;
    QVERIFY(loadedEditor.setFilter(after, false, error));
    QCOMPARE(loadedEditor.findChild<QComboBox *>(QStringLiteral("cbCompMethod"))->currentText(),
             QStringLiteral("Time after"));
    QVERIFY(loadedEditor.getFilter(false)->isEqual(*after));
    QVERIFY(!loadedEditor.setFilter(QSharedPointer<ValueFilterText>::create(WildcardConfig(), QStringLiteral("cameTime"),
                                                                           kAlarm, false),
                                    false, error));
}

QTEST_MAIN(TestDateRuleEditor)
#include "tst_dateruleeditor.moc"
