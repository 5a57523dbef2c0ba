#include "LogCapture.h"
#include "ValueFilterNumbers.h"
#include "ValueFilterText.h"
#include "WEditFilterRuleText.h"

#include <QAction>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTimer>
#include <QToolButton>
#include <QtTest>

namespace {

const QString kColumn = QStringLiteral("text");

// Pages instantiate the table through a subclass that supplies the case rule.
class RuleTable : public WEditFilterRuleText
{
public:
    explicit RuleTable(const WildcardConfig &config)
        : WEditFilterRuleText(config, kColumn, Constants::ValueSourceAlarm, nullptr)
    {
    }
    void setMatchCase(bool) override {}
};

} // namespace

class TestRuleTextEditor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void typedRulesBecomeTheFilter();
    void badRowsAreMarkedAndNeverDropped();
    void deleteRemovesExactlyTheSelectedRows();
    void moveKeepsEachRuleWhole();
    void loadedRulesKeepTheirMethod();

private:
    QTableWidget *table() const { return m_editor->findChild<QTableWidget *>(QStringLiteral("tableWidget")); }
    QPushButton *button(const char *name) const { return m_editor->findChild<QPushButton *>(QLatin1String(name)); }
    QToolButton *methodButton(int row) const { return qobject_cast<QToolButton *>(table()->cellWidget(row, 1)); }
    QPushButton *excludeButton(int row) const { return qobject_cast<QPushButton *>(table()->cellWidget(row, 2)); }
    QStringList patterns() const;
    // As the operator does it: double-click the pattern cell, type, press Return.
    void typePattern(int row, const QString &text);
    // Opens the row's method menu with a click and picks an entry with the keyboard.
    void chooseMethod(int row, const QString &entry);
    void clickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    QSharedPointer<ValueFilterText> textFilter() { return m_editor->getFilter(false).dynamicCast<ValueFilterText>(); }

    LogCapture *m_log = nullptr;
    RuleTable *m_editor = nullptr;
};

QStringList TestRuleTextEditor::patterns() const
{
    QStringList result;
    for (int row = 0; row < table()->rowCount(); ++row)
        result << table()->item(row, 0)->text();
    return result;
}

void TestRuleTextEditor::typePattern(int row, const QString &text)
{
    // A closed menu may leave the window inactive.
    QApplication::setActiveWindow(m_editor);
    QVERIFY(QTest::qWaitForWindowActive(m_editor));
    QWidget *viewport = table()->viewport();
    const QRect cell = table()->visualItemRect(table()->item(row, 0));
    QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, cell.center());
    QTest::mouseDClick(viewport, Qt::LeftButton, Qt::NoModifier, cell.center());
    QWidget *editor = QApplication::focusWidget();
    QVERIFY(editor && editor != table());
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        QTest::keyClick(editor, Qt::Key_Delete);
    else
        QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    // The delegate commits on the next turn of the event loop.
    QTRY_COMPARE(table()->item(row, 0)->text(), text);
}

