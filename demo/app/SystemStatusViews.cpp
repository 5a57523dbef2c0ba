#include "SystemStatusViews.h"

#include "AlarmSimulator.h"
#include "AlarmsProxyModel.h"
#include "ConnectionMapWidget.h"
#include "DialogSystemConnections.h"
#include "MsgLoggerStatistics.h"

#include <QAction>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>

SystemStatusViews::SystemStatusViews(QMainWindow *window, AlarmsProxyModel *proxy, AlarmSimulator *simulator,
                                     const QSharedPointer<MsgLoggerModel> &log)
    : QObject(window), m_window(window), m_proxy(proxy), m_simulator(simulator),
      m_map(new ConnectionMapWidget(window)), m_logLabel(new MsgLoggerStatistics(window)),
      m_menu(window->menuBar()->addMenu(tr("S&ystems")))
{
    m_map->setObjectName(QStringLiteral("connectionMap"));
    m_map->copyLogSettings(proxy);
    m_map->setProxyModel(proxy);
    connect(m_map, &ConnectionMapWidget::activated, this, &SystemStatusViews::showSystemsDialog);

    m_logLabel->setObjectName(QStringLiteral("logStatistics"));
    m_logLabel->setToolTip(tr("Messages of the alarm screen; click for the history"));
    m_logLabel->setMargin(2);
    m_logLabel->setModel(log);
    connect(m_logLabel, &MsgLoggerStatistics::criticalMessage, window,
            [window](const QString &text) { window->statusBar()->showMessage(tr("Error: %1").arg(text)); });

    window->statusBar()->addPermanentWidget(m_map);
    window->statusBar()->addPermanentWidget(m_logLabel);

    m_menu->setObjectName(QStringLiteral("systemsMenu"));
    connect(m_simulator, &AlarmSimulator::configChanged, this, &SystemStatusViews::rebuildSystemsMenu);
    connect(m_simulator, &AlarmSimulator::systemConnectionChanged, this,
            &SystemStatusViews::systemConnectionChanged);
    rebuildSystemsMenu();
}

void SystemStatusViews::showSystemsDialog()
{
    if (!m_dialog) {
        m_dialog = new DialogSystemConnections(m_proxy, m_window);
        m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
}

void SystemStatusViews::rebuildSystemsMenu()
{
    m_menu->clear();
    QAction *list = m_menu->addAction(tr("System &Connections..."), this, &SystemStatusViews::showSystemsDialog);
    list->setObjectName(QStringLiteral("systemConnectionsAction"));
    m_menu->addSeparator();
    // Only live systems have a connection to lose; archive-only ones are left out.
    for (const QString &name : m_simulator->getSystemNames()) {
        const auto system = m_simulator->getSystem(name);
        if (!system || !system->getConfig().live)
            continue;
        QAction *action = m_menu->addAction(tr("%1 connected").arg(name));
        action->setObjectName(QStringLiteral("connectSystemAction_") + name);
        action->setCheckable(true);
        action->setChecked(m_simulator->isSystemConnected(name));
        connect(action, &QAction::toggled, this,
                [this, name](bool connected) { m_simulator->setSystemConnected(name, connected); });
    }
}

void SystemStatusViews::systemConnectionChanged(const QString &system, bool connected)
{
    // The simulation's own connection cycles move the check marks too.
    if (auto *action = m_menu->findChild<QAction *>(QStringLiteral("connectSystemAction_") + system))
        action->setChecked(connected);
}
