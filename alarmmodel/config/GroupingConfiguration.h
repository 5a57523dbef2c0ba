#pragma once

#include "AlarmsGroupRule.h"
#include "MsgLoggingProducer.h"
#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QList>
#include <QSharedPointer>

// How the alarm table is grouped: a named list of grouping levels, the first
// rule being the top level. No rules: a flat table.
class ALARMMODEL_EXPORT GroupingConfiguration : public MsgLoggingProducer
{
public:
    GroupingConfiguration();
    GroupingConfiguration(const MsgLoggingProducer *logger, const QString &name);
    GroupingConfiguration(const GroupingConfiguration &other) = default;
    GroupingConfiguration &operator=(const GroupingConfiguration &other) = default;
    ~GroupingConfiguration() override;

    QString getName() const { return m_name; }
    void setName(const QString &name) { m_name = name; }
    const QList<QSharedPointer<AlarmsGroupRule>> &getRules() const { return m_rules; }
    void setRules(const QList<QSharedPointer<AlarmsGroupRule>> &rules) { m_rules = rules; }
    void addRule(const QSharedPointer<AlarmsGroupRule> &rule);
    bool isGrouped() const { return !m_rules.isEmpty(); }

    // Same name and rules equal one by one.
    bool operator==(const GroupingConfiguration &other) const;

    // {"name": "...", "rules": [rules]}. On failure nothing changes.
    QJsonObject toJson() const;
    bool fromJson(const QJsonObject &object, const QString &path, QString &error);

private:
    QString m_name;
    QList<QSharedPointer<AlarmsGroupRule>> m_rules;
};
