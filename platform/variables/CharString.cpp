#include "CharString.h"

CharString::CharString(const char *text)
    : m_bytes(text)
{
}

CharString::CharString(const QByteArray &bytes)
    : m_bytes(bytes)
{
}

CharString CharString::fromQString(const QString &text)
{
    return CharString(text.toLatin1());
}

QString CharString::toQString() const
{
    return QString::fromLatin1(m_bytes);
}

CharString &CharString::operator+=(const CharString &other)
{
    m_bytes += other.m_bytes;
    return *this;
}
