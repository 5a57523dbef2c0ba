#pragma once

#include "DpIdentifier.h"
#include "Variable.h"

#include <memory>

// One value of a datapoint message: the element's identifier and its value.
class PLATFORM_EXPORT DpValueItem
{
public:
    DpValueItem(const DpIdentifier &id, std::unique_ptr<Variable> value);
    DpValueItem(const DpValueItem &other);
    DpValueItem &operator=(const DpValueItem &other);
    DpValueItem(DpValueItem &&) = default;
    DpValueItem &operator=(DpValueItem &&) = default;
    ~DpValueItem();

    const DpIdentifier &getIdentifier() const { return m_id; }
    // Never null for items the platform sends.
    const Variable *getValue() const { return m_value.get(); }

private:
    DpIdentifier m_id;
    std::unique_ptr<Variable> m_value;
};
