#pragma once

#include "Variable.h"

// The common shape of the variables that hold one plain value: storage, access
// and comparison. Each concrete type adds its printable form and clone().
template <typename T, VariableType Code>
class ScalarVar : public Variable
{
public:
    using ValueType = T;
    static constexpr VariableType TypeCode = Code;

    const T &getValue() const { return m_value; }
    void setValue(const T &value) { m_value = value; }

    VariableType getType() const override { return Code; }

protected:
    ScalarVar() = default;
    explicit ScalarVar(const T &value) : m_value(value) {}

    bool isEqualTo(const Variable &other) const override
    {
        return m_value == static_cast<const ScalarVar &>(other).m_value;
    }

private:
    T m_value{};
};
