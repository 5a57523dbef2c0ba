#pragma once

#include "alarmmodel_export.h"

#include <QString>
#include <QVector>

// One property of an alarm: what a column shows, what a filter rule looks at
// and what a script receives as a map key. The index is the property's stable
// integer code (it is the source code of a column definition and the slot of
// the property's text in an alarm); the name is the text id used in
// configurations, filters and scripts.
class ALARMMODEL_EXPORT AlarmProp
{
public:
    // Stable codes; configurations and scripts store these numbers.
    enum Index : int {
        Invalid = -1,
        System = 0,
        Dpe = 1,
        Alias = 2,
        Description = 3,
        AlarmText = 4,
        Priority = 5,
        State = 6,
        Direction = 7,
        Time = 8,
        AckTime = 9,
        Value = 10,
        AlarmClass = 11,
        Acknowledgeable = 12,
        Connection = 13,
        Acknowledged = 14,
        Count = 15
    };

    // The type of the property's edit value.
    enum Type : int { Text = 0, Integer = 1, Number = 2, DateTime = 3, Boolean = 4 };

    AlarmProp() = default;
    AlarmProp(int index, const QString &name, Type type)
        : m_index(index), m_name(name), m_type(type)
    {
    }

    int getIndex() const { return m_index; }
    const QString &getName() const { return m_name; }
    Type getType() const { return m_type; }
    bool isValid() const { return m_index >= 0 && m_index < Count; }

    bool operator==(const AlarmProp &other) const { return m_index == other.m_index; }
    bool operator!=(const AlarmProp &other) const { return m_index != other.m_index; }

    // Every property, in index order.
    static const QVector<AlarmProp> &all();
    // The property of an index or a name; an invalid property when unknown.
    static AlarmProp byIndex(int index);
    static AlarmProp byName(const QString &name);

private:
    int m_index = Invalid;
    QString m_name;
    Type m_type = Text;
};
