#include "DynVar.h"

#include <QStringList>

DynVar::DynVar(const DynVar &other)
    : Variable(other)
{
    m_items.reserve(other.m_items.size());
    for (const auto &item : other.m_items)
        m_items.push_back(item->cloneUnique());
}

DynVar &DynVar::operator=(const DynVar &other)
{
    if (this != &other) {
        DynVar copy(other);
        m_items = std::move(copy.m_items);
    }
    return *this;
}

DynVar::~DynVar() = default;

const Variable *DynVar::at(int index) const
{
    if (index < 0 || index >= count())
        return nullptr;
    return m_items[static_cast<size_t>(index)].get();
}

Variable *DynVar::at(int index)
{
    return const_cast<Variable *>(static_cast<const DynVar *>(this)->at(index));
}

void DynVar::append(std::unique_ptr<Variable> item)
{
    if (item)
        m_items.push_back(std::move(item));
}

void DynVar::append(const Variable &item)
{
    m_items.push_back(item.cloneUnique());
}

DynVar *DynVar::clone() const
{
    return new DynVar(*this);
}

QString DynVar::formatValue() const
{
    QStringList parts;
    for (const auto &item : m_items)
        parts.append(item->formatValue());
    return QLatin1Char('[') + parts.join(QLatin1String(", ")) + QLatin1Char(']');
}

bool DynVar::isEqualTo(const Variable &other) const
{
    const auto &items = static_cast<const DynVar &>(other).m_items;
    if (items.size() != m_items.size())
        return false;
    for (size_t i = 0; i < m_items.size(); ++i) {
        if (*m_items[i] != *items[i])
            return false;
    }
    return true;
}
