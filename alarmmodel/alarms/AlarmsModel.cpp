#include "AlarmsModel.h"

#include "AlarmsModelConsumer.h"
#include "SystemConnectionsControl.h"

AlarmsModel::AlarmsModel(const MsgLoggingProducer *logger, QObject *parent)
    : QObject(parent), MsgLoggingProducer(logger), m_connections(new SystemConnectionsControl(this))
{
}

AlarmsModel::~AlarmsModel()
{
    const QVector<AlarmsModelConsumer *> consumers = m_consumers;
    m_consumers.clear();
    for (AlarmsModelConsumer *consumer : consumers)
        consumer->modelDestroyed(*this);
}

AlarmInstancePtr AlarmsModel::getAlarm(const AlarmIdent &ident) const
{
    const auto it = m_positions.constFind(ident);
    return it == m_positions.constEnd() ? AlarmInstancePtr() : m_alarms.at(*it);
}

void AlarmsModel::setAlarms(const QVector<AlarmInstancePtr> &alarms)
{
    m_alarms.clear();
    m_positions.clear();
    m_alarms.reserve(alarms.size());
    m_positions.reserve(alarms.size());
    for (const AlarmInstancePtr &alarm : alarms) {
        if (!alarm)
            continue;
        const auto it = m_positions.constFind(alarm->getIdent());
        if (it != m_positions.constEnd()) {
            ASLOG(this, MsgLoggerEnums::Warning,
                  QStringLiteral("duplicate alarm %1 replaces the earlier one")
                      .arg(alarm->getIdent().toString()));
            m_alarms[*it] = alarm;
        } else {
            insertAlarm(alarm);
        }
    }
    const QVector<AlarmsModelConsumer *> consumers = m_consumers;
    for (AlarmsModelConsumer *consumer : consumers) {
        if (m_consumers.contains(consumer))
            consumer->alarmsReset(*this);
    }
    emit alarmsReset();
}

AlarmChanges AlarmsModel::applyBurst(const AlarmBurst &burst)
{
    // Resolve the burst first: per alarm, the instance before the burst and
    // the one after it.
    struct Net {
        AlarmInstancePtr before;
        AlarmInstancePtr after;
    };
    QHash<AlarmIdent, int> netIndex;
    QVector<Net> nets;
    netIndex.reserve(burst.size());
    nets.reserve(burst.size());
    for (const AlarmBurst::Operation &op : burst.getOperations()) {
        auto it = netIndex.find(op.ident);
        if (it == netIndex.end()) {
            it = netIndex.insert(op.ident, nets.size());
            nets.append({getAlarm(op.ident), AlarmInstancePtr()});
        }
        nets[*it].after = op.alarm;
    }

    AlarmChanges changes;
    for (const Net &net : nets) {
        if (!net.before && net.after) {
            insertAlarm(net.after);
            changes.added.append(net.after);
        } else if (net.before && net.after) {
            m_alarms[m_positions.value(net.after->getIdent())] = net.after;
            changes.updated.append({net.before, net.after});
        } else if (net.before) {
            removeAt(m_positions.value(net.before->getIdent()));
            changes.removed.append(net.before);
        }
    }
    if (changes.isEmpty())
        return changes;

    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral("burst applied: %1 added, %2 updated, %3 removed")
              .arg(changes.added.size())
              .arg(changes.updated.size())
              .arg(changes.removed.size()));
    const QVector<AlarmsModelConsumer *> consumers = m_consumers;
    for (AlarmsModelConsumer *consumer : consumers) {
        if (m_consumers.contains(consumer))
            consumer->alarmsChanged(*this, changes);
    }
    emit alarmsChanged(changes.added.size(), changes.updated.size(), changes.removed.size());
    return changes;
}

void AlarmsModel::addConsumer(AlarmsModelConsumer *consumer)
{
    if (consumer && !m_consumers.contains(consumer))
        m_consumers.append(consumer);
}

void AlarmsModel::removeConsumer(AlarmsModelConsumer *consumer)
{
    m_consumers.removeAll(consumer);
}

void AlarmsModel::insertAlarm(const AlarmInstancePtr &alarm)
{
    m_positions.insert(alarm->getIdent(), m_alarms.size());
    m_alarms.append(alarm);
}

void AlarmsModel::removeAt(int pos)
{
    // The model keeps no order, so the last alarm takes the free place.
    m_positions.remove(m_alarms.at(pos)->getIdent());
    const int last = m_alarms.size() - 1;
    if (pos != last) {
        m_alarms[pos] = m_alarms.at(last);
        m_positions[m_alarms.at(pos)->getIdent()] = pos;
    }
    m_alarms.removeLast();
}
