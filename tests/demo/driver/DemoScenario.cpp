#include "DemoScenario.h"

#include "AlarmInstance.h"
#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "ColorEngine.h"
#include "ConnectionMapWidget.h"
#include "Constants.h"
#include "DialogLogHistory.h"
#include "DialogSystemConnections.h"
#include "FilterStatisticsView.h"
#include "FilterStatisticsWidget.h"
#include "MsgLoggerModel.h"
#include "MsgLoggerStatistics.h"
#include "PopupAnswers.h"
#include "QuickFilterEditor.h"
#include "Resources.h"
#include "SourceAndFiltersUi.h"
#include "SourceUiLong.h"
#include "SysConnectModel.h"
#include "SystemSelectionTable.h"
#include "TimeRangeEditor.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QTableView>
#include <QTreeView>
#include <QtTest>

namespace {

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

template<class T>
T *control(QObject *root, const char *name)
{
    return root->findChild<T *>(QLatin1String(name));
}

QPoint squareOf(ConnectionMapWidget *map, const QString &system)
{
    for (const ConnectionMapWidget::SystemConnectionInfo &info : map->getSystems()) {
        if (info.name == system)
            return info.rect.center();
    }
    return QPoint(-1, -1);
}

QColor squareColour(ConnectionMapWidget *map, const QString &system)
{
    return map->grab().toImage().pixelColor(squareOf(map, system));
}

void clickClose(QDialog *dialog)
{
    auto *box = dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
    QVERIFY(box && box->button(QDialogButtonBox::Close));
    QTest::mouseClick(box->button(QDialogButtonBox::Close), Qt::LeftButton);
}

const QStringList QueriedSystems{QStringLiteral("Boiler"), QStringLiteral("Turbine")};
// Archive rows an hour of the two queried systems (config/alarm-simulation.json).
const int QueriedRowsPerHour = 400 + 300;

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
    m_selector = qobject_cast<SourceUiLong *>(m_panel->getSourceUi());
    QVERIFY2(m_selector, "the panel has no source selector");
    m_modeCombo = control<QComboBox>(m_selector, "comboBoxMode");
    m_applyButton = control<QAbstractButton>(m_selector, "pushButtonApply");
    m_abortButton = control<QAbstractButton>(m_selector, "pushButtonAbort");
    m_systemsButton = control<QAbstractButton>(m_selector, "pushButtonSystems");
    m_timeRangeButton = control<QAbstractButton>(m_selector, "pushButtonTimeRange");
    m_stateLabel = control<QLabel>(m_selector, "labelState");
    m_timeLabel = control<QLabel>(m_selector, "labelTime");
    m_countsLabel = control<QLabel>(m_selector, "labelCounts");
    QVERIFY2(m_modeCombo && m_applyButton && m_abortButton && m_systemsButton && m_timeRangeButton
                 && m_stateLabel && m_timeLabel && m_countsLabel,
             "the source selector lacks a control the session needs");
    QVERIFY(columnOf(QStringLiteral("System")) >= 0);

    // Live alarms of several systems are shown.
    QTRY_VERIFY_WITH_TIMEOUT(m_table->model()->rowCount() > 0, 10000);
    QTRY_VERIFY_WITH_TIMEOUT(shownValues(QStringLiteral("System")).size() >= 3, 10000);
    m_filterFile = freshTempFile(QStringLiteral("demo-scenario-%1.json"));
}

