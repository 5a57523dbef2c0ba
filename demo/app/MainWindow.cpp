#include "MainWindow.h"

#include "AlarmClassColors.h"
#include "AlarmContextMenu.h"
#include "AlarmSimulator.h"
#include "AlarmSource.h"
#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "DemoProject.h"
#include "DemoStatistics.h"
#include "EwoActions.h"
#include "FilterStatisticsView.h"
#include "MouseEventProcessor.h"
#include "Resources.h"
#include "SourceAndFiltersUi.h"
#include "SourceAndFiltersUiFactory.h"
#include "SourceAndFiltersUiFactoryPlugin.h"
#include "Spoiler.h"
#include "SystemConnectionsControl.h"
#include "SystemStatusViews.h"
#include "TableServices.h"
#include "ViewTopAnchor.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QJsonObject>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPluginLoader>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

MainWindow::MainWindow(const DemoProject &project, const MsgLoggingProducer *logger, QWidget *parent)
    : QMainWindow(parent)
    , MsgLoggingProducer(logger)
    , m_config(project.getConfiguration())
    , m_model(QSharedPointer<AlarmsModel>::create(logger))
    , m_appliedFilter(logger)
    , m_filterDirectory(QDir(project.getDirectory()).filePath(QStringLiteral("filters")))
{
    setWindowTitle(project.getTitle().isEmpty() ? tr("Alarm screen demo") : project.getTitle());
    resize(1280, 720);

    auto *central = new QWidget(this);
    auto *layout = new QVBoxLayout(central);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    setCentralWidget(central);

    m_proxy = new AlarmsProxyModel(this, this);
    m_proxy->setConfiguration(m_config);
    m_proxy->setGrouping(GroupingConfiguration(this, QString()));
    m_proxy->setAlarmsModel(m_model);

    createPanel(central);
    if (m_panel)
        placeFilterArea(layout);

    m_table = new QTreeView(central);
    m_table->setObjectName(QStringLiteral("alarmTable"));
    m_table->setModel(m_proxy);
    m_table->setUniformRowHeights(true);
    m_table->setAlternatingRowColors(true);
    m_table->setSortingEnabled(true);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->header()->setStretchLastSection(true);
    // Newest alarms first.
    const QList<ColumnDefinition> &columns = m_config.getColumns();
    for (int column = 0; column < columns.size(); ++column) {
        if (columns.at(column).getId() == QLatin1String("time"))
            m_table->sortByColumn(column, Qt::DescendingOrder);
    }
    layout->addWidget(m_table, 1);
    createStatistics(project, layout);

    m_countLabel = new QLabel(this);
    m_countLabel->setObjectName(QStringLiteral("alarmCountLabel"));
    statusBar()->addPermanentWidget(m_countLabel);

    // The simulated systems run from the start, whatever the table shows, so
    // that going back to live alarms shows what is pending at that moment.
    m_simulator = new AlarmSimulator(this);
    m_simulator->setConfig(project.getSimulation(), QDateTime::currentMSecsSinceEpoch());
    m_source = new AlarmSource(m_simulator, m_model, this, this);
    m_simulator->start();
    m_services = new TableServices(this, m_table, m_proxy, m_simulator, this);

    createActions();
    createSimulationActions();
    keepOperatorsPlace();
    shareActionAccess();
    connectPanel();
    connectSource();
    m_services->setFocusArea(central, m_panel ? m_panel->getTabGroups() : QList<QWidget *>());
    createMouseProcessor();
    new SystemStatusViews(this, m_proxy, m_simulator, getLogBuffer());

    connect(m_proxy, &QAbstractItemModel::rowsInserted, this, &MainWindow::expandGroups);
    connect(m_proxy, &QAbstractItemModel::rowsInserted, this, &MainWindow::updateAlarmCount);
    connect(m_proxy, &QAbstractItemModel::rowsRemoved, this, &MainWindow::updateAlarmCount);
    connect(m_proxy, &QAbstractItemModel::modelReset, this, [this] {
        if (m_groupedAction->isChecked())
            m_services->tableRebuilt();
        updateAlarmCount();
    });

    // Start as an operator would: live alarms, no filter.
    setGrouped(project.isGroupedAtStart());
    applyStructuredFilter(m_panel ? m_panel->getFilter() : SourceAndFilter(this), 0);
    const QStringList problems = project.getProblems() + m_problems;
    if (!problems.isEmpty())
        showStatus(tr("%n problem(s) found, see the log; the first: %1", nullptr, int(problems.size()))
                       .arg(problems.first()));
}

