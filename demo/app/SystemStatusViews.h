#pragma once

#include "DialogSystemConnections.h"

#include <QObject>
#include <QPointer>
#include <QSharedPointer>

class AlarmSimulator;
class AlarmsProxyModel;
class ConnectionMapWidget;
class MsgLoggerModel;
class MsgLoggerStatistics;
class QAction;
class QMainWindow;
class QMenu;

// The status bar's views of the systems and of the log, and the operator's
// control over the simulated connections: the connection map (a click on a
// system opens the systems dialog), the message counter (a click opens the
// message history), and a Systems menu that disconnects and reconnects each
// live simulated system.
class SystemStatusViews : public QObject
{
    Q_OBJECT
public:
    SystemStatusViews(QMainWindow *window, AlarmsProxyModel *proxy, AlarmSimulator *simulator,
                      const QSharedPointer<MsgLoggerModel> &log);

    ConnectionMapWidget *getConnectionMap() const { return m_map; }
    MsgLoggerStatistics *getLogLabel() const { return m_logLabel; }
    // The open systems dialog, null while none is open.
    DialogSystemConnections *getSystemsDialog() const { return m_dialog; }

    void showSystemsDialog();

private:
    void rebuildSystemsMenu();
    void systemConnectionChanged(const QString &system, bool connected);

    QMainWindow *m_window;
    AlarmsProxyModel *m_proxy;
    AlarmSimulator *m_simulator;
    ConnectionMapWidget *m_map;
    MsgLoggerStatistics *m_logLabel;
    QMenu *m_menu;
    QPointer<DialogSystemConnections> m_dialog;
};
