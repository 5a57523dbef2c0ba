#include "AlarmFilterValues.h"

#include "ValueFilter.h"

QVariant AlarmFilterValues::filterValue(const QString &valueId, Constants::ValueSource) const
{
    // Every property has one meaning whichever source a filter names, so
    // the source does not change the answer.
    if (!m_alarm)
        return QVariant();
    return valueOf(*m_alarm, AlarmProp::byName(valueId).getIndex());
}

QVariant AlarmFilterValues::valueOf(const AlarmInstance &alarm, int propIndex)
{
    if (propIndex == AlarmProp::State || propIndex == AlarmProp::Direction)
        return alarm.getText(propIndex);
    return alarm.getProperty(propIndex, Qt::EditRole);
}

int AlarmFilterValues::propIndexOf(const ValueFilter &filter) const
{
    for (const KnownFilter &known : m_known) {
        if (known.filter == &filter && known.valueId == filter.getValueId())
            return known.propIndex;
    }
    if (m_known.size() >= 64)
        m_known.clear();
    const int propIndex = AlarmProp::byName(filter.getValueId()).getIndex();
    m_known.append(KnownFilter{&filter, filter.getValueId(), propIndex});
    return propIndex;
}

bool AlarmFilterValues::passes(const ValueFilter &filter) const
{
    if (!m_alarm)
        return FilterValueProvider::passes(filter);
    return passes(*m_alarm, filter, propIndexOf(filter));
}

bool AlarmFilterValues::isTextProperty(int propIndex)
{
    switch (propIndex) {
    case AlarmProp::Invalid:
    case AlarmProp::Time:
    case AlarmProp::AckTime:
    case AlarmProp::Acknowledgeable:
    case AlarmProp::Connection:
    case AlarmProp::Acknowledged:
    case AlarmProp::Priority:
    case AlarmProp::Value:
        return false;
    default:
        return propIndex >= 0 && propIndex < AlarmProp::Count;
    }
}

bool AlarmFilterValues::passes(const AlarmInstance &alarm, const ValueFilter &filter, int propIndex)
{
    if (isTextProperty(propIndex))
        return filter.matchesText(alarm.getText(propIndex));
    switch (propIndex) {
    case AlarmProp::Priority:
        return filter.matchesInteger(alarm.getData().priority);
    case AlarmProp::Value:
        return filter.matchesDouble(alarm.getData().value);
    default:
        return filter.matches(valueOf(alarm, propIndex));
    }
}
