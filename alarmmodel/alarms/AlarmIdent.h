#pragma once

#include "alarmmodel_export.h"

#include <QHash>
#include <QMetaType>
#include <QString>

// The identity of one alarm row: the system it belongs to and the number the
// system gave it. A came and a went event of the same alarm are two rows with
// two identities; each names the other as its related alarm.
class ALARMMODEL_EXPORT AlarmIdent
{
public:
    AlarmIdent() = default;
    AlarmIdent(const QString &system, qint64 serial) : m_system(system), m_serial(serial) {}

    const QString &getSystem() const { return m_system; }
    qint64 getSerial() const { return m_serial; }
    // A default-constructed identity names no alarm.
    bool isValid() const { return m_serial >= 0 && !m_system.isEmpty(); }
    QString toString() const;

    bool operator==(const AlarmIdent &other) const
    {
        return m_serial == other.m_serial && m_system == other.m_system;
    }
    bool operator!=(const AlarmIdent &other) const { return !(*this == other); }
    bool operator<(const AlarmIdent &other) const
    {
        return m_serial != other.m_serial ? m_serial < other.m_serial : m_system < other.m_system;
    }

private:
    QString m_system;
    qint64 m_serial = -1;
};

inline uint qHash(const AlarmIdent &ident, uint seed = 0)
{
    return qHash(ident.getSerial(), seed) ^ qHash(ident.getSystem(), seed);
}

Q_DECLARE_METATYPE(AlarmIdent)
