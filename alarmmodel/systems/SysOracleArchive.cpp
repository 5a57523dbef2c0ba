#include "SysOracleArchive.h"

SysOracleArchive::SysOracleArchive(QObject *parent) : QObject(parent) {}

QSharedPointer<SysOracleArchive> SysOracleArchive::getInstance()
{
    static const QSharedPointer<SysOracleArchive> instance(new SysOracleArchive);
    return instance;
}

void SysOracleArchive::setSystems(const QStringList &systems)
{
    QStringList unique;
    for (const QString &system : systems) {
        if (!system.isEmpty() && !unique.contains(system))
            unique.append(system);
    }
    if (unique == m_systems)
        return;
    m_systems = unique;
    emit contentChanged();
}
