#pragma once

#include "DpValueItem.h"

#include <QString>

#include <vector>

// What the datapoint messages have in common: a list of values, in the order
// of the identifiers connected, and an error text (empty when all is well).
class PLATFORM_EXPORT DpItemContainer
{
public:
    virtual ~DpItemContainer();

    int count() const { return static_cast<int>(m_items.size()); }
    bool isEmpty() const { return m_items.empty(); }
    const DpValueItem &at(int index) const { return m_items.at(static_cast<size_t>(index)); }
    void append(const DpIdentifier &id, std::unique_ptr<Variable> value);
    // Orders the items by identifier, that is, as the elements were defined.
    void sort();

    bool hasError() const { return !m_error.isEmpty(); }
    const QString &getError() const { return m_error; }
    void setError(const QString &error) { m_error = error; }

protected:
    DpItemContainer() = default;
    DpItemContainer(const DpItemContainer &) = default;
    DpItemContainer &operator=(const DpItemContainer &) = default;

private:
    std::vector<DpValueItem> m_items;
    QString m_error;
};
