#pragma once

#include "AlarmInstance.h"
#include "alarmmodel_export.h"

#include <QMap>
#include <QMetaType>
#include <QString>

// The counts of one statistics filter over the current alarm model: how many
// alarms the model holds, how many of them match, and how the matching ones
// divide by state. Counts are kept up to date alarm by alarm.
class ALARMMODEL_EXPORT FilterStatistics
{
public:
    // The counted quantities, also the kinds of statistics placeholders.
    enum Quantity : int {
        Matching = 0,
        Total = 1,
        Unacknowledged = 2,
        CameUnacknowledged = 3,
        CameAcknowledged = 4,
        WentUnacknowledged = 5,
        Disconnected = 6,
        HighestPriority = 7 // -1 while nothing matches
    };

    void clear();
    // Adds (delta 1) or takes away (delta -1) one alarm of the model.
    void countAlarm(const AlarmInstance &alarm, bool matching, int delta);

    int get(Quantity quantity) const;
    int getMatching() const { return m_matching; }
    int getTotal() const { return m_total; }

    // "matching", "total", "unacknowledged", "cameUnacknowledged",
    // "cameAcknowledged", "wentUnacknowledged", "disconnected", "highestPriority".
    static QString quantityKey(Quantity quantity);
    static bool quantityFromKey(const QString &key, Quantity &quantity);

    bool operator==(const FilterStatistics &other) const;

private:
    int m_total = 0;
    int m_matching = 0;
    int m_byState[4] = {0, 0, 0, 0};
    int m_disconnected = 0;
    QMap<int, int> m_priorities; // priority -> matching alarms
};

Q_DECLARE_METATYPE(const FilterStatistics *)
