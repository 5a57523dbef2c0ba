#pragma once

#include "platform_export.h"

#include <QMetaType>
#include <QString>

// One system of a distributed installation as the platform sees it: its
// number, its name (without the trailing colon) and whether it is connected.
class PLATFORM_EXPORT SystemInfo
{
public:
    SystemInfo() = default;
    SystemInfo(unsigned int number, const QString &name, bool connected);

    unsigned int getNumber() const { return m_number; }
    const QString &getName() const { return m_name; }
    bool isConnected() const { return m_connected; }
    void setConnected(bool connected) { m_connected = connected; }

    bool operator==(const SystemInfo &other) const;
    bool operator!=(const SystemInfo &other) const { return !(*this == other); }

private:
    unsigned int m_number = 0;
    QString m_name;
    bool m_connected = false;
};

Q_DECLARE_METATYPE(SystemInfo)