void DemoScenario::contextMenuAcknowledgesAnAlarm()
{
    auto *proxy = qobject_cast<AlarmsProxyModel *>(m_table->model());
    QVERIFY2(proxy, "the table does not show an AlarmsProxyModel");
    auto *status = m_window->findChild<QStatusBar *>();
    QVERIFY(status);
    // The simulation goes on meanwhile and may acknowledge the alarm itself
    // first; then the demo says so and another one is tried.
    for (int attempt = 0; attempt < 5; ++attempt) {
        const auto alarms = shownAlarms();
        const auto waiting = std::find_if(alarms.begin(), alarms.end(), [](const QSharedPointer<AlarmInstance> &a) {
            return a->getData().acknowledgeable && a->getData().state == AlarmInstance::CameUnacknowledged;
        });
        QVERIFY2(waiting != alarms.end(), "no alarm waits for an acknowledgement");
        const QSharedPointer<AlarmInstance> alarm = *waiting;
        const AlarmIdent ident = alarm->getIdent();
        const QModelIndex row = proxy->findAlarm(ident, 1);
        m_table->scrollTo(row);
        const QPoint pos = m_table->viewport()->mapTo(m_window, m_table->visualRect(row).center());

        // The menu comes once the script answered.
        QStringList offered;
        bool answered = false;
        answerNextMenu(this, QStringLiteral("Acknowledge"), &offered, &answered);
        QTest::mousePress(m_window->windowHandle(), Qt::RightButton, {}, pos);
        QTest::mouseRelease(m_window->windowHandle(), Qt::RightButton, {}, pos);
        QTRY_VERIFY_WITH_TIMEOUT(answered, 10000);
        QCOMPARE(offered, QStringList({alarm->getData().dpe.section(':', 0, 0) + ": " + alarm->getData().alarmText,
                                       "-", "Acknowledge", "Details", "Grouped view"}));
        if (status->currentMessage() != QStringLiteral("Acknowledged %1").arg(alarm->getData().dpe))
            continue;
        // The table shows the acknowledgement (or the alarm is gone since).
        QTRY_VERIFY(!proxy->getAlarmByIdent(ident) || proxy->getAlarmByIdent(ident)->isAcknowledged());
        return;
    }
    QFAIL("no alarm could be acknowledged through the context menu");
}

void DemoScenario::quickFilterShowsMatchingRows()
{
    typeQuickFilter(QStringLiteral("turbine"));
    QTRY_VERIFY(m_table->model()->rowCount() > 0);
    // Case-insensitive by default, matched against every column; the other
    // systems' alarms do not mention the turbine.
    QCOMPARE(shownValues(QStringLiteral("System")), QSet<QString>{QStringLiteral("Turbine")});
    for (const QString &row : shownRowTexts())
        QVERIFY2(row.contains(QLatin1String("turbine"), Qt::CaseInsensitive), qPrintable(row));

    // A wildcard pattern over the alarm texts.
    typeQuickFilter(QStringLiteral("Boil*"));
    QTRY_VERIFY(m_table->model()->rowCount() > 0);
    QCOMPARE(shownValues(QStringLiteral("System")), QSet<QString>{QStringLiteral("Boiler")});

    typeQuickFilter(QString());
    QTRY_VERIFY(shownValues(QStringLiteral("System")).size() >= 3);
}

void DemoScenario::statisticsBarCountsTheTable()
{
    m_statisticsBar = m_window->findChild<FilterStatisticsView *>();
    QVERIFY2(m_statisticsBar, "the demo shows no statistics bar");
    // The project's datapoint configures one cell per alarm class and one for all.
    QTRY_COMPARE(m_statisticsBar->getAllIds(),
                 (QStringList{QStringLiteral("alert"), QStringLiteral("warning"), QStringLiteral("info"),
                              QStringLiteral("all")}));
    const auto cells = m_statisticsBar->findChildren<FilterStatisticsWidget *>();
    const auto found = std::find_if(cells.begin(), cells.end(), [](auto *cell) { return cell->getId() == "alert"; });
    QVERIFY(found != cells.end());
    FilterStatisticsWidget *alert = *found;
    QTRY_VERIFY(alert->isVisible());
    // Live alarms, no filter: the table shows every alarm, and between two
    // updates the cell counts the same alert rows the table shows.
    const QStringList classes = shownColumn(columnOf(QStringLiteral("Alarm class")));
    const int alertRows = int(classes.count(QStringLiteral("alert")));
    QVERIFY(alertRows > 0);
    QCOMPARE(alert->getLabel()->text(), QStringLiteral("alert: %1").arg(alertRows));
    QCOMPARE(m_statisticsBar->getFilterStatistics(QStringLiteral("all")).value(QStringLiteral("%matching%")).toInt(),
             classes.size());
}