MainWindow::~MainWindow()
{
    // The panel goes first: its quick filter reports a finished edit when it
    // loses the focus on the way out, and nobody is left to apply it.
    delete m_panel;
    // The proxy is a consumer of the model; let it go before the model does.
    m_table->setModel(nullptr);
    delete m_proxy;
}

void MainWindow::createPanel(QWidget *parent)
{
    SourceAndFiltersUiFactory factory(this);
    m_panel = factory.create(m_config, parent);
    const FilterWidgetConfiguration &widgetConfig = m_config.getFilterWidgetConfig();
    if (m_panel || widgetConfig.isNoPanel())
        return;
    reportProblem(tr("%1; using the built-in panel").arg(describeUnusablePlugin(widgetConfig.getPanelPluginName())));
    FilterWidgetConfiguration builtIn(widgetConfig);
    builtIn.setPanelPluginName(QString());
    m_config.setFilterWidgetConfig(builtIn);
    m_panel = factory.create(m_config, parent);
}

void MainWindow::placeFilterArea(QVBoxLayout *layout)
{
    // The filter area folds away above the table. Its place out of the
    // section is a splitter, which keeps a placeholder while it is folded.
    QWidget *central = layout->parentWidget();
    auto *splitter = new QSplitter(Qt::Vertical, central);
    splitter->setObjectName(QStringLiteral("filterSplitter"));
    splitter->addWidget(m_panel);
    layout->addWidget(splitter);
    m_filterSpoiler = new Spoiler(tr("Source and filters"), central);
    m_filterSpoiler->setObjectName(QStringLiteral("filterSpoiler"));
    layout->addWidget(m_filterSpoiler);
    m_filterSpoiler->setMainWidget(m_panel, splitter, m_filterSpoiler);
    m_filterSpoiler->setInSpoiler(true);
    splitter->hide();
}

void MainWindow::createStatistics(const DemoProject &project, QVBoxLayout *layout)
{
    // Alarm classes in the colours of the project's colour database, and the
    // statistics bar above the table.
    m_classColors = new AlarmClassColors(m_proxy, m_table, this);
    m_table->setItemDelegate(m_classColors);
    m_statistics = new DemoStatistics(project.getDirectory(), m_config.getWildcardConfig(), m_model, this);
    layout->insertWidget(layout->indexOf(m_table), m_statistics->getView());
    if (!m_statistics->getView()->getErrorText().isEmpty())
        m_problems.append(tr("no statistics bar: %1").arg(m_statistics->getView()->getErrorText()));
    connect(m_statistics, &DemoStatistics::problem, this, &MainWindow::reportProblem);
    connect(m_statistics, &DemoStatistics::status, this, &MainWindow::showStatus);
    menuBar()->addMenu(tr("&Statistics"))->addAction(m_statistics->getLoadAction());
}

QString MainWindow::describeUnusablePlugin(const QString &name) const
{
    if (!SourceAndFiltersUiFactory::isPlainPluginName(name))
        return tr("the panel plug-in name '%1' was refused: it must be a plain file name").arg(name);
    // The factory tried the project paths from the last one; its first
    // candidate is the one to explain.
    const QStringList &paths = Resources::getProjectPaths();
    QString file;
    for (int i = paths.size() - 1; i >= 0 && file.isEmpty(); --i) {
        const QString candidate = QDir(paths.at(i)).filePath(QStringLiteral("bin/plugins/%1.so").arg(name));
        if (QFileInfo::exists(candidate))
            file = candidate;
    }
    if (file.isEmpty())
        return tr("the panel plug-in '%1' was not found in the project's bin/plugins folder").arg(name);
    QPluginLoader loader(file);
    const QJsonObject metaData = loader.metaData();
    if (metaData.isEmpty())
        return tr("the panel plug-in file %1 is not a plug-in (%2)").arg(file, loader.errorString());
    const QString iid = metaData.value(QLatin1String("IID")).toString();
    if (iid != QLatin1String(qobject_interface_iid<SourceAndFiltersUiFactoryPlugin *>()))
        return tr("the panel plug-in file %1 is a plug-in of another interface (%2)").arg(file, iid);
    return tr("the panel plug-in file %1 could not be used, see the log").arg(file);
}

