#include "DpItemContainer.h"

#include <algorithm>

DpItemContainer::~DpItemContainer() = default;

void DpItemContainer::append(const DpIdentifier &id, std::unique_ptr<Variable> value)
{
    m_items.emplace_back(id, std::move(value));
}

void DpItemContainer::sort()
{
    std::stable_sort(m_items.begin(), m_items.end(),
                     [](const DpValueItem &a, const DpValueItem &b) {
                         return a.getIdentifier() < b.getIdentifier();
                     });
}