void DemoScenario::unacknowledgedAlarmsBlink()
{
    const QSharedPointer<ColorEngine> engine = ColorEngine::getInstance(nullptr);
    const QSharedPointer<Color> blinking = engine->getColor(QStringLiteral("alertUnack"));
    QVERIFY2(blinking->isBlinking(), "the demo's colour database has no blinking alertUnack");
    const int classColumn = columnOf(QStringLiteral("Alarm class"));
    const int stateColumn = columnOf(QStringLiteral("State"));
    const QStringList unacknowledged{AlarmInstance::stateText(AlarmInstance::CameUnacknowledged),
                                     AlarmInstance::stateText(AlarmInstance::WentUnacknowledged)};
    m_table->clearSelection();
    m_table->setCurrentIndex(QModelIndex());

    // The colour of an unacknowledged alert row as painted, or invalid when
    // no such row is on screen. Painting and the lookup see the same rows:
    // no event is handled in between.
    const auto paintedUnacknowledgedAlert = [&]() -> QColor {
        const QImage image = m_table->viewport()->grab().toImage();
        for (int y = 2; y < image.height(); y += 3) {
            const QModelIndex index = m_table->indexAt(QPoint(4, y));
            if (!index.isValid())
                continue;
            const QAbstractItemModel *model = index.model();
            if (model->index(index.row(), classColumn, index.parent()).data().toString() == QLatin1String("alert")
                && unacknowledged.contains(model->index(index.row(), stateColumn, index.parent()).data().toString())) {
                // The text keeps a margin: a cell's first pixels show its background.
                const QRect cell = m_table->visualRect(model->index(index.row(), stateColumn, index.parent()));
                return image.pixelColor(cell.left() + 1, cell.center().y());
            }
        }
        return QColor();
    };

    QColor first;
    QTRY_VERIFY_WITH_TIMEOUT((first = paintedUnacknowledgedAlert()).isValid(), 10000);
    QCOMPARE(first, blinking->getCurrentColor());
    // The next phase reaches the screen.
    QColor next;
    QTRY_VERIFY_WITH_TIMEOUT((next = paintedUnacknowledgedAlert()).isValid() && next != first, 5000);
    QCOMPARE(next, blinking->getCurrentColor());
}

void DemoScenario::statisticsBarFollowsItsDatapoint()
{
    auto *load = m_window->findChild<QAction *>(QStringLiteral("loadStatisticsAction"));
    QVERIFY(load && load->isEnabled());
    const QString bySystem = Resources::findFile(QStringLiteral("config/statistics/by-system.json"));
    QVERIFY2(!bySystem.isEmpty(), "the demo project has no config/statistics/by-system.json");
    answerFileDialog(bySystem);
    load->trigger();
    QTRY_COMPARE(m_statisticsBar->getAllIds(),
                 (QStringList{QStringLiteral("Boiler"), QStringLiteral("Turbine"), QStringLiteral("Substation"),
                              QStringLiteral("WaterTreatment")}));
    const QStringList systems = shownColumn(columnOf(QStringLiteral("System")));
    QCOMPARE(m_statisticsBar->getFilterStatistics(QStringLiteral("Turbine")).value(QStringLiteral("%matching%")).toInt(),
             int(systems.count(QStringLiteral("Turbine"))));
}

