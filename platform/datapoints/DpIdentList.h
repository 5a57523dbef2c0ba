#pragma once

#include "DpIdentifier.h"

#include <QVector>

// An ordered list of datapoint element identifiers, as connected together.
class PLATFORM_EXPORT DpIdentList
{
public:
    DpIdentList() = default;
    DpIdentList(std::initializer_list<DpIdentifier> ids) : m_ids(ids) {}

    void append(const DpIdentifier &id) { m_ids.append(id); }
    void clear() { m_ids.clear(); }
    int count() const { return m_ids.size(); }
    bool isEmpty() const { return m_ids.isEmpty(); }
    const DpIdentifier &at(int index) const { return m_ids.at(index); }
    bool contains(const DpIdentifier &id) const { return m_ids.contains(id); }

    QVector<DpIdentifier>::const_iterator begin() const { return m_ids.cbegin(); }
    QVector<DpIdentifier>::const_iterator end() const { return m_ids.cend(); }

    bool operator==(const DpIdentList &other) const { return m_ids == other.m_ids; }
    bool operator!=(const DpIdentList &other) const { return m_ids != other.m_ids; }

private:
    QVector<DpIdentifier> m_ids;
};
