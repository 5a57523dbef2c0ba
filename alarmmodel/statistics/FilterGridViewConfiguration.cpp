#include "FilterGridViewConfiguration.h"

#include "JsonFieldReader.h"

#include <QJsonArray>
#include <QSet>

bool FilterGridViewConfiguration::fromJson(const QJsonObject &object, const QString &path,
                                           const WildcardConfig &wildcards, QString &error)
{
    FilterGridViewConfiguration grid;
    JsonFieldReader reader(object, path, error);
    QJsonArray items;
    reader.checkKnownKeys({QStringLiteral("title"), QStringLiteral("frameShape"), QStringLiteral("frameShadow"),
                           QStringLiteral("lineWidth"), QStringLiteral("midLineWidth"), QStringLiteral("spacing"),
                           QStringLiteral("backColor"), QStringLiteral("items")});
    reader.readString(QStringLiteral("title"), grid.m_title);
    reader.readInt(QStringLiteral("frameShape"), grid.m_frameShape);
    reader.readInt(QStringLiteral("frameShadow"), grid.m_frameShadow);
    reader.readInt(QStringLiteral("lineWidth"), grid.m_lineWidth);
    reader.readInt(QStringLiteral("midLineWidth"), grid.m_midLineWidth);
    reader.readInt(QStringLiteral("spacing"), grid.m_spacing);
    reader.readString(QStringLiteral("backColor"), grid.m_backColor);
    reader.readArray(QStringLiteral("items"), items, true);
    QSet<QString> ids;
    for (int i = 0; reader.ok() && i < items.size(); ++i) {
        const QString itemPath = reader.fieldPath(QStringLiteral("items")) + QStringLiteral("[%1]").arg(i);
        if (!items.at(i).isObject())
            return reader.fail(itemPath + QStringLiteral(" must be an object"));
        FilterViewItemConfiguration item;
        if (!item.fromJson(items.at(i).toObject(), itemPath, wildcards, error))
            return false;
        if (ids.contains(item.getId()))
            return reader.fail(itemPath + QStringLiteral(": the id '%1' is used twice").arg(item.getId()));
        ids.insert(item.getId());
        grid.m_items.append(item);
    }
    if (!reader.ok())
        return false;
    *this = grid;
    return true;
}
