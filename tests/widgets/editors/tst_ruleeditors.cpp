// The rule editors of single properties: dates, numbers and lists of values.
#include "LogCapture.h"
#include "ValueFilterDate.h"
#include "ValueFilterNumbers.h"
#include "ValueFilterSingleValue.h"
#include "ValueFilterText.h"
#include "WEditFilterRuleDate.h"
#include "WEditFilterRuleNumbers.h"
#include "WEditFilterRuleSingleValue.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QToolTip>
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

class TestRuleEditors : public QObject
{
    Q_OBJECT

private slots:
    void dateComparisons()
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

    void numberRulesAreExplainedWhileTyping()
    {
        auto *editor = new WEditFilterRuleNumbers(WildcardConfig(), QStringLiteral("priority"), kAlarm, nullptr);
        QScopedPointer<QWidget> owner(editor);
        activate(editor);
        auto *input = editor->findChild<QLineEdit *>(QStringLiteral("txtInput"));
        QCOMPARE(input->toolTip(), QStringLiteral("No rules set"));
        QVERIFY(editor->getFilter(false).isNull());

        QSignalSpy changed(editor, &WFilter::filterChanged);
        input->setFocus();
        QTest::keyClicks(input, QStringLiteral(">10; 5-7"));
        QCOMPARE(changed.count(), 8); // one per keystroke
        const QString understood = QStringLiteral("Filtering rules:\n  greater than 10\n  between 5 and 7");
        QCOMPARE(input->toolTip(), understood);
        QTRY_VERIFY(QToolTip::isVisible());
        QCOMPARE(QToolTip::text(), understood);
        QVERIFY(!isTinted(input));

        QTest::keyClicks(input, QStringLiteral(", 1x"));
        QCOMPARE(input->toolTip(), understood + QStringLiteral("\n\nWarning! Failed to parse:\n  1x"));
        QVERIFY(isTinted(input));
        QSharedPointer<ValueFilter> filter = editor->getFilter(false);
        QVERIFY(filter);
        owner.reset(); // the filter is a copy, not the widget
        QVERIFY(filter->matches(12));
        QVERIFY(filter->matches(6.5));
        QVERIFY(!filter->matches(8));
        QVERIFY(!filter->matches(QStringLiteral("none")));

        editor = new WEditFilterRuleNumbers(WildcardConfig(), QStringLiteral("priority"), kAlarm, nullptr);
        owner.reset(editor);
        activate(editor);
        input = editor->findChild<QLineEdit *>(QStringLiteral("txtInput"));
        input->setFocus();
        QTest::keyClicks(input, QStringLiteral(">>3"));
        QCOMPARE(input->toolTip(), QStringLiteral("Warning! Failed to parse:\n  >>3"));
        QVERIFY(editor->getFilter(false).isNull());
        QTest::keyClick(input, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(input, Qt::Key_Delete);
        QCOMPARE(input->toolTip(), QStringLiteral("No rules set"));
        QVERIFY(!isTinted(input));
    }

    void loadedNumberRulesAnnounceButStayQuiet()
    {
        WildcardConfig neverEmpty(nullptr, QLatin1Char('*'), QLatin1Char('~'));
        WEditFilterRuleNumbers editor(neverEmpty, QStringLiteral("priority"), kAlarm, nullptr);
        activate(&editor);
        auto *input = editor.findChild<QLineEdit *>(QStringLiteral("txtInput"));
        QCOMPARE(input->placeholderText(), QStringLiteral("*"));
        QToolTip::hideText();

        ValueFilterNumbers loaded(WildcardConfig(), QStringLiteral("priority"), kAlarm, false);
        QVERIFY(loaded.setFilterText(QStringLiteral("!>100; 1-2")));
        QSignalSpy changed(&editor, &WFilter::filterChanged);
        QString error;
        QVERIFY(editor.setFilter(loaded.clone(), false, error));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(input->text(), QStringLiteral("!>100; 1-2"));
        QCOMPARE(input->toolTip(), QStringLiteral("Filtering rules:\n  not greater than 100\n  between 1 and 2"));
        QVERIFY(!QToolTip::isVisible());
        QVERIFY(editor.getFilter(true)->isEqual(loaded));

        ValueFilterNumbers other(WildcardConfig(), QStringLiteral("priority"), Constants::ValueSourceDpConfig, false);
        QVERIFY(other.setFilterText(QStringLiteral("5")));
        QVERIFY(!editor.setFilter(other.clone(), false, error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(input->text(), QStringLiteral("!>100; 1-2"));
    }

    void singleValueFollowsCompletions()
    {
        WildcardConfig neverEmpty(nullptr, QLatin1Char('*'), QLatin1Char('~'));
        WEditFilterRuleSingleValue editor(neverEmpty, QStringLiteral("alertClass"), kAlarm, nullptr);
        activate(&editor);
        auto *list = editor.findChild<QComboBox *>(QStringLiteral("choiceList"));
        QCOMPARE(list->count(), 1);
        QVERIFY(editor.getFilter(false).isNull());

        editor.setCompletionStrings({QStringLiteral("Alarm"), QStringLiteral("Warning"), QStringLiteral("Info")});
        QCOMPARE(list->itemText(0), QStringLiteral("*"));
        QSignalSpy texts(&editor, &WFilter::filterTextChanged);
        QSignalSpy changed(&editor, &WFilter::filterChanged);
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Down);
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(texts.last(), (QVariantList{QStringLiteral("alertClass"), QStringLiteral("Warning")}));
        QCOMPARE(changed.count(), 2);
        auto filter = editor.getFilter(false);
        QVERIFY(filter->matches(QStringLiteral("warning")));
        QVERIFY(!filter->matches(QStringLiteral("Info")));
        QVERIFY(!editor.getFilter(true)->matches(QStringLiteral("warning")));

        editor.setCompletionStrings({QStringLiteral("Info"), QStringLiteral("Warning")});
        QCOMPARE(list->currentText(), QStringLiteral("Warning"));
        QCOMPARE(editor.getFilter(false).dynamicCast<ValueFilterSingleValue>()->getFilterValue(),
                 QVariant(QStringLiteral("Warning")));
        editor.setCompletionStrings({QStringLiteral("Info")});
        QCOMPARE(list->currentIndex(), 0);
        QVERIFY(editor.getFilter(false).isNull());
        QCOMPARE(texts.last(), (QVariantList{QStringLiteral("alertClass"), QString()}));

        // Texts without values: chosen, but nothing to filter by.
        WEditFilterRuleSingleValue textsOnly(WildcardConfig(), QStringLiteral("alertClass"), kAlarm,
                                             QStringList{QStringLiteral("A"), QStringLiteral("B")}, nullptr);
        auto *plainList = textsOnly.findChild<QComboBox *>(QStringLiteral("choiceList"));
        QCOMPARE(plainList->itemText(0), QString());
        plainList->setCurrentIndex(1);
        QVERIFY(textsOnly.getFilter(false).isNull());
    }

    void singleValueLoadKeepsUnknownValues()
    {
        LogCapture log;
        WEditFilterRuleSingleValue editor(WildcardConfig(&log.producer), QStringLiteral("priorityClass"), kAlarm,
                                          QList<QPair<QString, QVariant>>{{QStringLiteral("High"), 3},
                                                                          {QStringLiteral("Low"), 1}},
                                          nullptr);
        auto *list = editor.findChild<QComboBox *>(QStringLiteral("choiceList"));
        auto loaded = QSharedPointer<ValueFilterSingleValue>::create(WildcardConfig(), QStringLiteral("priorityClass"),
                                                                      kAlarm, false);
        loaded->setFilterValue(1);
        QString error;
        QVERIFY(editor.setFilter(loaded, false, error));
        QCOMPARE(list->currentText(), QStringLiteral("Low"));
        QVERIFY(editor.getFilter(false)->isEqual(*loaded));
        QVERIFY(log.lines().isEmpty());

        // Not offered (yet): logged, and kept as an item of its own rather than lost.
        loaded->setFilterValue(7);
        QVERIFY(editor.setFilter(loaded, false, error));
        QCOMPARE(log.lines(), QStringList{QStringLiteral("2|WEditFilterRuleSingleValue for 'priorityClass': filter "
                                                         "value not found priorityClass (source 0): value '7'")});
        QCOMPARE(list->currentText(), QStringLiteral("7"));
        QVERIFY(editor.getFilter(false)->isEqual(*loaded));
        QCOMPARE(list->count(), 4);

        loaded->setFilterValue(QVariant());
        QVERIFY(editor.setFilter(loaded, false, error));
        QCOMPARE(list->currentIndex(), 0);
        QCOMPARE(list->count(), 4);
    }
};

QTEST_MAIN(TestRuleEditors)
#include "tst_ruleeditors.moc"
