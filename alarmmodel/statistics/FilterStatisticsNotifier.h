#pragma once

#include "FilterStatistics.h"
#include "alarmmodel_export.h"

#include <QObject>

// The signal side of a statistics consumer: the consumer is not a QObject
// (widgets derive from it and from a Qt widget), so it announces new
// statistics through this object.
class ALARMMODEL_EXPORT FilterStatisticsNotifier : public QObject
{
    Q_OBJECT
public:
    explicit FilterStatisticsNotifier(QObject *parent = nullptr) : QObject(parent)
    {
        qRegisterMetaType<const FilterStatistics *>();
    }
    void announce(const FilterStatistics *stats) { emit changed(stats); }

signals:
    void changed(const FilterStatistics *stats);
};
