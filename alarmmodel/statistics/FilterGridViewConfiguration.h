#pragma once

#include "FilterViewItemConfiguration.h"
#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QList>

// The grid of a filter statistics view: its frame, spacing, background
// colour, title and cells.
class ALARMMODEL_EXPORT FilterGridViewConfiguration
{
public:
    QString getTitle() const { return m_title; }
    int getFrameShape() const { return m_frameShape; }   // QFrame::Shape
    int getFrameShadow() const { return m_frameShadow; } // QFrame::Shadow
    int getLineWidth() const { return m_lineWidth; }
    int getMidLineWidth() const { return m_midLineWidth; }
    int getSpacing() const { return m_spacing; }
    // A colour name, or "none" for no background.
    QString getBackColor() const { return m_backColor; }
    const QList<FilterViewItemConfiguration> &getItems() const { return m_items; }

    bool fromJson(const QJsonObject &object, const QString &path, const WildcardConfig &wildcards, QString &error);

private:
    QString m_title;
    int m_frameShape = 0;
    int m_frameShadow = 0x0010; // plain
    int m_lineWidth = 1;
    int m_midLineWidth = 0;
    int m_spacing = 2;
    QString m_backColor = QStringLiteral("none");
    QList<FilterViewItemConfiguration> m_items;
};