void DemoScenario::disconnectedSystemStaysInTheTable()
{
    const QString lost = QStringLiteral("Turbine");
    const QColor red(255, 0, 0), green(0, 255, 0), warning(255, 255, 192);
    auto *map = control<ConnectionMapWidget>(m_window, "connectionMap");
    auto *logLabel = control<MsgLoggerStatistics>(m_window, "logStatistics");
    auto *connected = control<QAction>(m_window, "connectSystemAction_Turbine");
    QVERIFY2(map && logLabel && connected, "the status bar or the Systems menu lacks a control");
    QVERIFY(map->isVisible() && logLabel->isVisible());
    QStringList squares;
    for (const ConnectionMapWidget::SystemConnectionInfo &info : map->getSystems())
        squares << info.name;
    QCOMPARE(squares, (QStringList{"Boiler", "Turbine", "Substation", "WaterTreatment"})); // by system number
    QVERIFY(connected->isChecked());
    QCOMPARE(squareColour(map, lost), green);
    const auto connections = [this, &lost] {
        QVector<bool> result;
        for (const QSharedPointer<AlarmInstance> &alarm : shownAlarms()) {
            if (alarm->getIdent().getSystem() == lost)
                result << alarm->isConnected();
        }
        return result;
    };
    const int shownBefore = connections().size();
    QVERIFY(shownBefore > 0);

    // The operator pulls the plug: the square turns red, the alarms stay,
    // marked as disconnected.
    connected->trigger();
    QVERIFY(!connected->isChecked());
    QCOMPARE(squareColour(map, lost), red);
    QCOMPARE(connections(), QVector<bool>(shownBefore, false));
    QCOMPARE(squareColour(map, QStringLiteral("Boiler")), green);

    // A click on the map lists the systems; only the lost one is flagged.
    QTest::mouseClick(map, Qt::LeftButton, {}, squareOf(map, lost));
    QPointer<DialogSystemConnections> systems = m_window->findChild<DialogSystemConnections *>();
    QVERIFY(systems && systems->isVisible());
    SysConnectModel *model = systems->getModel();
    QVERIFY(!model->modelIndex(model->findSystemIdx(lost)).data(Qt::DecorationRole).value<QIcon>().isNull());
    QVERIFY(!model->modelIndex(model->findSystemIdx(QStringLiteral("Boiler"))).data(Qt::DecorationRole).isValid());

    // The lost connection is a warning in the message history.
    const QColor labelColour = logLabel->palette().color(logLabel->backgroundRole());
    QVERIFY2(logLabel->autoFillBackground() && (labelColour == warning || labelColour == QColor(255, 192, 192)),
             qPrintable(labelColour.name()));
    QTest::mouseClick(logLabel, Qt::LeftButton);
    QPointer<DialogLogHistory> history = logLabel->getDialog();
    QVERIFY(history && history->isVisible());
    const QAbstractItemModel *messages = history->getView()->model();
    QColor lostColour;
    for (int row = 0; row < messages->rowCount(); ++row) {
        if (messages->index(row, MsgLoggerModel::TextColumn).data().toString().contains(lost))
            lostColour = messages->index(row, MsgLoggerModel::SeverityColumn)
                             .data(Qt::BackgroundRole)
                             .value<QBrush>()
                             .color();
    }
    QCOMPARE(lostColour, warning);
    clickClose(history);
    QTRY_VERIFY(!history);

    // Back again: green, the alarms brought up to date and connected; the
    // open dialog follows.
    connected->trigger();
    QCOMPARE(squareColour(map, lost), green);
    QVERIFY(!model->modelIndex(model->findSystemIdx(lost)).data(Qt::DecorationRole).isValid());
    const QVector<bool> after = connections();
    QVERIFY(!after.isEmpty());
    QCOMPARE(after, QVector<bool>(after.size(), true));
    clickClose(systems);
    QTRY_VERIFY(!systems);
}

