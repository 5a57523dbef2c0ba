#include "DpIdentifier.h"

DpIdentifier::DpIdentifier(unsigned int dpNumber, unsigned int elementNumber)
    : m_dp(dpNumber)
    , m_element(elementNumber)
{
}

QString DpIdentifier::toString() const
{
    return QStringLiteral("dp %1 element %2").arg(m_dp).arg(m_element);
}
