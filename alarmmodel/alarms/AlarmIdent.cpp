#include "AlarmIdent.h"

QString AlarmIdent::toString() const
{
    return m_system + QLatin1Char('#') + QString::number(m_serial);
}
