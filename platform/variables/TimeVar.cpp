#include "TimeVar.h"

TimeVar *TimeVar::clone() const
{
    return new TimeVar(*this);
}

QString TimeVar::formatValue() const
{
    // CTRL prints times in local time with milliseconds.
    return getValue().toLocalTime().toString(QStringLiteral("yyyy.MM.dd hh:mm:ss.zzz"));
}
