#include "SystemRegistry.h"

namespace {
LazyAppObject<SystemRegistry> s_registry;

bool sameSystems(const QMap<unsigned int, SystemInfo> &a, const QMap<unsigned int, SystemInfo> &b)
{
    if (a.size() != b.size())
        return false;
    for (auto it = a.begin(), other = b.begin(); it != a.end(); ++it, ++other) {
        if (it.key() != other.key() || it->getName() != other->getName())
            return false;
    }
    return true;
}
} // namespace

SystemRegistry::SystemRegistry(QObject *parent)
    : QObject(parent)
{
    qRegisterMetaType<SystemInfo>();
    qRegisterMetaType<QMap<unsigned int, SystemInfo>>();
    m_systems.insert(1, SystemInfo(1, QStringLiteral("System1"), true));
}

SystemRegistry *SystemRegistry::instance()
{
    return s_registry.get();
}

unsigned int SystemRegistry::findSystem(const QString &name) const
{
    for (const SystemInfo &system : m_systems) {
        if (system.getName() == name)
            return system.getNumber();
    }
    return 0;
}

void SystemRegistry::setSystems(const QMap<unsigned int, SystemInfo> &systems)
{
    if (systems == m_systems)
        return;
    const bool listChanged = !sameSystems(systems, m_systems);
    m_systems = systems;
    if (listChanged)
        emit systemListChanged(m_systems);
    else
        emit systemConnectionsChanged(m_systems);
}

bool SystemRegistry::addSystem(const SystemInfo &system)
{
    if (system.getNumber() == 0 || m_systems.contains(system.getNumber())
        || findSystem(system.getName()) != 0)
        return false;
    m_systems.insert(system.getNumber(), system);
    emit systemListChanged(m_systems);
    return true;
}

bool SystemRegistry::removeSystem(unsigned int number)
{
    if (!m_systems.remove(number))
        return false;
    emit systemListChanged(m_systems);
    return true;
}

bool SystemRegistry::setConnected(unsigned int number, bool connected)
{
    const auto found = m_systems.find(number);
    if (found == m_systems.end())
        return false;
    if (found->isConnected() != connected) {
        found->setConnected(connected);
        emit systemConnectionsChanged(m_systems);
    }
    return true;
}
