#include "ValueFilterTextItem.h"

#include "JsonFieldReader.h"

ValueFilterTextItem::ValueFilterTextItem(const QString &text, int method, bool exclude)
    : m_text(text), m_method(method), m_exclude(exclude)
{
}

bool ValueFilterTextItem::operator==(const ValueFilterTextItem &other) const
{
    return m_text == other.m_text && m_method == other.m_method && m_exclude == other.m_exclude;
}

QJsonObject ValueFilterTextItem::toJson() const
{
    return QJsonObject{{QStringLiteral("text"), m_text},
                       {QStringLiteral("method"), m_method},
                       {QStringLiteral("exclude"), m_exclude}};
}

bool ValueFilterTextItem::fromJson(const QJsonObject &object, const QString &path, ValueFilterTextItem &item,
                                   QString &error)
{
    ValueFilterTextItem read;
    JsonFieldReader r(object, path, error);
    r.checkKnownKeys({QStringLiteral("text"), QStringLiteral("method"), QStringLiteral("exclude")});
    r.readString(QStringLiteral("text"), read.m_text, true);
    r.readInt(QStringLiteral("method"), read.m_method);
    r.readBool(QStringLiteral("exclude"), read.m_exclude);
    if (!r.ok())
        return false;
    item = read;
    return true;
}
