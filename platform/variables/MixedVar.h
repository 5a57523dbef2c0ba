#pragma once

#include "Variable.h"

#include <memory>

// A CTRL mixed variable: holds one variable of any type, or nothing (the CTRL
// null value). Copies are deep.
class PLATFORM_EXPORT MixedVar : public Variable
{
public:
    MixedVar() = default;
    explicit MixedVar(const Variable &value);
    explicit MixedVar(std::unique_ptr<Variable> value);
    MixedVar(const MixedVar &other);
    MixedVar &operator=(const MixedVar &other);
    ~MixedVar() override;

    // The held variable, null when empty.
    const Variable *getValue() const { return m_value.get(); }
    Variable *getValue() { return m_value.get(); }
    bool isEmpty() const { return !m_value; }
    void setValue(std::unique_ptr<Variable> value) { m_value = std::move(value); }
    void setValue(const Variable &value) { m_value = value.cloneUnique(); }

    VariableType getType() const override { return MIXED_VAR; }
    MixedVar *clone() const override;
    // The held value's printable form; empty when nothing is held.
    QString formatValue() const override;

protected:
    bool isEqualTo(const Variable &other) const override;

private:
    std::unique_ptr<Variable> m_value;
};
