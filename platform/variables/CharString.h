#pragma once

#include "platform_export.h"

#include <QByteArray>
#include <QString>

// The platform's 8-bit string. Texts cross the boundary to Qt as Latin-1, the
// way the CTRL interfaces expect them.
class PLATFORM_EXPORT CharString
{
public:
    CharString() = default;
    CharString(const char *text);
    CharString(const QByteArray &bytes);

    static CharString fromQString(const QString &text);
    QString toQString() const;

    const char *c_str() const { return m_bytes.constData(); }
    const QByteArray &bytes() const { return m_bytes; }
    int len() const { return m_bytes.size(); }
    bool isEmpty() const { return m_bytes.isEmpty(); }

    bool operator==(const CharString &other) const { return m_bytes == other.m_bytes; }
    bool operator!=(const CharString &other) const { return m_bytes != other.m_bytes; }
    CharString &operator+=(const CharString &other);

private:
    QByteArray m_bytes;
};
