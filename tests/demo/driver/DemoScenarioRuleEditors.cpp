// The rule editors of the structured filter, driven in the running demo: a
// number rule on the priority, the alarm class from its list, a table of text
// rules and a time comparison, each applied in turn, then saved, cleared and
// loaded back.
#include "DemoScenario.h"

#include "AlarmInstance.h"
#include "AlarmsProxyModel.h"
#include "SingleFilterTab.h"
#include "SourceAndFiltersUi.h"
#include "TabbedStructuredFilterUi.h"
#include "WEditFilterRuleDate.h"
#include "WEditFilterRuleNumbers.h"
#include "WEditFilterRuleSingleValue.h"
#include "WEditFilterRuleText.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStandardPaths>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

#include <algorithm>
#include <functional>

namespace {

using RowTest = std::function<bool(const AlarmInstance::Data &)>;

// Whether the table shows rows and every one passes `test`.
bool allRowsPass(const QTreeView *table, const RowTest &test)
{
    const auto *proxy = qobject_cast<const AlarmsProxyModel *>(table->model());
    if (!proxy || proxy->rowCount() == 0)
        return false;
    for (int row = 0; row < proxy->rowCount(); ++row) {
        const QSharedPointer<AlarmInstance> alarm = proxy->getAlarmAtRow(proxy->index(row, 1));
        if (!alarm || !test(alarm->getData()))
            return false;
    }
    return true;
}

QList<qint64> shownTimes(const QTreeView *table)
{
    QList<qint64> times;
    const auto *proxy = qobject_cast<const AlarmsProxyModel *>(table->model());
    for (int row = 0; proxy && row < proxy->rowCount(); ++row) {
        if (const QSharedPointer<AlarmInstance> alarm = proxy->getAlarmAtRow(proxy->index(row, 1)))
            times << alarm->getData().timeMs;
    }
    return times;
}

template<class T>
T *editorOf(const TabbedStructuredFilterUi *tabs, const char *property)
{
    const QList<SingleFilterTab *> all = tabs->getFilterTabs();
    return all.isEmpty() ? nullptr : all.first()->findChild<T *>(QLatin1String(property) + QStringLiteral("Filter"));
}

void typeIntoRuleCell(QTableWidget *table, int row, const QString &text)
{
    const QRect cell = table->visualItemRect(table->item(row, 0));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QWidget *editor = QApplication::focusWidget();
    QVERIFY(editor && editor != table);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(table->item(row, 0)->text(), text);
}

// Picks an entry of the Filter menu beside the tabs, from the menu's own loop.
void answerFilterMenu(QObject *context, const QString &entry, bool &answered)
{
    QTimer::singleShot(10, context, [context, entry, &answered] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return answerFilterMenu(context, entry, answered);
        for (QAction *action : menu->actions()) {
            if (action->text() == entry)
                menu->setActiveAction(action);
        }
        answered = true;
        QTest::keyClick(menu, Qt::Key_Return);
    });
}

} // namespace

