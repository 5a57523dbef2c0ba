#pragma once

#include "ActionAccessOwner.h"
#include "AlarmScreenConfiguration.h"
#include "Constants.h"
#include "MsgLoggingProducer.h"
#include "QuickCellFilter.h"
#include "SourceAndFilter.h"

#include <QMainWindow>
#include <QSharedPointer>

class AlarmContextMenu;
class AlarmClassColors;
class AlarmsModel;
class AlarmsProxyModel;
class AlarmSimulator;
class AlarmSource;
class DemoProject;
class MouseEventProcessor;
class DemoStatistics;
class QAction;
class QLabel;
class QVBoxLayout;
class QTreeView;
class SourceAndFiltersUi;
class Spoiler;
class TableServices;

// The demo alarm screen: it plays the part of the widget that owns the
// component library. It builds the source and filter panel through the
// factory, shares one action-access object with every component, shows the
// alarm table (flat or grouped) below the panel, and answers every request
// of the panel: applying a source and filter, aborting a query, the quick
// filter, and saving or loading a filter.
class MainWindow : public QMainWindow, public ActionAccessOwner, public MsgLoggingProducer
{
    Q_OBJECT
public:
    MainWindow(const DemoProject &project, const MsgLoggingProducer *logger, QWidget *parent = nullptr);
    ~MainWindow() override;

    SourceAndFiltersUi *getPanel() const { return m_panel; }
    QTreeView *getAlarmTable() const { return m_table; }
    AlarmsProxyModel *getProxyModel() const { return m_proxy; }
    AlarmSource *getAlarmSource() const { return m_source; }
    AlarmSimulator *getSimulator() const { return m_simulator; }
    QAction *getGroupedAction() const { return m_groupedAction; }
    TableServices *getTableServices() const { return m_services; }
    MouseEventProcessor *getMouseEventProcessor() const { return m_mouseProcessor; }
    const SourceAndFilter &getAppliedFilter() const { return m_appliedFilter; }
    bool hasShownAlarms() const { return m_alarmsShown; }
    // Problems found while building the window (besides those of the project).
    QStringList getProblems() const { return m_problems; }

public slots:
    void applyStructuredFilter(const SourceAndFilter &filter, int type);
    void abortQuery();
    void quickFilterChanged(const QuickCellFilter &filter);
    void filterActionRequested(const QString &action);
    void setGrouped(bool grouped);

signals:
    // The table shows alarms for the first time.
    void firstAlarmsShown();

private:
    void createPanel(QWidget *parent);
    void placeFilterArea(QVBoxLayout *layout);
    void createStatistics(const DemoProject &project, QVBoxLayout *layout);
    // Why the configured panel plug-in gave no panel: a refused name, no file,
    // a file that is no plug-in or one of another interface.
    QString describeUnusablePlugin(const QString &name) const;
    void shareActionAccess();
    void createActions();
    void createSimulationActions();
    void keepOperatorsPlace();
    void connectPanel();
    void connectSource();
    void createMouseProcessor();
    void saveFilter();
    void loadFilter();
    void showLoadedFilter(const SourceAndFilter &filter);
    void sourceStateChanged(int state);
    void updateAlarmCount();
    void expandGroups(const QModelIndex &parent, int first, int last);
    void reportProblem(const QString &text);
    void showStatus(const QString &text);

    AlarmScreenConfiguration m_config;
    QSharedPointer<AlarmsModel> m_model;
    AlarmsProxyModel *m_proxy = nullptr;
    AlarmSimulator *m_simulator = nullptr;
    AlarmSource *m_source = nullptr;
    SourceAndFiltersUi *m_panel = nullptr;
    Spoiler *m_filterSpoiler = nullptr;
    QTreeView *m_table = nullptr;
    DemoStatistics *m_statistics = nullptr;
    AlarmClassColors *m_classColors = nullptr;
    QLabel *m_countLabel = nullptr;
    TableServices *m_services = nullptr;
    QAction *m_groupedAction = nullptr;
    QAction *m_saveFilterAction = nullptr;
    QAction *m_loadFilterAction = nullptr;
    MouseEventProcessor *m_mouseProcessor = nullptr;
    AlarmContextMenu *m_contextMenu = nullptr;
    QAction *m_floodAction = nullptr;
    SourceAndFilter m_appliedFilter;
    QString m_filterDirectory;
    QStringList m_problems;
    bool m_alarmsShown = false;
    bool m_showingLoadedFilter = false;
};