void MainWindow::shareActionAccess()
{
    // Every component that shows actions works on the owner's access object,
    // so that one decision about an action reaches all of its controls.
    if (!m_panel)
        return;
    for (QWidget *widget : m_panel->findChildren<QWidget *>()) {
        if (auto *user = dynamic_cast<ActionAccessUser *>(widget))
            user->setActionAccess(getActionAccess());
    }
}

void MainWindow::createActions()
{
    QMenu *fileMenu = menuBar()->addMenu(tr("&File"));
    fileMenu->addAction(m_services->getExportAction());
    fileMenu->addSeparator();
    QAction *quit = fileMenu->addAction(tr("&Quit"), this, &QWidget::close);
    quit->setShortcut(QKeySequence::Quit);

    QMenu *filterMenu = menuBar()->addMenu(tr("F&ilter"));
    m_saveFilterAction = filterMenu->addAction(tr("&Save Filter..."), this,
                                               [this] { filterActionRequested(EwoActions::SaveFilter); });
    m_saveFilterAction->setObjectName(QStringLiteral("saveFilterAction"));
    m_loadFilterAction = filterMenu->addAction(tr("&Load Filter..."), this,
                                               [this] { filterActionRequested(EwoActions::LoadFilter); });
    m_loadFilterAction->setObjectName(QStringLiteral("loadFilterAction"));
    registerActionControl(EwoActions::SaveFilter, m_saveFilterAction);
    registerActionControl(EwoActions::LoadFilter, m_loadFilterAction);

    QMenu *viewMenu = menuBar()->addMenu(tr("&View"));
    m_groupedAction = viewMenu->addAction(tr("&Grouped"));
    m_groupedAction->setObjectName(QStringLiteral("groupedAction"));
    m_groupedAction->setCheckable(true);
    const GroupingConfiguration &grouping = m_config.getGroupingConfig();
    if (grouping.isGrouped()) {
        m_groupedAction->setToolTip(tr("Group the alarms: %1").arg(grouping.getName()));
    } else {
        m_groupedAction->setEnabled(false);
        m_groupedAction->setToolTip(tr("The screen configuration defines no grouping"));
    }
    connect(m_groupedAction, &QAction::toggled, this, &MainWindow::setGrouped);

    QToolBar *toolBar = addToolBar(tr("Alarm table"));
    toolBar->setObjectName(QStringLiteral("alarmTableToolBar"));
    toolBar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    toolBar->addAction(m_groupedAction);
    toolBar->addSeparator();
    toolBar->addAction(m_saveFilterAction);
    toolBar->addAction(m_loadFilterAction);
}

void MainWindow::createSimulationActions()
{
    // An operator (or a test) can see what a flood does to the table.
    QMenu *simulationMenu = menuBar()->addMenu(tr("&Simulation"));
    m_floodAction = simulationMenu->addAction(tr("Alarm &Flood"));
    m_floodAction->setObjectName(QStringLiteral("floodAction"));
    m_floodAction->setCheckable(true);
    m_floodAction->setToolTip(tr("The simulated systems deliver %1 alarm events a second")
                                  .arg(m_simulator->getConfig().floodEventsPerSecond));
    connect(m_floodAction, &QAction::toggled, m_simulator, &AlarmSimulator::setFloodMode);
}

void MainWindow::keepOperatorsPlace()
{
    // Bursts and filter changes arrive as layout changes; the row at the
    // top stays there through them.
    new ViewTopAnchor(m_table);
    connect(m_proxy, &QAbstractItemModel::layoutChanged, this, &MainWindow::updateAlarmCount);
}

