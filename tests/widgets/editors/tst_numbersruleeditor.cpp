#include "ValueFilterNumbers.h"
#include "WEditFilterRuleNumbers.h"

#include <QLineEdit>
#include <QSignalSpy>
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

class TestNumbersRuleEditor : public QObject
{
    Q_OBJECT

private slots:
    void numberRulesAreExplainedWhileTyping();
    void loadedNumberRulesAnnounceButStayQuiet();
};

void TestNumbersRuleEditor::numberRulesAreExplainedWhileTyping()
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

void TestNumbersRuleEditor::loadedNumberRulesAnnounceButStayQuiet()
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

QTEST_MAIN(TestNumbersRuleEditor)
#include "tst_numbersruleeditor.moc"