void DemoScenario::historyQueryOverTwoSystems()
{
    QCOMPARE(m_modeCombo->currentText(), QStringLiteral("Live"));
    QVERIFY(!m_systemsButton->isVisible() && !m_timeRangeButton->isVisible());
    QTest::keyClick(m_modeCombo, Qt::Key_Down); // Live -> History, as the operator does it
    QCOMPARE(m_modeCombo->currentText(), QStringLiteral("History"));
    QVERIFY(m_systemsButton->isVisible() && m_timeRangeButton->isVisible());
    chooseSystems(QueriedSystems);
    chooseTimeRange(QStringLiteral("LastHours"), 2);
    applySource();

    QTRY_COMPARE_WITH_TIMEOUT(stateText(), visibleStateName(Constants::QueryFinished), 30000);
    QVERIFY(m_countsLabel->isVisible() && m_timeLabel->isVisible());
    QVERIFY(!m_abortButton->isVisible());
    int matching = -1;
    int totalRead = -1;
    QVERIFY2(parseCounts(m_countsLabel->text(), matching, totalRead), qPrintable(m_countsLabel->text()));
    // Two hours of both archives: not one, not three.
    QVERIFY2(totalRead > 1.7 * QueriedRowsPerHour && totalRead < 2.3 * QueriedRowsPerHour,
             qPrintable(m_countsLabel->text()));
    QCOMPARE(matching, totalRead); // no structured filter

    // The table shows exactly the rows of the query, of the two systems only.
    QTRY_COMPARE(m_table->model()->rowCount(), matching);
    QCOMPARE(shownValues(QStringLiteral("System")), QSet<QString>(QueriedSystems.begin(), QueriedSystems.end()));
}

void DemoScenario::secondQueryIsAborted()
{
    // A month of archives takes a while to read.
    chooseTimeRange(QStringLiteral("LastDays"), 30);
    applySource();
    QTRY_COMPARE_WITH_TIMEOUT(stateText(), visibleStateName(Constants::QueryRunning), 30000);
    QVERIFY(m_abortButton->isVisible());

    // The clock of the running query counts seconds. The label may still show
    // the end of the previous query until the first tick.
    const QString previous = m_timeLabel->text();
    QTRY_VERIFY_WITH_TIMEOUT(m_timeLabel->text() != previous && m_timeLabel->text() != QLatin1String("00:00:00"),
                             10000);
    static const QRegularExpression seconds(QStringLiteral("^00:00:\\d\\d$"));
    QVERIFY2(seconds.match(m_timeLabel->text()).hasMatch(), qPrintable(m_timeLabel->text()));
    QCOMPARE(stateText(), visibleStateName(Constants::QueryRunning));
    QTest::mouseClick(m_abortButton, Qt::LeftButton);

    QTRY_COMPARE_WITH_TIMEOUT(stateText(), visibleStateName(Constants::QueryAborted), 10000);
    QVERIFY(!m_abortButton->isVisible());
    int matching = -1;
    int totalRead = -1;
    QVERIFY(parseCounts(m_countsLabel->text(), matching, totalRead));
    QVERIFY2(totalRead > 0 && totalRead < 30 * 24 * QueriedRowsPerHour / 2,
             "the aborted query read most of its range");
    QCOMPARE(m_table->model()->rowCount(), matching);
}

void DemoScenario::filterIsSavedAndLoadedBack()
{
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
    backToLive();
    QTRY_VERIFY(shownValues(QStringLiteral("System")).size() >= 3);

    answerFileDialog(m_filterFile);
    load->trigger();
    QCOMPARE(m_modeCombo->currentText(), QStringLiteral("History"));
    QTRY_COMPARE_WITH_TIMEOUT(stateText(), visibleStateName(Constants::QueryFinished), 30000);
    QTRY_VERIFY(m_table->model()->rowCount() > 0);
    QCOMPARE(shownValues(QStringLiteral("System")), QSet<QString>{QStringLiteral("Turbine")});
    QFile::remove(m_filterFile);
}