void DemoScenario::ruleEditorsFilterTheTable()
{
    if (m_modeCombo->currentText() != QLatin1String("Live"))
        QTest::keyClick(m_modeCombo, Qt::Key_Up);
    QCOMPARE(m_modeCombo->currentText(), QStringLiteral("Live"));
    applySource();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window));

    auto *tabs = qobject_cast<TabbedStructuredFilterUi *>(m_panel->getStructuredFilterUi());
    QVERIFY2(tabs, "the panel has no tabbed structured filter");
    QVERIFY(tabs->filterTabCount() >= 1);
    tabs->getTabWidget()->setCurrentWidget(tabs->getFilterTabs().first());
    const auto apply = [tabs] { QTest::mouseClick(tabs->getApplyButton(), Qt::LeftButton); };

    // Priority: a number rule typed into its line.
    auto *priority = editorOf<WEditFilterRuleNumbers>(tabs, "priority");
    QVERIFY2(priority, "no number rule editor for the priority");
    auto *priorityLine = priority->findChild<QLineEdit *>(QStringLiteral("txtInput"));
    QTest::mouseClick(priorityLine, Qt::LeftButton);
    QTest::keyClicks(priorityLine, QStringLiteral(">50"));
    QCOMPARE(priorityLine->toolTip(), QStringLiteral("Filtering rules:\n  greater than 50"));
    apply();
    const RowTest byPriority = [](const AlarmInstance::Data &d) { return d.priority > 50; };
    QTRY_VERIFY_WITH_TIMEOUT(allRowsPass(m_table, byPriority), 15000);

    // Alarm class: one of the classes the completion function lists.
    auto *alarmClass = editorOf<WEditFilterRuleSingleValue>(tabs, "alarmClass");
    QVERIFY2(alarmClass, "no single value editor for the alarm class");
    auto *classList = alarmClass->findChild<QComboBox *>(QStringLiteral("choiceList"));
    QTRY_VERIFY_WITH_TIMEOUT(classList->findText(QStringLiteral("alert")) > 0, 10000);
    classList->setFocus();
    for (int i = 0; i < classList->count() && classList->currentText() != QLatin1String("alert"); ++i)
        QTest::keyClick(classList, Qt::Key_Down);
    QCOMPARE(classList->currentText(), QStringLiteral("alert"));
    apply();
    const RowTest byClass = [byPriority](const AlarmInstance::Data &d) {
        return byPriority(d) && d.alarmClass == QLatin1String("alert");
    };
    QTRY_VERIFY_WITH_TIMEOUT(allRowsPass(m_table, byClass), 15000);

    // Alarm text: include what starts with P, exclude what ends in "low".
    auto *text = editorOf<WEditFilterRuleText>(tabs, "text");
    QVERIFY2(text, "no rule table for the alarm text");
    auto *rules = text->findChild<QTableWidget *>(QStringLiteral("tableWidget"));
    auto *add = text->findChild<QPushButton *>(QStringLiteral("btnAdd"));
    QTest::mouseClick(add, Qt::LeftButton);
    typeIntoRuleCell(rules, 0, QStringLiteral("P*"));
    QTest::mouseClick(add, Qt::LeftButton);
    typeIntoRuleCell(rules, 1, QStringLiteral("low$"));
    auto *method = qobject_cast<QToolButton *>(rules->cellWidget(1, 1));
    QVERIFY(method && method->menu());
    method->menu()->actions().at(2)->trigger(); // "Regular Expression"
    QCOMPARE(method->text(), QStringLiteral("RE"));
    QTest::mouseClick(qobject_cast<QPushButton *>(rules->cellWidget(1, 2)), Qt::LeftButton);
    apply();
    const RowTest byText = [byClass](const AlarmInstance::Data &d) {
        return byClass(d) && d.alarmText.startsWith(QLatin1Char('P')) && !d.alarmText.endsWith(QLatin1String("low"));
    };
    QTRY_VERIFY_WITH_TIMEOUT(allRowsPass(m_table, byText), 20000);

    // Came time: after the middle of what is shown now.
    QList<qint64> times = shownTimes(m_table);
    QVERIFY(!times.isEmpty());
    std::sort(times.begin(), times.end());
    const QDateTime after = QDateTime::fromMSecsSinceEpoch(times.at(times.size() / 2) / 1000 * 1000);
    auto *time = editorOf<WEditFilterRuleDate>(tabs, "time");
    QVERIFY2(time, "no date editor for the came time");
    auto *comparison = time->findChild<QComboBox *>(QStringLiteral("cbCompMethod"));
    comparison->setFocus();
    QTest::keyClick(comparison, Qt::Key_Down);
    QTest::keyClick(comparison, Qt::Key_Down);
    QCOMPARE(comparison->currentText(), QStringLiteral("Time after"));
    time->findChild<QDateTimeEdit *>(QStringLiteral("dtFirst"))->setDateTime(after);
    apply();
    const qint64 afterMs = after.toMSecsSinceEpoch();
    const RowTest byTime = [byText, afterMs](const AlarmInstance::Data &d) { return byText(d) && d.timeMs > afterMs; };
    QTRY_VERIFY_WITH_TIMEOUT(allRowsPass(m_table, byTime), 30000);

    // Saved, cleared (every row is back), loaded: the four rules return.
    const QString file = QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation))
                             .filePath(QStringLiteral("demo-rules-%1.json").arg(QCoreApplication::applicationPid()));
    QFile::remove(file);
    answerFileDialog(file);
    m_window->findChild<QAction *>(QStringLiteral("saveFilterAction"))->trigger();
    QVERIFY2(QFile::exists(file), "Save Filter wrote no file");

    bool answered = false;
    answerFilterMenu(this, QStringLiteral("Clear"), answered);
    QTest::mouseClick(tabs->getFilterButton(), Qt::LeftButton);
    QTRY_VERIFY(answered);
    QTRY_VERIFY_WITH_TIMEOUT(!allRowsPass(m_table, byClass), 15000);
    QCOMPARE(editorOf<WEditFilterRuleNumbers>(tabs, "priority")->getFilter(false), QSharedPointer<ValueFilter>());

    answerFileDialog(file);
    m_window->findChild<QAction *>(QStringLiteral("loadFilterAction"))->trigger();
    QFile::remove(file);
    QTRY_VERIFY_WITH_TIMEOUT(allRowsPass(m_table, byTime), 30000);
    QCOMPARE(editorOf<WEditFilterRuleNumbers>(tabs, "priority")->findChild<QLineEdit *>(QStringLiteral("txtInput"))->text(),
             QStringLiteral(">50"));
    QCOMPARE(editorOf<WEditFilterRuleSingleValue>(tabs, "alarmClass")->findChild<QComboBox *>(QStringLiteral("choiceList"))->currentText(),
             QStringLiteral("alert"));
    auto *loadedRules = editorOf<WEditFilterRuleText>(tabs, "text")->findChild<QTableWidget *>(QStringLiteral("tableWidget"));
    QCOMPARE(loadedRules->rowCount(), 2);
    QCOMPARE(loadedRules->item(1, 0)->text(), QStringLiteral("low$"));
    auto *loadedTime = editorOf<WEditFilterRuleDate>(tabs, "time");
    QCOMPARE(loadedTime->findChild<QComboBox *>(QStringLiteral("cbCompMethod"))->currentText(), QStringLiteral("Time after"));
    QCOMPARE(loadedTime->findChild<QDateTimeEdit *>(QStringLiteral("dtFirst"))->dateTime(), after);

    // Leave the table unfiltered for whatever follows.
    answered = false;
    answerFilterMenu(this, QStringLiteral("Clear"), answered);
    QTest::mouseClick(tabs->getFilterButton(), Qt::LeftButton);
    QTRY_VERIFY(answered);
}
