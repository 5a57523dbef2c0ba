#pragma once

#include "alarmmodel_export.h"

class AlarmsModel;
class AlarmChanges;

// Something that follows every change of an alarm model: the table proxy,
// statistics counters. A consumer is told about a reset (the model's content
// was replaced as a whole) and about each applied burst, after the model
// holds the new state.
class ALARMMODEL_EXPORT AlarmsModelConsumer
{
public:
    AlarmsModelConsumer() = default;
    AlarmsModelConsumer(const AlarmsModelConsumer &) = default;
    AlarmsModelConsumer &operator=(const AlarmsModelConsumer &) = default;
    virtual ~AlarmsModelConsumer();

    virtual void alarmsReset(const AlarmsModel &model) = 0;
    virtual void alarmsChanged(const AlarmsModel &model, const AlarmChanges &changes) = 0;
    // The model is being destroyed; it will not call again.
    virtual void modelDestroyed(const AlarmsModel &model);
};
