#pragma once

#include "platform_export.h"

#include <QHashFunctions>
#include <QString>

// Identifies one datapoint element: the datapoint's number and the element's
// number within it, both given in the order of creation. Identifiers therefore
// sort as the elements were defined (for a datapoint, as its type lists them).
// A default-constructed identifier is null and names nothing.
class PLATFORM_EXPORT DpIdentifier
{
public:
    DpIdentifier() = default;
    DpIdentifier(unsigned int dpNumber, unsigned int elementNumber);

    bool isNull() const { return m_dp == 0; }
    unsigned int getDpNumber() const { return m_dp; }
    unsigned int getElementNumber() const { return m_element; }
    // "dp <n> element <m>", for messages.
    QString toString() const;

    bool operator==(const DpIdentifier &other) const
    {
        return m_dp == other.m_dp && m_element == other.m_element;
    }
    bool operator!=(const DpIdentifier &other) const { return !(*this == other); }
    bool operator<(const DpIdentifier &other) const
    {
        return m_dp != other.m_dp ? m_dp < other.m_dp : m_element < other.m_element;
    }

private:
    unsigned int m_dp = 0;
    unsigned int m_element = 0;
};

inline uint qHash(const DpIdentifier &id, uint seed = 0)
{
    return qHash((quint64(id.getDpNumber()) << 32) | id.getElementNumber(), seed);
}