void DemoScenario::tableIsExportedAsShown()
{
    // The table holds the finished history query of the step before: it does not change.
    QCOMPARE(stateText(), visibleStateName(Constants::QueryFinished));
    QVERIFY(m_table->model()->rowCount() > 0);
    auto *exportAction = m_window->findChild<QAction *>(QStringLiteral("exportCsvAction"));
    QVERIFY(exportAction && exportAction->isEnabled());
    const QString file = freshTempFile(QStringLiteral("demo-scenario-%1.csv"));
    const QChar separator = QLatin1Char(';');
    answerCsvOptions(separator, file);
    exportAction->trigger();
    QFile csv(file);
    QVERIFY2(csv.open(QIODevice::ReadOnly), "Export CSV wrote no file");
    QStringList lines = QString::fromUtf8(csv.readAll()).split(QLatin1Char('\n'));
    QCOMPARE(lines.takeLast(), QString()); // the last line ends too
    csv.remove();

    // The header and every row as the table shows them, columns in the order on screen.
    const QAbstractItemModel *model = m_table->model();
    const QHeaderView *header = m_table->header();
    // One line of the visible columns in screen order, separators escaped.
    const auto line = [&](const std::function<QString(int)> &cell) {
        QStringList cells;
        for (int visual = 0; visual < header->count(); ++visual) {
            if (!header->isSectionHidden(header->logicalIndex(visual)))
                cells << cell(header->logicalIndex(visual)).replace(separator, QLatin1Char('\\') + QString(separator));
        }
        return cells.join(separator);
    };
    QStringList expected{line([&](int column) { return model->headerData(column, Qt::Horizontal).toString(); })};
    for (int row = 0; row < model->rowCount(); ++row)
        expected << line([&](int column) { return model->index(row, column).data().toString(); });
    QCOMPARE(lines, expected);
}

void DemoScenario::tabWalksTheWindowInGeometricOrder()
{
    // From the source selector through the panel down to the table, each
    // step to a widget below or to the right on the same rows.
    QWidget *start = m_modeCombo;
    const QList<QWidget *> groups = m_panel->getTabGroups();
    const auto groupOf = [&groups](const QWidget *widget) {
        for (int i = 0; i < groups.size(); ++i) {
            if (groups.at(i) == widget || groups.at(i)->isAncestorOf(widget))
                return i;
        }
        return -1;
    };
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    start->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), start);
    QList<QWidget *> visited{start};
    while (QApplication::focusWidget() != m_table && visited.size() < 40) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QWidget *now = QApplication::focusWidget();
        QVERIFY2(now && now != visited.last(),
                 qPrintable(QStringLiteral("Tab did not move the focus from %1 (%2)")
                                .arg(visited.last()->objectName(), QLatin1String(visited.last()->metaObject()->className()))));
        QVERIFY(m_window->isAncestorOf(now));
        const QRect before(visited.last()->mapTo(m_window, QPoint()), visited.last()->size());
        const QRect after(now->mapTo(m_window, QPoint()), now->size());
        // Leaving a tab group for the next one (the filter page for the buttons
        // beside its tabs) may go back up; inside a group the walk reads on.
        const int fromGroup = groupOf(visited.last());
        const int toGroup = groupOf(now);
        const bool nextGroup = fromGroup >= 0 && toGroup > fromGroup;
        QVERIFY2(nextGroup || (before.top() < after.bottom() && (after.top() >= before.bottom() || before.right() <= after.left())),
                 qPrintable(QStringLiteral("%1 -> %2").arg(visited.last()->objectName(), now->objectName())));
        visited << now;
    }
    QCOMPARE(QApplication::focusWidget(), m_table);
    QVERIFY(visited.contains(m_applyButton) && visited.contains(m_panel->getQuickFilterEditor()));
    // And back.
    QTest::keyClick(m_table, Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), visited.at(visited.size() - 2));
}

