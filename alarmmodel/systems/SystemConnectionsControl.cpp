#include "SystemConnectionsControl.h"

#include <algorithm>

SystemConnectionsControl::SystemConnectionsControl(QObject *parent) : QObject(parent) {}

bool SystemConnectionsControl::isSystemConnected(const QString &system) const
{
    return m_connected.contains(system);
}

QStringList SystemConnectionsControl::getConnectedSystems() const
{
    QStringList systems = m_connected.values();
    std::sort(systems.begin(), systems.end());
    return systems;
}

void SystemConnectionsControl::setSystemConnected(const QString &system, bool connected)
{
    if (system.isEmpty() || m_connected.contains(system) == connected)
        return;
    if (connected)
        m_connected.insert(system);
    else
        m_connected.remove(system);
    emit connectedSystemsChanged();
}

void SystemConnectionsControl::setConnectedSystems(const QStringList &systems)
{
    QSet<QString> connected(systems.begin(), systems.end());
    connected.remove(QString());
    if (connected == m_connected)
        return;
    m_connected = connected;
    emit connectedSystemsChanged();
}
