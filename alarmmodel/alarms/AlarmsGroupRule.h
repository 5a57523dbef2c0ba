#pragma once

#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QString>

// One level of the grouping of the alarm table: alarms are grouped by the value
// of the property `name` taken from the value source `kind` (a
// Constants::ValueSource code). Two rules are the same level when kind and name
// agree.
class ALARMMODEL_EXPORT AlarmsGroupRule
{
public:
    AlarmsGroupRule() = default;
    AlarmsGroupRule(int kind, const QString &name);
    virtual ~AlarmsGroupRule();
    AlarmsGroupRule(const AlarmsGroupRule &other) = default;
    AlarmsGroupRule &operator=(const AlarmsGroupRule &other) = default;

    int getKind() const { return m_kind; }
    QString getName() const { return m_name; }
    // The group node's title; defaults to the name.
    QString getTitle() const { return m_title.isEmpty() ? m_name : m_title; }
    void setTitle(const QString &title) { m_title = title; }

    bool isSameLevel(const AlarmsGroupRule &other) const;
    bool operator==(const AlarmsGroupRule &other) const;

    // {"kind": "Alarm" or 0, "name": "system", "title": "System"}
    QJsonObject toJson() const;
    bool fromJson(const QJsonObject &object, const QString &path, QString &error);

private:
    int m_kind = 0;
    QString m_name;
    QString m_title;
};
