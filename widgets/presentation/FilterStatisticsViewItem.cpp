#include "FilterStatisticsViewItem.h"

void FilterStatisticsViewItem::setStatistics(const QMap<QString, QVariant> &statistics)
{
    m_statistics = statistics;
    emitDataChanged();
}

QVariant FilterStatisticsViewItem::data(int role) const
{
    if (role == StatisticsRole)
        return m_statistics;
    if (role == Qt::ToolTipRole && !QStandardItem::data(role).isValid())
        return m_statistics.value(QStringLiteral("error"));
    return QStandardItem::data(role);
}

QStandardItem *FilterStatisticsViewItem::clone() const
{
    return new FilterStatisticsViewItem(*this);
}
