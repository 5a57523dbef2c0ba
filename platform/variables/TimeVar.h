#pragma once

#include "ScalarVar.h"

#include <QDateTime>

// A CTRL point in time (time), with millisecond precision.
class PLATFORM_EXPORT TimeVar : public ScalarVar<QDateTime, TIME_VAR>
{
public:
    TimeVar() = default;
    explicit TimeVar(const QDateTime &value) : ScalarVar(value) {}

    TimeVar *clone() const override;
    QString formatValue() const override;
};
