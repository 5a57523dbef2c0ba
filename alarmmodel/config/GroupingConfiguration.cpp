#include "GroupingConfiguration.h"

#include "JsonFieldReader.h"

#include <QJsonArray>

GroupingConfiguration::GroupingConfiguration() = default;

GroupingConfiguration::GroupingConfiguration(const MsgLoggingProducer *logger, const QString &name)
    : MsgLoggingProducer(logger), m_name(name)
{
}

GroupingConfiguration::~GroupingConfiguration() = default;

void GroupingConfiguration::addRule(const QSharedPointer<AlarmsGroupRule> &rule)
{
    if (rule)
        m_rules << rule;
}

bool GroupingConfiguration::operator==(const GroupingConfiguration &other) const
{
    if (m_name != other.m_name || m_rules.size() != other.m_rules.size())
        return false;
    for (int i = 0; i < m_rules.size(); ++i) {
        if (!(*m_rules.at(i) == *other.m_rules.at(i)))
            return false;
    }
    return true;
}

QJsonObject GroupingConfiguration::toJson() const
{
    QJsonArray rules;
    for (const auto &rule : m_rules)
        rules << rule->toJson();
    return QJsonObject{{QStringLiteral("name"), m_name}, {QStringLiteral("rules"), rules}};
}

bool GroupingConfiguration::fromJson(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    QString name;
    QJsonArray array;
    r.checkKnownKeys({QStringLiteral("name"), QStringLiteral("rules")});
    r.readString(QStringLiteral("name"), name);
    r.readArray(QStringLiteral("rules"), array);
    if (!r.ok())
        return false;
    QList<QSharedPointer<AlarmsGroupRule>> rules;
    for (int i = 0; i < array.size(); ++i) {
        const QString rulePath = r.fieldPath(QStringLiteral("rules[%1]").arg(i));
        if (!array.at(i).isObject())
            return r.fail(QStringLiteral("'%1' must be an object").arg(rulePath));
        auto rule = QSharedPointer<AlarmsGroupRule>::create();
        if (!rule->fromJson(array.at(i).toObject(), rulePath, error))
            return false;
        rules << rule;
    }
    m_name = name;
    m_rules = rules;
    return true;
}
