#pragma once

#include "alarmmodel_export.h"

#include <QObject>
#include <QSharedPointer>
#include <QStringList>

// The systems whose alarm archives a history query can read. There is one
// list per process; the alarm source keeps it current and everybody who
// offers a choice of systems follows "contentChanged()".
class ALARMMODEL_EXPORT SysOracleArchive : public QObject
{
    Q_OBJECT
public:
    explicit SysOracleArchive(QObject *parent = nullptr);

    static QSharedPointer<SysOracleArchive> getInstance();

    // In the order the systems were announced, each once.
    QStringList getSystems() const { return m_systems; }
    bool hasSystem(const QString &system) const { return m_systems.contains(system); }
    void setSystems(const QStringList &systems);

signals:
    void contentChanged();

private:
    QStringList m_systems;
};
