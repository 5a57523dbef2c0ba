// The operator builds a structured filter in the tabs of the standard panel,
// applies it, saves it, clears it and loads it back; a file that is not a
// filter is refused with a message and changes nothing.
#include "DemoScenario.h"

#include "SingleFilterTab.h"
#include "SingleLineTextEdit.h"
#include "SourceAndFiltersUi.h"
#include "Spoiler.h"
#include "StringPatternEditor.h"
#include "TabbedStructuredFilterUi.h"
#include "WEditFilterRuleSingleValue.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QtTest>

namespace {

StringPatternEditor *patternEditor(SingleFilterTab *tab, const QString &property)
{
    for (auto *editor : tab->findChildren<StringPatternEditor *>()) {
        if (editor->getColumnId() == property)
            return editor;
    }
    return nullptr;
}

QSet<QString> valuesOf(const QTreeView *table, int column)
{
    QSet<QString> values;
    const QAbstractItemModel *model = table->model();
    for (int row = 0; row < model->rowCount(); ++row)
        values.insert(model->index(row, column).data().toString());
    return values;
}

} // namespace

void DemoScenario::structuredFilterIsAppliedSavedAndLoaded()
{
    auto *spoiler = m_window->findChild<Spoiler *>(QStringLiteral("filterSpoiler"));
    QVERIFY2(spoiler && spoiler->isInSpoiler() && spoiler->getMainWidget() == m_panel,
             "the filter area is not in its spoiler");
    auto *editor = qobject_cast<TabbedStructuredFilterUi *>(m_panel->getStructuredFilterUi());
    QVERIFY2(editor, "the panel has no tabbed structured filter: is the standard plug-in loaded?");
    QCOMPARE(editor->filterTabCount(), 1);
    // The section opens with an animation.
    QTRY_VERIFY(m_panel->height() >= m_panel->sizeHint().height());
    const int systemColumn = columnOf(QStringLiteral("System"));
    const int classColumn = columnOf(QStringLiteral("Alarm class"));
    QVERIFY(systemColumn >= 0 && classColumn >= 0);
    QTRY_VERIFY(valuesOf(m_table, classColumn).contains(QStringLiteral("info")));

    // Include two systems in the first tab; a second tab, added with "+",
    // excludes the information class.
    SingleFilterTab *include = editor->getFilterTabs().first();
    StringPatternEditor *systems = patternEditor(include, QStringLiteral("system"));
    QVERIFY(systems);
    QTest::keyClicks(systems->getTextEdit(), QStringLiteral("Boiler;Turb*"));
    QTabBar *bar = editor->getTabWidget()->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(bar->count() - 1).center());
    QCOMPARE(editor->filterTabCount(), 2);
    SingleFilterTab *exclude = editor->getFilterTabs().last();
    QCOMPARE(editor->getTabWidget()->currentWidget(), exclude);
    QTest::mouseClick(exclude->getExcludeButton(), Qt::LeftButton);
    QCOMPARE(editor->getTabWidget()->tabText(1), QStringLiteral("Filter #2: Exclude"));
    auto *classEditor = exclude->findChild<WEditFilterRuleSingleValue *>(QStringLiteral("alarmClassFilter"));
    QVERIFY2(classEditor, "no single value editor for the alarm class");
    auto *classList = classEditor->findChild<QComboBox *>(QStringLiteral("choiceList"));
    QTRY_VERIFY(classList->findText(QStringLiteral("info")) > 0);
    classList->setFocus();
    for (int i = 0; i < classList->count() && classList->currentText() != QLatin1String("info"); ++i)
        QTest::keyClick(classList, Qt::Key_Down);
    QCOMPARE(classList->currentText(), QStringLiteral("info"));
    QTRY_VERIFY(editor->getNotAppliedLabel()->isVisible());

    QTest::mouseClick(editor->getApplyButton(), Qt::LeftButton);
    const QSet<QString> twoSystems{QStringLiteral("Boiler"), QStringLiteral("Turbine")};
    QTRY_COMPARE(valuesOf(m_table, systemColumn), twoSystems);
    QVERIFY(!valuesOf(m_table, classColumn).contains(QStringLiteral("info")));
    QVERIFY(editor->getNotAppliedLabel()->isHidden());

    // Saved from the Filter menu, cleared, and loaded back.
    const QString file = QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation))
                             .filePath(QStringLiteral("demo-structured-%1.json").arg(QCoreApplication::applicationPid()));
    QFile::remove(file);
    answerFileDialog(file);
    chooseFilterMenuEntry(editor->getFilterButton(), QStringLiteral("Save Filter..."));
    QVERIFY2(QFile::exists(file), "Save Filter... wrote no file");

    chooseFilterMenuEntry(editor->getFilterButton(), QStringLiteral("Clear"));
    QCOMPARE(editor->filterTabCount(), 1);
    QVERIFY(editor->getFilter().isEmpty());
    QTest::mouseClick(editor->getApplyButton(), Qt::LeftButton);
    QTRY_VERIFY(valuesOf(m_table, systemColumn).size() >= 3);

    answerFileDialog(file);
    chooseFilterMenuEntry(editor->getFilterButton(), QStringLiteral("Load Filter..."));
    QCOMPARE(editor->filterTabCount(), 2);
    QCOMPARE(editor->getTabWidget()->tabText(1), QStringLiteral("Filter #2: Exclude"));
    QCOMPARE(patternEditor(editor->getFilterTabs().first(), QStringLiteral("system"))->getTextEdit()->toPlainText(),
             QStringLiteral("Boiler;Turb*"));
    QTRY_COMPARE(valuesOf(m_table, systemColumn), twoSystems);
    QVERIFY(!valuesOf(m_table, classColumn).contains(QStringLiteral("info")));
    QFile::remove(file);

    // A file that is no filter: a message names the problem, the filter stays.
    const SourceAndFilter before = editor->getFilter();
    QFile broken(file);
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("{\"format\": \"SomethingElse\"");
    broken.close();
    answerFileDialog(file);
    QString message;
    answerMessageBox(&message);
    chooseFilterMenuEntry(editor->getFilterButton(), QStringLiteral("Load Filter..."));
    QVERIFY2(message.contains(file), qPrintable(message));
    QVERIFY(editor->getFilter().isEqual(before));
    QCOMPARE(valuesOf(m_table, systemColumn), twoSystems);
    QFile::remove(file);

    // Leave the table unfiltered for the steps that follow.
    chooseFilterMenuEntry(editor->getFilterButton(), QStringLiteral("Clear"));
    QTest::mouseClick(editor->getApplyButton(), Qt::LeftButton);
    QTRY_VERIFY(valuesOf(m_table, systemColumn).size() >= 3);
}

void DemoScenario::chooseFilterMenuEntry(QWidget *filterButton, const QString &entry)
{
    bool found = false;
    QTimer::singleShot(0, this, [&found, entry] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        for (QAction *action : menu->actions()) {
            if (action->text() == entry && action->isEnabled()) {
                menu->setActiveAction(action);
                found = true;
            }
        }
        QTest::keyClick(menu, found ? Qt::Key_Return : Qt::Key_Escape);
    });
    QTest::mouseClick(filterButton, Qt::LeftButton);
    QVERIFY2(found, qPrintable(QStringLiteral("no enabled entry '%1' in the Filter menu").arg(entry)));
}

void DemoScenario::answerMessageBox(QString *text)
{
    // It comes after the file dialog: look again until it is there.
    QTimer::singleShot(0, this, [this, text] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return answerMessageBox(text);
        *text = box->text();
        box->accept();
    });
}