void MainWindow::connectPanel()
{
    if (!m_panel)
        return;
    connect(m_panel, &SourceAndFiltersUi::applyStructuredFilter, this, &MainWindow::applyStructuredFilter);
    connect(m_panel, &SourceAndFiltersUi::abortQuery, this, &MainWindow::abortQuery);
    connect(m_panel, &SourceAndFiltersUi::quickFilterChanged, this, &MainWindow::quickFilterChanged);
    connect(m_panel, &SourceAndFiltersUi::filterActionRequested, this, &MainWindow::filterActionRequested);
    connect(m_panel, &SourceAndFiltersUi::structuredFilterChanged, this,
            [this] { m_panel->compareWithFilter(m_appliedFilter, false); });
}

void MainWindow::connectSource()
{
    connect(m_source, &AlarmSource::sourceStateChanged, this, &MainWindow::sourceStateChanged);
    if (!m_panel)
        return;
    connect(m_source, &AlarmSource::sourceCountsChanged, m_panel, &SourceAndFiltersUi::displaySourceCounts);
    SystemConnectionsControl *connections = m_model->getConnectionControl();
    connect(connections, &SystemConnectionsControl::connectedSystemsChanged, m_panel,
            [this, connections] { m_panel->connectedSystemsChanged(connections->getConnectedSystems()); });
}

void MainWindow::createMouseProcessor()
{
    // Clicks on the table go to the project's mouse-event script (or to this
    // window, as the configuration says); menus the script describes are
    // shown here.
    m_mouseProcessor = new MouseEventProcessor(this, this, this);
    m_mouseProcessor->setConfig(m_config.getMouseProcessorConfig());
    m_mouseProcessor->connectToTable(m_table);
    m_contextMenu = new AlarmContextMenu(this, m_simulator, m_groupedAction, this);
    connect(m_mouseProcessor, &MouseEventProcessor::contextMenuRequested, m_contextMenu, &AlarmContextMenu::show);
    connect(m_contextMenu, &AlarmContextMenu::statusMessage, this, &MainWindow::showStatus);
}

void MainWindow::applyStructuredFilter(const SourceAndFilter &filter, int type)
{
    if (m_showingLoadedFilter)
        return;
    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral("type %1, mode %2").arg(type).arg(Constants::sourceModeKey(filter.getSourceMode())));
    if (filter.getSourceMode() == Constants::SourceModeHistory) {
        // A refused query leaves the table as it is.
        QString error;
        if (!m_source->startHistory(filter, error)) {
            reportProblem(tr("History query refused: %1").arg(error));
            return;
        }
        m_proxy->setFilter(filter);
        showStatus(tr("History query started"));
    } else {
        // The system selection belongs to history queries; live mode shows
        // the alarms of every system.
        SourceAndFilter live(filter);
        live.setSystems({});
        m_proxy->setFilter(live);
        if (m_source->getMode() != Constants::SourceModeLive)
            m_source->startLive();
    }
    m_appliedFilter = filter;
    if (m_panel)
        m_panel->compareWithFilter(filter, false);
    updateAlarmCount();
}

void MainWindow::abortQuery()
{
    m_source->abortQuery();
}

void MainWindow::quickFilterChanged(const QuickCellFilter &filter)
{
    m_proxy->setQuickFilter(filter);
    if (m_panel)
        m_panel->setAppliedQuickFilter(m_proxy->getQuickFilter());
    updateAlarmCount();
}

void MainWindow::filterActionRequested(const QString &action)
{
    if (getActionState(action) != ActionAccess::Enabled) {
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("action %1 is not enabled").arg(action));
        return;
    }
    if (action == EwoActions::SaveFilter)
        saveFilter();
    else if (action == EwoActions::LoadFilter)
        loadFilter();
    else
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("the demo does not offer the action %1").arg(action));
}

void MainWindow::setGrouped(bool grouped)
{
    grouped = grouped && m_config.getGroupingConfig().isGrouped();
    if (m_groupedAction->isChecked() != grouped)
        m_groupedAction->setChecked(grouped); // comes back here through toggled()
    const GroupingConfiguration grouping = grouped ? m_config.getGroupingConfig() : GroupingConfiguration(this, QString());
    m_services->groupingChanged(grouping);
    m_proxy->setGrouping(grouping);
    m_table->setRootIsDecorated(grouped);
}

