#pragma once

#include "MsgLoggingProducer.h"

#include <QSharedPointer>
#include <QStringList>
#include <QStyledItemDelegate>

class AlarmsProxyModel;
class ColorEngine;
class QAbstractItemView;

// Paints each alarm row in the colour of its alarm class, taken from the
// project's colour database: "<class>" for acknowledged alarms and
// "<class>Unack" (a blinking colour) for unacknowledged ones. Classes without
// a colour of their own keep the table's colours. Blinking repaints the table
// only for the colours of its classes.
class AlarmClassColors : public QStyledItemDelegate, public MsgLoggingProducer
{
    Q_OBJECT
public:
    AlarmClassColors(AlarmsProxyModel *proxy, QAbstractItemView *view, const MsgLoggingProducer *logger);
    ~AlarmClassColors() override;

    // The colour name a row is painted with; empty for group rows and
    // classes the database does not know.
    QString colorNameFor(const QModelIndex &index) const;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    void colorChanged(const QString &name);

    AlarmsProxyModel *m_proxy;
    QAbstractItemView *m_view;
    QSharedPointer<ColorEngine> m_engine;
    QStringList m_names;
};
