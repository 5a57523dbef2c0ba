#include "SystemInfo.h"

SystemInfo::SystemInfo(unsigned int number, const QString &name, bool connected)
    : m_number(number)
    , m_name(name)
    , m_connected(connected)
{
}

bool SystemInfo::operator==(const SystemInfo &other) const
{
    return m_number == other.m_number && m_name == other.m_name && m_connected == other.m_connected;
}
