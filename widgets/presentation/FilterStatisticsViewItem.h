#pragma once

#include "widgets_export.h"

#include <QMap>
#include <QStandardItem>
#include <QVariant>

// Carries the statistics of one filter in an item view: the display text is
// the item's own, StatisticsRole gives the whole statistics map (as
// FilterStatisticsWidget::getStatisticsAsMap() reports it) and the tool tip
// falls back to the map's error text.
class WIDGETS_EXPORT FilterStatisticsViewItem : public QStandardItem
{
public:
    enum Role : int { StatisticsRole = Qt::UserRole + 1 };

    FilterStatisticsViewItem() = default;

    void setStatistics(const QMap<QString, QVariant> &statistics);
    QVariant data(int role) const override;
    QStandardItem *clone() const override;

private:
    QMap<QString, QVariant> m_statistics;
};
