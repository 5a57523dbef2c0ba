#include "MappingVar.h"

#include <QStringList>

MappingVar::MappingVar(const MappingVar &other)
    : Variable(other)
{
    m_items.reserve(other.m_items.size());
    for (const Item &item : other.m_items)
        m_items.emplace_back(item.first->cloneUnique(), item.second->cloneUnique());
}

MappingVar &MappingVar::operator=(const MappingVar &other)
{
    if (this != &other) {
        MappingVar copy(other);
        m_items = std::move(copy.m_items);
    }
    return *this;
}

MappingVar::~MappingVar() = default;

int MappingVar::indexOf(const Variable &key) const
{
    for (size_t i = 0; i < m_items.size(); ++i) {
        if (*m_items[i].first == key)
            return static_cast<int>(i);
    }
    return -1;
}

const Variable *MappingVar::getAt(const Variable &key) const
{
    const int index = indexOf(key);
    return index < 0 ? nullptr : m_items[static_cast<size_t>(index)].second.get();
}

Variable *MappingVar::getAt(const Variable &key)
{
    return const_cast<Variable *>(static_cast<const MappingVar *>(this)->getAt(key));
}

void MappingVar::setAt(const Variable &key, const Variable &value)
{
    setAt(key.cloneUnique(), value.cloneUnique());
}

void MappingVar::setAt(std::unique_ptr<Variable> key, std::unique_ptr<Variable> value)
{
    if (!key || !value)
        return;
    const int index = indexOf(*key);
    if (index >= 0)
        m_items[static_cast<size_t>(index)].second = std::move(value);
    else
        m_items.emplace_back(std::move(key), std::move(value));
}

bool MappingVar::remove(const Variable &key)
{
    const int index = indexOf(key);
    if (index < 0)
        return false;
    m_items.erase(m_items.begin() + index);
    return true;
}

const Variable *MappingVar::keyAt(int index) const
{
    if (index < 0 || index >= count())
        return nullptr;
    return m_items[static_cast<size_t>(index)].first.get();
}

const Variable *MappingVar::valueAt(int index) const
{
    if (index < 0 || index >= count())
        return nullptr;
    return m_items[static_cast<size_t>(index)].second.get();
}

MappingVar *MappingVar::clone() const
{
    return new MappingVar(*this);
}

QString MappingVar::formatValue() const
{
    QStringList parts;
    for (const Item &item : m_items)
        parts.append(item.first->formatValue() + QLatin1String(": ") + item.second->formatValue());
    return QLatin1Char('{') + parts.join(QLatin1String(", ")) + QLatin1Char('}');
}

bool MappingVar::isEqualTo(const Variable &other) const
{
    const MappingVar &map = static_cast<const MappingVar &>(other);
    if (map.count() != count())
        return false;
    for (const Item &item : m_items) {
        const Variable *value = map.getAt(*item.first);
        if (!value || *value != *item.second)
            return false;
    }
    return true;
}
