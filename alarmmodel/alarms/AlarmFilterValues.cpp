#include "AlarmFilterValues.h"

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
