#include "ColumnDefinition.h"

#include "JsonFieldReader.h"

ColumnDefinition::ColumnDefinition(int source, const QString &id, const QString &title)
    : m_source(source), m_id(id), m_title(title)
{
}

bool ColumnDefinition::operator==(const ColumnDefinition &other) const
{
    return m_source == other.m_source && m_id == other.m_id && m_title == other.m_title;
}

QJsonObject ColumnDefinition::toJson() const
{
    return QJsonObject{{QStringLiteral("source"), JsonFieldReader::valueSourceCodeToJson(m_source)},
                       {QStringLiteral("id"), m_id},
                       {QStringLiteral("title"), m_title}};
}

bool ColumnDefinition::fromJson(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    ColumnDefinition read;
    r.checkKnownKeys({QStringLiteral("source"), QStringLiteral("id"), QStringLiteral("title")});
    r.readString(QStringLiteral("id"), read.m_id, true);
    r.readString(QStringLiteral("title"), read.m_title);
    r.readValueSourceCode(QStringLiteral("source"), read.m_source);
    if (r.ok() && read.m_id.isEmpty())
        r.fail(QStringLiteral("'%1' must not be empty").arg(r.fieldPath(QStringLiteral("id"))));
    if (!r.ok())
        return false;
    if (read.m_title.isEmpty())
        read.m_title = read.m_id;
    *this = read;
    return true;
}
