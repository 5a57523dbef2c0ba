#pragma once

#include "AlarmInstance.h"
#include "alarmmodel_export.h"

#include <QPair>
#include <QVector>

// What one applied burst did to the model, as consumers see it: each alarm
// appears at most once, in one of the three lists.
class ALARMMODEL_EXPORT AlarmChanges
{
public:
    QVector<AlarmInstancePtr> added;
    QVector<AlarmInstancePtr> removed;                           // the instances as they were
    QVector<QPair<AlarmInstancePtr, AlarmInstancePtr>> updated;  // before, after

    bool isEmpty() const { return added.isEmpty() && removed.isEmpty() && updated.isEmpty(); }
    int size() const { return added.size() + removed.size() + updated.size(); }
};