void MainWindow::saveFilter()
{
    QDir().mkpath(m_filterDirectory);
    const QString file =
        QFileDialog::getSaveFileName(this, tr("Save Filter"), m_filterDirectory, tr("Filter files (*.json)"),
                                     nullptr, QFileDialog::DontUseNativeDialog);
    if (file.isEmpty())
        return;
    m_filterDirectory = QFileInfo(file).absolutePath();
    const SourceAndFilter filter = m_panel ? m_panel->getFilter() : m_appliedFilter;
    QString error;
    if (filter.saveToFile(file, error)) {
        showStatus(tr("Filter saved to %1").arg(file));
    } else {
        reportProblem(tr("The filter was not saved: %1").arg(error));
        QMessageBox::warning(this, tr("Save Filter"), tr("The filter was not saved: %1").arg(error));
    }
}

void MainWindow::loadFilter()
{
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Load Filter"), m_filterDirectory, tr("Filter files (*.json)"),
                                     nullptr, QFileDialog::DontUseNativeDialog);
    if (file.isEmpty())
        return;
    m_filterDirectory = QFileInfo(file).absolutePath();
    SourceAndFilter filter(this);
    const WildcardConfig wildcards = m_config.getWildcardConfig();
    QString error;
    if (!filter.loadFromFile(file, error, &wildcards)) {
        // The filter shown and applied stays as it is.
        reportProblem(tr("The filter was not loaded: %1").arg(error));
        QMessageBox::warning(this, tr("Load Filter"), tr("The filter in %1 was not loaded: %2").arg(file, error));
        return;
    }
    showLoadedFilter(filter);
    applyStructuredFilter(filter, 0);
    showStatus(tr("Filter loaded from %1").arg(file));
}

void MainWindow::showLoadedFilter(const SourceAndFilter &filter)
{
    if (!m_panel)
        return;
    // Showing the filter in the editor asks to apply it; the caller applies
    // the filter as read instead, once.
    const QScopedValueRollback<bool> showing(m_showingLoadedFilter, true);
    QString error;
    if (filter.getSourceMode() == Constants::SourceModeHistory) {
        QDateTime start;
        QDateTime end;
        filter.getTimeRange().getEffectiveInterval(QDateTime::currentDateTime(), start, end);
        error = m_panel->prepareArchiveMode(start, end, filter.getSystems());
    } else {
        m_panel->prepareOnlineMode();
    }
    if (error.isEmpty() &&
        m_panel->displayFilter(filter, StructuredFilterUi::ApplyButtonFilter, error) == WFilter::DisplayFailed)
        reportProblem(tr("The loaded filter is applied but cannot be shown: %1").arg(error));
    else if (!error.isEmpty())
        reportProblem(tr("The loaded filter is applied but cannot be shown: %1").arg(error));
}

void MainWindow::sourceStateChanged(int state)
{
    if (state == Constants::QueryFailed)
        reportProblem(tr("History query failed: %1").arg(m_source->getErrorText()));
    if (m_panel)
        m_panel->displaySourceState(Constants::SourceState(state));
    updateAlarmCount();
}

void MainWindow::updateAlarmCount()
{
    const int shown = m_proxy->getVisibleAlarmCount();
    const QString mode = m_source && m_source->getMode() == Constants::SourceModeHistory ? tr("history")
                                                                                           : tr("live");
    m_countLabel->setText(tr("%1 of %2 alarms shown (%3)").arg(shown).arg(m_model->count()).arg(mode));
    if (shown > 0 && !m_alarmsShown) {
        m_alarmsShown = true;
        for (int column = 0; column < m_proxy->columnCount(); ++column)
            m_table->resizeColumnToContents(column);
        emit firstAlarmsShown();
    }
}

void MainWindow::expandGroups(const QModelIndex &parent, int first, int last)
{
    if (m_groupedAction->isChecked())
        m_services->rowsInserted(parent, first, last);
}

void MainWindow::reportProblem(const QString &text)
{
    m_problems.append(text);
    ASLOG(this, MsgLoggerEnums::Warning, text);
    showStatus(text);
}

void MainWindow::showStatus(const QString &text)
{
    statusBar()->showMessage(text);
}
