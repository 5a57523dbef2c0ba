#pragma once

#include "LazyAppObject.h"
#include "SystemInfo.h"

#include <QMap>
#include <QObject>

// The systems of the installation and their connection states, kept up to
// date by the host. It starts with the own system, number 1 "System1",
// connected.
class PLATFORM_EXPORT SystemRegistry : public QObject
{
    Q_OBJECT
public:
    static SystemRegistry *instance();

    QMap<unsigned int, SystemInfo> getSystems() const { return m_systems; }
    // A default SystemInfo (number 0) for an unknown number.
    SystemInfo getSystem(unsigned int number) const { return m_systems.value(number); }
    // Number 0 for an unknown name.
    unsigned int findSystem(const QString &name) const;
    unsigned int getOwnSystemNumber() const { return m_ownSystem; }

    // Replaces the whole list. Emits systemListChanged when systems came, went
    // or were renamed, else systemConnectionsChanged when a state changed.
    void setSystems(const QMap<unsigned int, SystemInfo> &systems);
    // False when the number is 0 or the number or the name is taken.
    bool addSystem(const SystemInfo &system);
    bool removeSystem(unsigned int number);
    // False for an unknown number; a signal only when the state changes.
    bool setConnected(unsigned int number, bool connected);
    void setOwnSystemNumber(unsigned int number) { m_ownSystem = number; }

signals:
    void systemListChanged(const QMap<unsigned int, SystemInfo> &systems);
    void systemConnectionsChanged(const QMap<unsigned int, SystemInfo> &systems);

private:
    friend class LazyAppObject<SystemRegistry>;
    explicit SystemRegistry(QObject *parent);

    QMap<unsigned int, SystemInfo> m_systems;
    unsigned int m_ownSystem = 1;
};
