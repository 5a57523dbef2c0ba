#pragma once

#include "AlarmBurst.h"
#include "AlarmChanges.h"
#include "AlarmInstance.h"
#include "MsgLoggingProducer.h"
#include "alarmmodel_export.h"

#include <QHash>
#include <QObject>
#include <QVector>

class AlarmsModelConsumer;
class SystemConnectionsControl;

// The alarms of the current source (live alarms or the result of a history
// query). The model keeps no order: the table proxy sorts and groups, other
// consumers count. Changes arrive in bursts; each burst is applied in one
// step and every consumer is told about it once, after the model holds the
// new state.
class ALARMMODEL_EXPORT AlarmsModel : public QObject, public MsgLoggingProducer
{
    Q_OBJECT
public:
    explicit AlarmsModel(const MsgLoggingProducer *logger = nullptr, QObject *parent = nullptr);
    ~AlarmsModel() override;

    int count() const { return m_alarms.size(); }
    const QVector<AlarmInstancePtr> &getAlarms() const { return m_alarms; }
    AlarmInstancePtr getAlarm(const AlarmIdent &ident) const;

    // Replaces the whole content (a new source, a new query result).
    void setAlarms(const QVector<AlarmInstancePtr> &alarms);
    void clear() { setAlarms({}); }
    // Applies one burst; returns what it changed. Removing an alarm that is
    // not there is ignored; within a burst a later operation on the same
    // alarm wins over an earlier one.
    AlarmChanges applyBurst(const AlarmBurst &burst);

    // Consumers are not owned; a consumer removes itself before it dies.
    void addConsumer(AlarmsModelConsumer *consumer);
    void removeConsumer(AlarmsModelConsumer *consumer);
    bool hasConsumer(AlarmsModelConsumer *consumer) const { return m_consumers.contains(consumer); }

    SystemConnectionsControl *getConnectionControl() const { return m_connections; }

signals:
    void alarmsReset();
    void alarmsChanged(int added, int updated, int removed);

private:
    void insertAlarm(const AlarmInstancePtr &alarm);
    void removeAt(int pos);

    QVector<AlarmInstancePtr> m_alarms;
    QHash<AlarmIdent, int> m_positions;
    QVector<AlarmsModelConsumer *> m_consumers;
    SystemConnectionsControl *m_connections;
};
