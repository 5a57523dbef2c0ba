#pragma once

#include "ScalarVar.h"

// A CTRL boolean (bool).
class PLATFORM_EXPORT BitVar : public ScalarVar<bool, BIT_VAR>
{
public:
    BitVar() = default;
    explicit BitVar(bool value) : ScalarVar(value) {}

    BitVar *clone() const override;
    QString formatValue() const override;
};
