#pragma once

#include "platform_export.h"

#include <QMetaType>
#include <QString>
#include <QVector>

// One alarm row as a system's alarm manager reports it: a came or a went
// event of a datapoint element's alarm, with the state of its came/went pair.
// A record marked `removed` announces that the row is gone (the pair was
// acknowledged after it went, or it went without needing acknowledgement).
class PLATFORM_EXPORT AlarmRecord
{
public:
    enum State : int { CameUnacknowledged = 0, CameAcknowledged = 1, WentUnacknowledged = 2, WentAcknowledged = 3 };
    enum Direction : int { Came = 0, Went = 1 };

    QString system;
    qint64 serial = -1;        // unique within the system
    qint64 relatedSerial = -1; // the other row of the pair, -1 if none
    QString dpe;
    QString alias;
    QString description;
    QString text;
    QString alarmClass;
    qint64 timeMs = 0;    // milliseconds since the epoch
    qint64 ackTimeMs = 0; // 0 while not acknowledged
    double value = 0.0;
    int priority = 0;
    State state = CameUnacknowledged;
    Direction direction = Came;
    bool acknowledgeable = true;
    bool removed = false;
};

using AlarmRecordList = QVector<AlarmRecord>;

Q_DECLARE_METATYPE(AlarmRecord)
Q_DECLARE_METATYPE(AlarmRecordList)
