#pragma once

#include "AlarmInstance.h"
#include "FilterValueProvider.h"
#include "alarmmodel_export.h"

// Answers a filter's questions about one alarm. Filters see the typed value
// of a property (numbers, times, booleans), except for the state and the
// direction, which they see as the texts the operator reads in the table.
// One object can be pointed at alarm after alarm in a filter loop.
class ALARMMODEL_EXPORT AlarmFilterValues : public FilterValueProvider
{
public:
    explicit AlarmFilterValues(const AlarmInstance *alarm = nullptr) : m_alarm(alarm) {}

    void setAlarm(const AlarmInstance *alarm) { m_alarm = alarm; }
    QVariant filterValue(const QString &valueId, Constants::ValueSource source) const override;

    static QVariant valueOf(const AlarmInstance &alarm, int propIndex);

private:
    const AlarmInstance *m_alarm;
};
