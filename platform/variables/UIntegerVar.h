#pragma once

#include "ScalarVar.h"

// An unsigned 32-bit CTRL integer (uint).
class PLATFORM_EXPORT UIntegerVar : public ScalarVar<unsigned int, UINTEGER_VAR>
{
public:
    UIntegerVar() = default;
    explicit UIntegerVar(unsigned int value) : ScalarVar(value) {}

    UIntegerVar *clone() const override;
    QString formatValue() const override;
};