void DemoScenario::selectionSurvivesAFlood()
{
    if (m_modeCombo->currentText() != QLatin1String("Live"))
        backToLive();
    auto *proxy = qobject_cast<AlarmsProxyModel *>(m_table->model());
    QVERIFY(proxy && proxy->getAlarmsModel());
    QTRY_VERIFY_WITH_TIMEOUT(proxy->rowCount() > 40, 10000);

    // The operator selects thirty alarms from the keyboard, to acknowledge them.
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, {},
                      m_table->visualRect(proxy->index(0, 0)).center());
    for (int i = 0; i < 29; ++i)
        QTest::keyClick(m_table, Qt::Key_Down, Qt::ShiftModifier);
    QSet<AlarmIdent> selected;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows())
        selected.insert(proxy->getAlarmAtRow(index)->getIdent());
    QVERIFY2(selected.size() >= 20, "live bursts took most of the selection away");
    const AlarmIdent current = proxy->getAlarmAtRow(m_table->currentIndex())->getIdent();

    // One flood burst: hundreds of alarm events at once.
    auto *flood = m_window->findChild<QAction *>(QStringLiteral("floodAction"));
    QVERIFY(flood && flood->isCheckable() && !flood->isChecked());
    QSignalSpy bursts(proxy->getAlarmsModel().data(), &AlarmsModel::alarmsChanged);
    // A normal burst changes a few alarms; the first flood burst a few hundred
    // (many of its events fall on the same alarms).
    constexpr int floodSize = 100;
    const auto floodArrived = [&bursts] {
        for (const QList<QVariant> &burst : qAsConst(bursts)) {
            if (burst.at(0).toInt() + burst.at(1).toInt() + burst.at(2).toInt() > floodSize)
                return true;
        }
        return false;
    };
    // Switched off as soon as the first flood burst is in, so that one burst
    // comes however slowly this build runs.
    const QMetaObject::Connection stop = connect(proxy->getAlarmsModel().data(), &AlarmsModel::alarmsChanged, flood,
                                                 [flood](int added, int updated, int removed) {
                                                     if (added + updated + removed > floodSize)
                                                         flood->setChecked(false);
                                                 });
    flood->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(floodArrived(), 10000);
    disconnect(stop);
    QVERIFY(!flood->isChecked());

    // The selected alarms that are still there are still selected, and no other.
    QSet<AlarmIdent> stillSelected;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows())
        stillSelected.insert(proxy->getAlarmAtRow(index)->getIdent());
    QSet<AlarmIdent> survivors;
    for (const AlarmIdent &ident : qAsConst(selected)) {
        if (proxy->findAlarm(ident).isValid())
            survivors.insert(ident);
    }
    QVERIFY2(!survivors.isEmpty(), "the flood left none of the selected alarms");
    QCOMPARE(stillSelected, survivors);
    if (proxy->findAlarm(current).isValid())
        QCOMPARE(proxy->getAlarmAtRow(m_table->currentIndex())->getIdent(), current);
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

QSet<QString> DemoScenario::shownValues(const QString &columnTitle) const
{
    const QStringList values = shownColumn(columnOf(columnTitle));
    return QSet<QString>(values.begin(), values.end());
}

QVector<QSharedPointer<AlarmInstance>> DemoScenario::shownAlarms() const
{
    QVector<QSharedPointer<AlarmInstance>> alarms;
    const auto *proxy = qobject_cast<const AlarmsProxyModel *>(m_table->model());
    for (int row = 0; proxy && row < proxy->rowCount(); ++row) {
        if (const QSharedPointer<AlarmInstance> alarm = proxy->getAlarmAtRow(proxy->index(row, 1)))
            alarms << alarm;
    }
    return alarms;
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

void DemoScenario::backToLive()
{
    QTest::keyClick(m_modeCombo, Qt::Key_Up);
    QCOMPARE(m_modeCombo->currentText(), QStringLiteral("Live"));
    applySource();
}

QString DemoScenario::freshTempFile(const QString &pattern) const
{
    const QString file = QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation))
                             .filePath(pattern.arg(QCoreApplication::applicationPid()));
    QFile::remove(file);
    return file;
}

