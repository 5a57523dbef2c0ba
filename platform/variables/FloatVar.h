#pragma once

#include "ScalarVar.h"

// A CTRL floating point number (float).
class PLATFORM_EXPORT FloatVar : public ScalarVar<double, FLOAT_VAR>
{
public:
    FloatVar() = default;
    explicit FloatVar(double value) : ScalarVar(value) {}

    FloatVar *clone() const override;
    QString formatValue() const override;
};
