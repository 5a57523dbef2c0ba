#pragma once

#include "Variable.h"

#include <memory>
#include <utility>
#include <vector>

// A CTRL mapping: key/value pairs whose keys may be variables of any type,
// kept in insertion order. Two keys are the same key when they are equal
// variables (same type and value), so the integer 1 and the text "1" are
// different keys. Copies are deep.
class PLATFORM_EXPORT MappingVar : public Variable
{
public:
    MappingVar() = default;
    MappingVar(const MappingVar &other);
    MappingVar &operator=(const MappingVar &other);
    MappingVar(MappingVar &&) = default;
    MappingVar &operator=(MappingVar &&) = default;
    ~MappingVar() override;

    // The value stored under `key`, null when there is none.
    const Variable *getAt(const Variable &key) const;
    Variable *getAt(const Variable &key);
    // Stores a value; an existing key keeps its position and gets the new value.
    void setAt(const Variable &key, const Variable &value);
    // Takes key and value; nothing happens when either is null.
    void setAt(std::unique_ptr<Variable> key, std::unique_ptr<Variable> value);
    bool remove(const Variable &key);
    void clear() { m_items.clear(); }

    int count() const { return static_cast<int>(m_items.size()); }
    bool isEmpty() const { return m_items.empty(); }
    // Positional access in insertion order; null when out of range.
    const Variable *keyAt(int index) const;
    const Variable *valueAt(int index) const;

    VariableType getType() const override { return MAPPING_VAR; }
    MappingVar *clone() const override;
    // "{k1: v1, k2: v2}" in insertion order.
    QString formatValue() const override;

protected:
    // Equal when both hold the same keys with equal values, in any order.
    bool isEqualTo(const Variable &other) const override;

private:
    using Item = std::pair<std::unique_ptr<Variable>, std::unique_ptr<Variable>>;
    int indexOf(const Variable &key) const;

    std::vector<Item> m_items;
};
