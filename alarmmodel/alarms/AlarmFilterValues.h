#pragma once

#include "AlarmInstance.h"
#include "FilterValueProvider.h"
#include "alarmmodel_export.h"

#include <QVarLengthArray>

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
    // Texts and numbers go to the filter unboxed.
    bool passes(const ValueFilter &filter) const override;

    static QVariant valueOf(const AlarmInstance &alarm, int propIndex);
    // Whether `filter` passes the value of property `propIndex` of `alarm`,
    // for callers that looked the filter's property up themselves.
    static bool passes(const AlarmInstance &alarm, const ValueFilter &filter, int propIndex);
    // Whether filters see property `propIndex` as its display text (the state
    // and the direction included).
    static bool isTextProperty(int propIndex);

private:
    int propIndexOf(const ValueFilter &filter) const;

    const AlarmInstance *m_alarm;
    // The property of each filter seen, so that a filter loop looks a name up
    // once per filter, not once per alarm; checked by name, as a filter may
    // be replaced by another at the same address.
    struct KnownFilter {
        const ValueFilter *filter;
        QString valueId;
        int propIndex;
    };
    mutable QVarLengthArray<KnownFilter, 8> m_known;
};
