#pragma once

#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QString>

// One rule of a text filter: a pattern, how it is matched, and whether the rule
// includes or excludes what it matches.
class ALARMMODEL_EXPORT ValueFilterTextItem
{
public:
    // Match methods, also the values stored in files.
    enum Method : int { MethodExact = 0, MethodWildcard = 1, MethodRegularExpression = 2 };

    ValueFilterTextItem() = default;
    ValueFilterTextItem(const QString &text, int method, bool exclude);

    QString getText() const { return m_text; }
    int getMethod() const { return m_method; }
    bool isExclude() const { return m_exclude; }

    bool operator==(const ValueFilterTextItem &other) const;
    bool operator!=(const ValueFilterTextItem &other) const { return !(*this == other); }

    // {"text": "...", "method": 0..2, "exclude": b}
    QJsonObject toJson() const;
    static bool fromJson(const QJsonObject &object, const QString &path, ValueFilterTextItem &item,
                         QString &error);

private:
    QString m_text;
    int m_method = MethodWildcard;
    bool m_exclude = false;
};
