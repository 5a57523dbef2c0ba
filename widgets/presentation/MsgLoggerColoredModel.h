#pragma once

#include "widgets_export.h"

#include <QColor>
#include <QSortFilterProxyModel>

// The message history as the log dialog shows it: sortable by the messages'
// own values (times as times, severities as numbers) and with the severity
// cell coloured by its severity.
class WIDGETS_EXPORT MsgLoggerColoredModel : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    explicit MsgLoggerColoredModel(QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

    // Light yellow for warnings, light red for errors; an invalid colour for
    // traces (and anything else), which are shown without colour.
    static QColor colorOfSeverity(int severity);
};
