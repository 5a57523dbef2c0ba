#include "DpValueItem.h"

DpValueItem::DpValueItem(const DpIdentifier &id, std::unique_ptr<Variable> value)
    : m_id(id)
    , m_value(std::move(value))
{
}

DpValueItem::DpValueItem(const DpValueItem &other)
    : m_id(other.m_id)
    , m_value(other.m_value ? other.m_value->cloneUnique() : nullptr)
{
}

DpValueItem &DpValueItem::operator=(const DpValueItem &other)
{
    if (this != &other) {
        m_id = other.m_id;
        m_value = other.m_value ? other.m_value->cloneUnique() : nullptr;
    }
    return *this;
}

DpValueItem::~DpValueItem() = default;
