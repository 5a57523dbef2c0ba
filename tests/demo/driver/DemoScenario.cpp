#include "DemoScenario.h"

#include "Constants.h"
#include "QuickFilterEditor.h"
#include "SourceAndFiltersUi.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>
#include <QTreeView>

namespace {

template<class T>
T *findByText(QWidget *root, const QString &text)
{
    for (T *widget : root->findChildren<T *>()) {
        if (widget->text() == text)
            return widget;
    }
    return nullptr;
}

QSet<QString> toSet(const QStringList &list)
{
    return QSet<QString>(list.begin(), list.end());
}

QString visibleStateName(int state)
{
    return Constants::getSourceStateVisibleName(Constants::SourceState(state));
}

// "Matching: M / Total read: T"
bool parseCounts(const QString &text, int &matching, int &totalRead)
{
    static const QRegularExpression pattern(QStringLiteral("^Matching: (\\d+) / Total read: (\\d+)$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return false;
    matching = match.captured(1).toInt();
    totalRead = match.captured(2).toInt();
    return true;
}

// Ends the calling step when the panel offers no source selection.
#define REQUIRE_SOURCE_SELECTOR()                                                                  \
    do {                                                                                           \
        if (!m_panel->getSourceUi())                                                               \
            QSKIP("the built-in panel has no source selector in this build");                      \
        QVERIFY2(m_modeCombo && m_applyButton && m_abortButton && m_countsLabel && m_stateLabel,   \
                 "the source selector lacks a control the session needs");                         \
    } while (false)

const QStringList QueriedSystems{QStringLiteral("Boiler"), QStringLiteral("Turbine")};

} // namespace

void DemoScenario::initTestCase()
{
    for (QWidget *top : QApplication::topLevelWidgets()) {
        if (top->isVisible() && top->findChild<QTreeView *>(QStringLiteral("alarmTable")))
            m_window = top;
    }
    QVERIFY2(m_window, "the demo's main window is not shown");
    m_table = m_window->findChild<QTreeView *>(QStringLiteral("alarmTable"));
    m_panel = m_window->findChild<SourceAndFiltersUi *>();
    QVERIFY2(m_panel, "the main window holds no source and filter panel");
    QVERIFY(m_panel->getQuickFilterEditor());
    for (QComboBox *combo : m_panel->findChildren<QComboBox *>()) {
        if (combo->findText(QStringLiteral("History")) >= 0)
            m_modeCombo = combo;
    }
    m_applyButton = findByText<QAbstractButton>(m_panel, QStringLiteral("Apply"));
    m_abortButton = findByText<QAbstractButton>(m_panel, QStringLiteral("Abort"));
    for (QLabel *label : m_panel->findChildren<QLabel *>()) {
        if (label->text().startsWith(QLatin1String("Matching:")))
            m_countsLabel = label;
        for (int state = 0; state < Constants::SourceStateCount; ++state) {
            if (label->text() == visibleStateName(state))
                m_stateLabel = label;
        }
    }
    QVERIFY(columnOf(QStringLiteral("System")) >= 0);

    // Live alarms of several systems are shown.
    QTRY_VERIFY_WITH_TIMEOUT(m_table->model()->rowCount() > 0, 10000);
    QTRY_VERIFY_WITH_TIMEOUT(toSet(shownColumn(columnOf(QStringLiteral("System")))).size() >= 3,
                             10000);
    const QDir dir(QStandardPaths::writableLocation(QStandardPaths::TempLocation));
    m_filterFile = dir.filePath(QStringLiteral("demo-scenario-%1.json").arg(QCoreApplication::applicationPid()));
    QFile::remove(m_filterFile);
}

void DemoScenario::quickFilterShowsMatchingRows()
{
    const int systemColumn = columnOf(QStringLiteral("System"));
    typeQuickFilter(QStringLiteral("turbine"));
    QTRY_VERIFY(m_table->model()->rowCount() > 0);
    // Case-insensitive by default, matched against every column; the other
    // systems' alarms do not mention the turbine.
    for (const QString &system : shownColumn(systemColumn))
        QCOMPARE(system, QStringLiteral("Turbine"));
    for (const QString &row : shownRowTexts())
        QVERIFY2(row.contains(QLatin1String("turbine"), Qt::CaseInsensitive), qPrintable(row));

    // A wildcard pattern over the alarm texts.
    typeQuickFilter(QStringLiteral("Boil*"));
    QTRY_VERIFY(m_table->model()->rowCount() > 0);
    for (const QString &system : shownColumn(systemColumn))
        QCOMPARE(system, QStringLiteral("Boiler"));

    typeQuickFilter(QString());
    QTRY_VERIFY(toSet(shownColumn(systemColumn)).size() >= 3);
}

void DemoScenario::historyQueryOverTwoSystems()
{
    REQUIRE_SOURCE_SELECTOR();
    QCOMPARE(m_modeCombo->currentText(), QStringLiteral("Live"));
    QTest::keyClick(m_modeCombo, Qt::Key_Down); // Live -> History, as the operator does it
    QCOMPARE(m_modeCombo->currentText(), QStringLiteral("History"));
    const QDateTime end = QDateTime::currentDateTime();
    QCOMPARE(m_panel->prepareArchiveMode(end.addSecs(-2 * 3600), end, QueriedSystems), QString());
    applySource();

    QTRY_COMPARE_WITH_TIMEOUT(stateText(), visibleStateName(Constants::QueryFinished), 30000);
    int matching = -1;
    int totalRead = -1;
    QVERIFY2(parseCounts(m_countsLabel->text(), matching, totalRead), qPrintable(m_countsLabel->text()));
    QVERIFY(totalRead > 0);
    QCOMPARE(matching, totalRead); // no structured filter
    QVERIFY(m_countsLabel->isVisible());
    QVERIFY(!m_abortButton->isVisible());

    // The table shows exactly the rows of the query, of the two systems only.
    QTRY_COMPARE(m_table->model()->rowCount(), matching);
    const QStringList systems = shownColumn(columnOf(QStringLiteral("System")));
    QCOMPARE(toSet(systems), toSet(QueriedSystems));
}

void DemoScenario::secondQueryIsAborted()
{
    REQUIRE_SOURCE_SELECTOR();
    // A month of archives takes a while to read.
    const QDateTime end = QDateTime::currentDateTime();
    QCOMPARE(m_panel->prepareArchiveMode(end.addDays(-30), end, QueriedSystems), QString());
    applySource();
    QTRY_COMPARE_WITH_TIMEOUT(stateText(), visibleStateName(Constants::QueryRunning), 30000);
    QTRY_VERIFY(m_abortButton->isVisible());
    QTest::mouseClick(m_abortButton, Qt::LeftButton);

    QTRY_COMPARE_WITH_TIMEOUT(stateText(), visibleStateName(Constants::QueryAborted), 10000);
    QVERIFY(!m_abortButton->isVisible());
    int matching = -1;
    int totalRead = -1;
    QVERIFY(parseCounts(m_countsLabel->text(), matching, totalRead));
    QVERIFY2(totalRead < 30 * 24 * 300, "the aborted query read its whole range");
    QCOMPARE(m_table->model()->rowCount(), matching);
}

void DemoScenario::filterIsSavedAndLoadedBack()
{
    REQUIRE_SOURCE_SELECTOR();
    const QDateTime end = QDateTime::currentDateTime();
    QCOMPARE(m_panel->prepareArchiveMode(end.addSecs(-3600), end, {QStringLiteral("Turbine")}), QString());

    auto *save = m_window->findChild<QAction *>(QStringLiteral("saveFilterAction"));
    auto *load = m_window->findChild<QAction *>(QStringLiteral("loadFilterAction"));
    QVERIFY(save && load && save->isEnabled() && load->isEnabled());

    answerFileDialog(m_filterFile);
    save->trigger();
    QVERIFY2(QFile::exists(m_filterFile), "Save Filter wrote no file");
    QFile file(m_filterFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonObject saved = QJsonDocument::fromJson(file.readAll()).object();
    QCOMPARE(saved.value(QStringLiteral("systems")).toArray(), QJsonArray{QStringLiteral("Turbine")});
    QVERIFY(saved.value(QStringLiteral("sourceMode")).toString() != QLatin1String("Live"));

    // Back to live alarms, then load the saved history filter: the selector
    // shows it again and the query runs.
    QTest::keyClick(m_modeCombo, Qt::Key_Up);
    QCOMPARE(m_modeCombo->currentText(), QStringLiteral("Live"));
    applySource();
    QTRY_VERIFY(toSet(shownColumn(columnOf(QStringLiteral("System")))).size() >= 3);

    answerFileDialog(m_filterFile);
    load->trigger();
    QCOMPARE(m_modeCombo->currentText(), QStringLiteral("History"));
    QTRY_COMPARE_WITH_TIMEOUT(stateText(), visibleStateName(Constants::QueryFinished), 30000);
    QTRY_VERIFY(m_table->model()->rowCount() > 0);
    QCOMPARE(toSet(shownColumn(columnOf(QStringLiteral("System")))),
             QSet<QString>{QStringLiteral("Turbine")});
    QFile::remove(m_filterFile);
}

QStringList DemoScenario::shownColumn(int column) const
{
    QStringList values;
    const QAbstractItemModel *model = m_table->model();
    for (int row = 0; row < model->rowCount(); ++row)
        values << model->index(row, column).data().toString();
    return values;
}

QStringList DemoScenario::shownRowTexts() const
{
    QStringList rows;
    const QAbstractItemModel *model = m_table->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column)
            cells << model->index(row, column).data().toString();
        rows << cells.join(QLatin1Char('|'));
    }
    return rows;
}

int DemoScenario::columnOf(const QString &title) const
{
    const QAbstractItemModel *model = m_table->model();
    for (int column = 0; column < model->columnCount(); ++column) {
        if (model->headerData(column, Qt::Horizontal).toString() == title)
            return column;
    }
    return -1;
}

void DemoScenario::applySource()
{
    QVERIFY(m_applyButton->isVisible());
    QTest::mouseClick(m_applyButton, Qt::LeftButton);
}

void DemoScenario::typeQuickFilter(const QString &text)
{
    QuickFilterEditor *editor = m_panel->getQuickFilterEditor();
    editor->setFocus();
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Backspace);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(editor->text(), text);
}

QString DemoScenario::stateText() const
{
    return m_stateLabel->text();
}

void DemoScenario::answerFileDialog(const QString &file)
{
    // The dialog is modal: answer it from the event loop it runs.
    QTimer::singleShot(0, this, [this, file] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return answerFileDialog(file); // not open yet
        dialog->selectFile(file);
        static_cast<QDialog *>(dialog)->accept(); // QFileDialog hides it
    });
}
