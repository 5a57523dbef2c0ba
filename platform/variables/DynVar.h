#pragma once

#include "Variable.h"

#include <memory>
#include <vector>

// A CTRL dynamic array (dyn): an ordered list of variables of any type that the
// array owns. Copies are deep.
class PLATFORM_EXPORT DynVar : public Variable
{
public:
    DynVar() = default;
    DynVar(const DynVar &other);
    DynVar &operator=(const DynVar &other);
    DynVar(DynVar &&) = default;
    DynVar &operator=(DynVar &&) = default;
    ~DynVar() override;

    int count() const { return static_cast<int>(m_items.size()); }
    bool isEmpty() const { return m_items.empty(); }
    // Null when the index is out of range.
    const Variable *at(int index) const;
    Variable *at(int index);

    // Takes the item; a null item is ignored.
    void append(std::unique_ptr<Variable> item);
    // Appends a copy.
    void append(const Variable &item);
    void clear() { m_items.clear(); }

    VariableType getType() const override { return DYN_VAR; }
    DynVar *clone() const override;
    // "[a, b, c]" with the elements' printable forms.
    QString formatValue() const override;

protected:
    bool isEqualTo(const Variable &other) const override;

private:
    std::vector<std::unique_ptr<Variable>> m_items;
};
