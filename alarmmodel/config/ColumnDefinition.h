#pragma once

#include "Constants.h"
#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QString>

// One column of the alarm table: where its value comes from (a
// Constants::ValueSource code), the property's text id (the column id filters
// use) and the header title.
class ALARMMODEL_EXPORT ColumnDefinition
{
public:
    ColumnDefinition() = default;
    ColumnDefinition(int source, const QString &id, const QString &title);

    int getSource() const { return m_source; }
    QString getId() const { return m_id; }
    QString getTitle() const { return m_title; }

    bool operator==(const ColumnDefinition &other) const;
    bool operator!=(const ColumnDefinition &other) const { return !(*this == other); }

    // {"source": "Alarm" or 0, "id": "text", "title": "Alarm text"}; the id is
    // required, the title defaults to the id.
    QJsonObject toJson() const;
    bool fromJson(const QJsonObject &object, const QString &path, QString &error);

private:
    int m_source = Constants::ValueSourceAlarm;
    QString m_id;
    QString m_title;
};
