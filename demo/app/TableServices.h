#pragma once

#include "ExportCsvOptions.h"
#include "ExporterCSV.h"
#include "GroupingConfiguration.h"
#include "MsgLoggingProducer.h"

#include <QModelIndex>
#include <QObject>
#include <QPointer>

class AlarmsProxyModel;
class AlarmSimulator;
class InEwoFocusProcessor;
class QAction;
class QMainWindow;
class QTreeView;
class TreeNodesState;

// What the demo window does around its alarm table with the library's table
// services: it keeps the groups the operator opened across rebuilds of the
// grouped table, exports the table to CSV (File > Export CSV...), and walks
// the window with Tab and Shift+Tab in geometric order.
class TableServices : public QObject, public MsgLoggingProducer
{
    Q_OBJECT
public:
    TableServices(QMainWindow *window, QTreeView *table, AlarmsProxyModel *proxy, AlarmSimulator *simulator,
                  const MsgLoggingProducer *logger);
    ~TableServices() override;

    QAction *getExportAction() const { return m_exportAction; }
    TreeNodesState *getTreeState() const { return m_treeState; }
    // Tab and Shift+Tab inside `area`, the panel's tab groups as units.
    void setFocusArea(QWidget *area, const QList<QWidget *> &tabGroups);

    // Before the table is grouped anew, so that the shared levels are kept.
    void groupingChanged(const GroupingConfiguration &grouping);
    // After the grouped table was rebuilt.
    void tableRebuilt();
    // Groups that come back in a live burst open as the operator left them.
    void rowsInserted(const QModelIndex &parent, int first, int last);

public slots:
    bool exportCsv();

private:
    QMainWindow *m_window;
    QTreeView *m_table;
    AlarmsProxyModel *m_proxy;
    AlarmSimulator *m_simulator;
    TreeNodesState *m_treeState;
    QPointer<InEwoFocusProcessor> m_focus;
    QAction *m_exportAction;
    ExporterCSV m_exporter;
    ExportCsvOptions m_options;
};
