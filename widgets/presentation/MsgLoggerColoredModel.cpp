#include "MsgLoggerColoredModel.h"

#include "MsgLoggerEnums.h"

#include <QBrush>

MsgLoggerColoredModel::MsgLoggerColoredModel(QObject *parent) : QSortFilterProxyModel(parent)
{
    setSortRole(Qt::EditRole);
}

QColor MsgLoggerColoredModel::colorOfSeverity(int severity)
{
    switch (severity) {
    case MsgLoggerEnums::Warning:
        return QColor(255, 255, 192);
    case MsgLoggerEnums::Error:
        return QColor(255, 192, 192);
    default:
        return QColor();
    }
}

QVariant MsgLoggerColoredModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::BackgroundRole || index.column() != 1)
        return QSortFilterProxyModel::data(index, role);
    // The source puts the severity number where a colour would be.
    const QVariant severity = QSortFilterProxyModel::data(index, role);
    bool isNumber = false;
    const int value = severity.toInt(&isNumber);
    const QColor color = isNumber ? colorOfSeverity(value) : QColor();
    if (!color.isValid())
        return QVariant();
    return QBrush(color, Qt::SolidPattern);
}
