#include "AlarmProp.h"

#include <QHash>

const QVector<AlarmProp> &AlarmProp::all()
{
    static const QVector<AlarmProp> props = {
        AlarmProp(System, QStringLiteral("system"), Text),
        AlarmProp(Dpe, QStringLiteral("dpe"), Text),
        AlarmProp(Alias, QStringLiteral("alias"), Text),
        AlarmProp(Description, QStringLiteral("description"), Text),
        AlarmProp(AlarmText, QStringLiteral("text"), Text),
        AlarmProp(Priority, QStringLiteral("priority"), Integer),
        AlarmProp(State, QStringLiteral("state"), Integer),
        AlarmProp(Direction, QStringLiteral("direction"), Integer),
        AlarmProp(Time, QStringLiteral("time"), DateTime),
        AlarmProp(AckTime, QStringLiteral("ackTime"), DateTime),
        AlarmProp(Value, QStringLiteral("value"), Number),
        AlarmProp(AlarmClass, QStringLiteral("alarmClass"), Text),
        AlarmProp(Acknowledgeable, QStringLiteral("ackable"), Boolean),
        AlarmProp(Connection, QStringLiteral("connection"), Boolean),
        AlarmProp(Acknowledged, QStringLiteral("acknowledged"), Boolean),
    };
    return props;
}

AlarmProp AlarmProp::byIndex(int index)
{
    return index >= 0 && index < Count ? all().at(index) : AlarmProp();
}

AlarmProp AlarmProp::byName(const QString &name)
{
    // Filters look properties up by name for every alarm they test.
    static const QHash<QString, int> indexes = [] {
        QHash<QString, int> byName;
        for (const AlarmProp &prop : all())
            byName.insert(prop.getName(), prop.getIndex());
        return byName;
    }();
    return byIndex(indexes.value(name, Invalid));
}