void DemoScenario::chooseInList(QComboBox *list, const QString &text)
{
    list->setFocus();
    for (int i = 0; i < list->count() && list->currentText() != text; ++i)
        QTest::keyClick(list, Qt::Key_Down);
    QCOMPARE(list->currentText(), text);
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

void DemoScenario::chooseSystems(const QStringList &systems)
{
    SystemSelectionTable *popup = m_selector->getSystemSelectionTable();
    QTest::mouseClick(m_systemsButton, Qt::LeftButton);
    QVERIFY(popup->isVisible());
    auto *view = control<QAbstractItemView>(popup, "tableViewSystems");
    QVERIFY(view);
    const QAbstractItemModel *model = view->model();
    QVERIFY2(model->rowCount() > systems.size(), "the simulated systems are not offered");
    for (int row = 0; row < model->rowCount(); ++row) {
        const QModelIndex index = model->index(row, 0);
        const bool wanted = systems.contains(index.data().toString());
        if ((index.data(Qt::CheckStateRole).toInt() == Qt::Checked) != wanted) {
            // Space toggles the current row's check box, as a click on it does.
            view->setCurrentIndex(index);
            QTest::keyClick(view, Qt::Key_Space);
        }
        QCOMPARE(index.data(Qt::CheckStateRole).toInt() == Qt::Checked, wanted);
    }
    QCOMPARE(m_systemsButton->text(),
             QStringLiteral("Systems %1 / %2").arg(systems.size()).arg(model->rowCount()));
    QTest::mouseClick(control<QAbstractButton>(popup, "pushButtonClose"), Qt::LeftButton);
    QVERIFY(!popup->isVisible());
}

void DemoScenario::chooseTimeRange(const QString &type, int count)
{
    TimeRangeEditor *popup = m_selector->getTimeRangeEditor();
    QTest::mouseClick(m_timeRangeButton, Qt::LeftButton);
    QVERIFY(popup->isVisible());
    auto *typeCombo = control<QComboBox>(popup, "comboBoxType");
    auto *countBox = control<QSpinBox>(popup, "spinBoxCount");
    QVERIFY(typeCombo && countBox);
    const int typeIndex = typeCombo->findText(type);
    QVERIFY(typeIndex >= 0);
    while (typeCombo->currentIndex() != typeIndex)
        QTest::keyClick(typeCombo, typeCombo->currentIndex() < typeIndex ? Qt::Key_Down : Qt::Key_Up);
    QVERIFY(countBox->isVisible());
    for (int steps = 0; countBox->value() != count && steps < 100; ++steps)
        QTest::keyClick(countBox, countBox->value() < count ? Qt::Key_Up : Qt::Key_Down);
    QCOMPARE(countBox->value(), count);
    QTest::keyClick(popup, Qt::Key_Escape);
    QVERIFY(!popup->isVisible());
    QVERIFY2(m_timeRangeButton->text().startsWith(QStringLiteral("Last %1").arg(count)),
             qPrintable(m_timeRangeButton->text()));
}

QString DemoScenario::stateText() const
{
    return m_stateLabel->text();
}

void DemoScenario::answerFileDialog(const QString &file)
{
    answerNextModal<QFileDialog>(this, [file](QFileDialog *dialog) {
        // The dialog leaves its name field alone while the field has the
        // focus, and then takes the accept as a click on an empty name and
        // stays open.
        if (QWidget *focused = dialog->focusWidget())
            focused->clearFocus();
        dialog->selectFile(file);
        QVERIFY2(dialog->selectedFiles().contains(file), qPrintable(dialog->selectedFiles().join(QLatin1Char(','))));
        static_cast<QDialog *>(dialog)->accept(); // QFileDialog hides it
    });
}

void DemoScenario::answerCsvOptions(QChar separator, const QString &file)
{
    answerNextModal<QDialog>(this, [this, separator, file](QDialog *dialog) {
        QCOMPARE(dialog->objectName(), QStringLiteral("DialogCsvOptions"));
        control<QRadioButton>(dialog, "radioButtonAllRows")->setChecked(true);
        control<QCheckBox>(dialog, "checkBoxHeader")->setChecked(true);
        control<QCheckBox>(dialog, "checkBoxGrouping")->setChecked(false);
        control<QLineEdit>(dialog, "lineEditSeparator")->setText(QString(separator));
        // The file dialog follows once the options are confirmed.
        answerFileDialog(file);
        control<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok)->click();
    });
}
