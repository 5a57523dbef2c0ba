#include "TableServices.h"

#include "AlarmSimulator.h"
#include "AlarmsProxyModel.h"
#include "InEwoFocusProcessor.h"
#include "TreeNodesState.h"

#include <QAction>
#include <QMainWindow>
#include <QProgressDialog>
#include <QStatusBar>
#include <QTreeView>

TableServices::TableServices(QMainWindow *window, QTreeView *table, AlarmsProxyModel *proxy,
                             AlarmSimulator *simulator, const MsgLoggingProducer *logger)
    : QObject(window)
    , MsgLoggingProducer(logger)
    , m_window(window)
    , m_table(table)
    , m_proxy(proxy)
    , m_simulator(simulator)
    , m_treeState(new TreeNodesState(logger, this))
    , m_exportAction(new QAction(tr("&Export CSV..."), this))
    , m_exporter(logger)
{
    m_treeState->setTreeView(m_table);
    m_exportAction->setObjectName(QStringLiteral("exportCsvAction"));
    connect(m_exportAction, &QAction::triggered, this, &TableServices::exportCsv);
}

TableServices::~TableServices() = default;

void TableServices::setFocusArea(QWidget *area, const QList<QWidget *> &tabGroups)
{
    delete m_focus;
    m_focus = new InEwoFocusProcessor(this, area);
    for (QWidget *group : tabGroups)
        m_focus->addTabGroup(group);
}

void TableServices::groupingChanged(const GroupingConfiguration &grouping)
{
    m_treeState->setGroupingConfig(grouping);
}

void TableServices::tableRebuilt()
{
    m_treeState->restoreState();
}

void TableServices::rowsInserted(const QModelIndex &parent, int first, int last)
{
    for (int row = first; row <= last; ++row) {
        if (!m_proxy->getAlarmAtRow(m_proxy->index(row, 0, parent))) {
            m_treeState->restoreState();
            return;
        }
    }
}

bool TableServices::exportCsv()
{
    const QItemSelectionModel *selection = m_table->selectionModel();
    const bool hasSelection = selection && selection->hasSelection();
    if (!m_options.getOptions(m_options.getSeparator(), hasSelection, m_window))
        return false;
    m_exporter.setSeparatorCSV(m_options.getSeparator());
    const bool allRows = m_options.isAllRows() || !hasSelection;
    const int total = allRows ? m_proxy->getVisibleAlarmCount() : int(selection->selectedRows().size());

    // A large table takes a while: the operator sees how far it got and can
    // stop it. The live feed holds still meanwhile, so the rows stay put.
    QProgressDialog progress(tr("Exporting alarms to CSV..."), tr("Cancel"), 0, qMax(1, total), m_window);
    progress.setWindowTitle(tr("Export CSV"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(500);
    progress.setAutoReset(false);
    progress.setValue(0);
    m_exporter.setProgressHandler(
        [&progress, total](int rows) {
            progress.setValue(qMin(rows, total));
            return !progress.wasCanceled();
        },
        200);
    const bool live = m_simulator && m_simulator->isRunning();
    if (live)
        m_simulator->stop();
    const bool ok = m_exporter.exportToCsv(m_table, m_proxy->getGroupingDepth(), QString(), allRows,
                                           m_options.isHeader(), m_options.isGrouping(), {});
    if (live)
        m_simulator->start();
    m_exporter.setProgressHandler(nullptr);
    progress.close();

    if (ok) {
        m_window->statusBar()->showMessage(tr("Alarms exported to CSV in %1").arg(m_exporter.getLastDirectory()));
    } else {
        const QString text = tr("The alarms were not exported: %1").arg(m_exporter.getLastError());
        ASLOG(this, MsgLoggerEnums::Warning, text);
        m_window->statusBar()->showMessage(text);
    }
    return ok;
}
