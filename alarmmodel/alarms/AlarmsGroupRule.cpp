#include "AlarmsGroupRule.h"

#include "JsonFieldReader.h"

AlarmsGroupRule::AlarmsGroupRule(int kind, const QString &name) : m_kind(kind), m_name(name) {}

AlarmsGroupRule::~AlarmsGroupRule() = default;

bool AlarmsGroupRule::isSameLevel(const AlarmsGroupRule &other) const
{
    return m_kind == other.m_kind && m_name == other.m_name;
}

bool AlarmsGroupRule::operator==(const AlarmsGroupRule &other) const
{
    return isSameLevel(other) && m_title == other.m_title;
}

QJsonObject AlarmsGroupRule::toJson() const
{
    QJsonObject object{{QStringLiteral("kind"), JsonFieldReader::valueSourceCodeToJson(m_kind)},
                       {QStringLiteral("name"), m_name}};
    if (!m_title.isEmpty())
        object.insert(QStringLiteral("title"), m_title);
    return object;
}

bool AlarmsGroupRule::fromJson(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    AlarmsGroupRule read;
    r.checkKnownKeys({QStringLiteral("kind"), QStringLiteral("name"), QStringLiteral("title")});
    r.readValueSourceCode(QStringLiteral("kind"), read.m_kind);
    r.readString(QStringLiteral("name"), read.m_name, true);
    r.readString(QStringLiteral("title"), read.m_title);
    if (r.ok() && read.m_name.isEmpty())
        r.fail(QStringLiteral("'%1' must not be empty").arg(r.fieldPath(QStringLiteral("name"))));
    if (!r.ok())
        return false;
    *this = read;
    return true;
}
