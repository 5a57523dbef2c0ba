#pragma once

#include "ScalarVar.h"

// A signed 32-bit CTRL integer (int).
class PLATFORM_EXPORT IntegerVar : public ScalarVar<int, INTEGER_VAR>
{
public:
    IntegerVar() = default;
    explicit IntegerVar(int value) : ScalarVar(value) {}

    IntegerVar *clone() const override;
    QString formatValue() const override;
};
