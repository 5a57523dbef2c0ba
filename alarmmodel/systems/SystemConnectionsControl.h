#pragma once

#include "alarmmodel_export.h"

#include <QObject>
#include <QSet>
#include <QStringList>

// Which systems the alarm model currently receives alarms from. A system
// whose alarm connection is down keeps its alarms in the model (they show the
// lost connection), so this is the place to ask whether they are current.
class ALARMMODEL_EXPORT SystemConnectionsControl : public QObject
{
    Q_OBJECT
public:
    explicit SystemConnectionsControl(QObject *parent = nullptr);

    bool isSystemConnected(const QString &system) const;
    // Sorted by name.
    QStringList getConnectedSystems() const;

    void setSystemConnected(const QString &system, bool connected);
    void setConnectedSystems(const QStringList &systems);

signals:
    void connectedSystemsChanged();

private:
    QSet<QString> m_connected;
};
