#pragma once

#include "AlarmInstance.h"
#include "alarmmodel_export.h"

#include <QVector>

// One burst of live changes as a source delivers it: alarms that came or
// changed (a new instance replaces the one of the same identity) and alarms
// that are gone. The model applies a burst in one step.
class ALARMMODEL_EXPORT AlarmBurst
{
public:
    struct Operation {
        AlarmInstancePtr alarm; // null for a removal
        AlarmIdent ident;
    };

    void upsert(const AlarmInstancePtr &alarm);
    void remove(const AlarmIdent &ident);

    bool isEmpty() const { return m_operations.isEmpty(); }
    int size() const { return m_operations.size(); }
    const QVector<Operation> &getOperations() const { return m_operations; }
    void clear() { m_operations.clear(); }

private:
    QVector<Operation> m_operations;
};