void TestRuleTextEditor::chooseMethod(int row, const QString &entry)
{
    bool chosen = false;
    QTimer::singleShot(0, this, [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        for (QAction *action : menu->actions()) {
            if (action->text() == entry)
                menu->setActiveAction(action);
        }
        chosen = true;
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QTest::mouseClick(methodButton(row), Qt::LeftButton);
    QTRY_VERIFY(chosen);
}

void TestRuleTextEditor::clickRow(int row, Qt::KeyboardModifiers modifiers)
{
    const QRect cell = table()->visualItemRect(table()->item(row, 0));
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, modifiers, cell.center());
}

void TestRuleTextEditor::init()
{
    m_log = new LogCapture;
    m_editor = new RuleTable(WildcardConfig(&m_log->producer));
    m_editor->resize(420, 400);
    m_editor->show();
    QApplication::setActiveWindow(m_editor);
    QVERIFY(QTest::qWaitForWindowActive(m_editor));
}

void TestRuleTextEditor::cleanup()
{
    delete m_editor;
    delete m_log;
}

void TestRuleTextEditor::typedRulesBecomeTheFilter()
{
    QCOMPARE(table()->rowCount(), 0);
    QVERIFY(m_editor->getFilter(false).isNull());
    QVERIFY(!button("btnDel")->isEnabled());

    QSignalSpy changed(m_editor, &WFilter::filterChanged);
    QTest::mouseClick(button("btnAdd"), Qt::LeftButton);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(methodButton(0)->text(), QStringLiteral("W*"));
    QCOMPARE(excludeButton(0)->text(), QString(QChar(0x2260)));
    typePattern(0, QStringLiteral("Pump*"));
    QCOMPARE(changed.count(), 2);

    QTest::mouseClick(button("btnAdd"), Qt::LeftButton);
    typePattern(1, QStringLiteral("valve [0-9]+"));
    changed.clear();
    chooseMethod(1, QStringLiteral("Regular Expression"));
    QCOMPARE(methodButton(1)->text(), QStringLiteral("RE"));
    QCOMPARE(methodButton(1)->toolTip(), QStringLiteral("Regular Expression"));
    QCOMPARE(changed.count(), 0); // a method alone announces nothing
    QTest::mouseClick(excludeButton(1), Qt::LeftButton);
    QCOMPARE(changed.count(), 1);

    const auto filter = textFilter();
    QVERIFY(filter);
    QCOMPARE(filter->getValueId(), kColumn);
    QCOMPARE(filter->getItems(), (QList<ValueFilterTextItem>{{QStringLiteral("Pump*"), 1, false},
                                                            {QStringLiteral("valve [0-9]+"), 2, true}}));
    QVERIFY(filter->matches(QStringLiteral("Pump 3")));
    QVERIFY(!filter->matches(QStringLiteral("Pump valve 12")));
    QVERIFY(!filter->matches(QStringLiteral("Fan")));
    QVERIFY(m_editor->getFilter(true)->isMatchCase());
}

void TestRuleTextEditor::badRowsAreMarkedAndNeverDropped()
{
    QTest::mouseClick(button("btnAdd"), Qt::LeftButton);
    typePattern(0, QStringLiteral("ok"));
    QTest::mouseClick(button("btnAdd"), Qt::LeftButton);

    // A rule without a pattern: no filter at all, the row says why.
    m_log->clear();
    QVERIFY(m_editor->getFilter(false).isNull());
    QVERIFY(m_log->lines().contains(QStringLiteral("1|Cannot create filter, text field empty in row 1")));
    QCOMPARE(table()->item(1, 0)->toolTip(), QStringLiteral("This rule is not valid: The pattern is empty"));
    QVERIFY(table()->item(1, 0)->data(Qt::BackgroundRole).isValid());
    QVERIFY(!table()->item(0, 0)->data(Qt::BackgroundRole).isValid());

    // A wildcard that is no regular expression: marked as soon as the method changes.
    typePattern(1, QStringLiteral("alarm(1"));
    QVERIFY(!table()->item(1, 0)->data(Qt::BackgroundRole).isValid());
    chooseMethod(1, QStringLiteral("Regular Expression"));
    QVERIFY(table()->item(1, 0)->data(Qt::BackgroundRole).isValid());
    QVERIFY(table()->item(1, 0)->toolTip().startsWith(QStringLiteral("This rule is not valid: ")));
    m_log->clear();
    QVERIFY(m_editor->getFilter(false).isNull());
    QCOMPARE(m_log->lines().size(), 1);
    QVERIFY(m_log->lines().first().startsWith(QStringLiteral("2|Cannot create filter, rule refused in row 1: ")));
    QCOMPARE(patterns(), (QStringList{QStringLiteral("ok"), QStringLiteral("alarm(1")}));

    typePattern(1, QStringLiteral("alarm\\(1"));
    QCOMPARE(table()->item(1, 0)->toolTip(), QStringLiteral("Double-click to set filter pattern"));
    QVERIFY(!table()->item(1, 0)->data(Qt::BackgroundRole).isValid());
    QCOMPARE(textFilter()->getItems().size(), 2);
}

void TestRuleTextEditor::deleteRemovesExactlyTheSelectedRows()
{
    for (int row = 0; row < 5; ++row) {
        QTest::mouseClick(button("btnAdd"), Qt::LeftButton);
        typePattern(row, QStringLiteral("r%1").arg(row));
    }
    clickRow(1);
    QVERIFY(button("btnDel")->isEnabled());
    clickRow(3, Qt::ControlModifier);
    QCOMPARE(table()->selectedRanges().size(), 2);

    QSignalSpy changed(m_editor, &WFilter::filterChanged);
    QTest::mouseClick(button("btnDel"), Qt::LeftButton);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(patterns(), (QStringList{QStringLiteral("r0"), QStringLiteral("r2"), QStringLiteral("r4")}));
    QCOMPARE(textFilter()->getItems().size(), 3);
}

void TestRuleTextEditor::moveKeepsEachRuleWhole()
{
    for (int row = 0; row < 3; ++row) {
        QTest::mouseClick(button("btnAdd"), Qt::LeftButton);
        typePattern(row, QStringLiteral("r%1").arg(row));
    }
    chooseMethod(2, QStringLiteral("Exact Match"));
    QTest::mouseClick(excludeButton(2), Qt::LeftButton);
    clickRow(0);
    QVERIFY(!button("btnUp")->isEnabled());
    QVERIFY(button("btnDown")->isEnabled());

    clickRow(2);
    QVERIFY(button("btnUp")->isEnabled());
    QVERIFY(!button("btnDown")->isEnabled());
    QSignalSpy changed(m_editor, &WFilter::filterChanged);
    QTest::mouseClick(button("btnUp"), Qt::LeftButton);
    QTest::mouseClick(button("btnUp"), Qt::LeftButton);
    QCOMPARE(changed.count(), 2);
    QVERIFY(!button("btnUp")->isEnabled()); // the moved rule stays selected, now at the top
    QCOMPARE(patterns(), (QStringList{QStringLiteral("r2"), QStringLiteral("r0"), QStringLiteral("r1")}));
    QCOMPARE(methodButton(0)->text(), QStringLiteral("Ex"));
    QCOMPARE(methodButton(2)->text(), QStringLiteral("W*"));
    QCOMPARE(textFilter()->getItems(), (QList<ValueFilterTextItem>{{QStringLiteral("r2"), 0, true},
                                                                  {QStringLiteral("r0"), 1, false},
                                                                  {QStringLiteral("r1"), 1, false}}));

    // The menu follows the rule too.
    QVERIFY(methodButton(0)->menu()->actions().at(0)->isChecked());
    QVERIFY(methodButton(2)->menu()->actions().at(1)->isChecked());
    QTest::mouseClick(button("btnDown"), Qt::LeftButton);
    QCOMPARE(patterns(), (QStringList{QStringLiteral("r0"), QStringLiteral("r2"), QStringLiteral("r1")}));
    QCOMPARE(textFilter()->getItems().at(1), ValueFilterTextItem(QStringLiteral("r2"), 0, true));
}

void TestRuleTextEditor::loadedRulesKeepTheirMethod()
{
    ValueFilterText loaded(WildcardConfig(), kColumn, Constants::ValueSourceAlarm, false);
    QVERIFY(loaded.addItem(QStringLiteral("Exact text"), 0, false));
    QVERIFY(loaded.addItem(QStringLiteral("^x.*"), 2, true));
    QVERIFY(loaded.addItem(QStringLiteral("a?c"), 1, false));

    QTest::mouseClick(button("btnAdd"), Qt::LeftButton); // replaced by the load
    QSignalSpy changed(m_editor, &WFilter::filterChanged);
    QString error;
    QVERIFY(m_editor->setFilter(loaded.clone(), false, error));
    QCOMPARE(changed.count(), 3);
    QCOMPARE(patterns(), (QStringList{QStringLiteral("Exact text"), QStringLiteral("^x.*"), QStringLiteral("a?c")}));
    QCOMPARE(methodButton(0)->text(), QStringLiteral("W*"));
    QVERIFY(excludeButton(1)->isChecked());
    QVERIFY(textFilter()->isEqual(loaded));

    // Foreign filters leave the rows alone.
    ValueFilterText otherColumn(WildcardConfig(), QStringLiteral("other"), Constants::ValueSourceAlarm, false);
    QVERIFY(otherColumn.addItem(QStringLiteral("x"), 1, false));
    QVERIFY(!m_editor->setFilter(otherColumn.clone(), false, error));
    QCOMPARE(error, QStringLiteral("attempt to set filter for value 'other' to widget for column 'text'"));
    error.clear();
    auto numbers = QSharedPointer<ValueFilterNumbers>::create(WildcardConfig(), kColumn, Constants::ValueSourceAlarm, false);
    QVERIFY(!m_editor->setFilter(numbers, false, error));
    QVERIFY(!m_editor->setFilter({}, false, error));
    QCOMPARE(table()->rowCount(), 3);
}

QTEST_MAIN(TestRuleTextEditor)
#include "tst_ruletexteditor.moc"
