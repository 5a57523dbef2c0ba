#pragma once

#include "MsgLoggingProducer.h"
#include "alarmmodel_export.h"

#include <QDateTime>
#include <QJsonObject>
#include <QMetaType>
#include <QObject>

// The time range of a history query: either a number of recent units (the last
// 8 hours), a calendar period (today, this week) or a custom interval with a
// start and an end. Recent and calendar ranges are evaluated at the time of the
// query (getEffectiveInterval).
class ALARMMODEL_EXPORT TimeRange : public MsgLoggingProducer
{
    Q_GADGET
public:
    // The time range editor lists the keys in this order; the numbers are stored
    // in saved filters.
    enum RangeType : int {
        LastMinutes = 0,
        LastHours = 1,
        LastDays = 2,
        LastWeeks = 3,
        LastMonths = 4,
        Today = 5,
        Yesterday = 6,
        ThisWeek = 7,
        PreviousWeek = 8,
        ThisMonth = 9,
        CustomInterval = 10
    };
    Q_ENUM(RangeType)

    // Last 1 hour, ending now; custom start and end one hour ago and now.
    TimeRange();
    explicit TimeRange(const MsgLoggingProducer *logger, Qt::TimeSpec timeSpec = Qt::LocalTime);
    TimeRange(const TimeRange &other) = default;
    TimeRange &operator=(const TimeRange &other) = default;
    ~TimeRange() override;

    RangeType getRangeType() const { return m_type; }
    void setRangeType(RangeType type);
    // Whether the type counts units (has a value count and a label).
    static bool hasValueCount(RangeType type);

    // The number of units for LastMinutes..LastMonths (at least 1).
    int getValueCount() const { return m_count; }
    void setValueCount(int count);
    // The unit label shown after the count (" hours"); empty for types without a count.
    QString getValueLabel() const;

    // Start and end of the custom interval, converted to the time spec.
    QDateTime getStartTime() const { return m_start; }
    void setStartTime(const QDateTime &start);
    QDateTime getEndTime() const { return m_end; }
    void setEndTime(const QDateTime &end);
    // Convenience for callers that hold seconds since the epoch.
    void setStartSeconds(qint64 secondsSinceEpoch);
    void setEndSeconds(qint64 secondsSinceEpoch);

    Qt::TimeSpec getTimeSpec() const { return m_timeSpec; }
    // Qt::LocalTime or Qt::UTC (others are treated as Qt::LocalTime); converts
    // the stored start and end.
    void setTimeSpec(Qt::TimeSpec timeSpec);

    // "Last 8 hours", "Today", "2024-03-01 10:00:00 - 2024-03-01 12:00:00".
    QString getDescription() const;
    // The date-time format used to show and edit range limits.
    static QString getDateTimeFormat();

    // The interval the range stands for when evaluated at `now` (in the range's
    // time spec). Calendar periods start at midnight; weeks start on Monday.
    void getEffectiveInterval(const QDateTime &now, QDateTime &start, QDateTime &end) const;

    // Type, count, time spec, and for a custom interval start and end.
    bool isEqual(const TimeRange &other) const;
    bool operator==(const TimeRange &other) const { return isEqual(other); }
    bool operator!=(const TimeRange &other) const { return !isEqual(other); }

    static QString rangeTypeKey(RangeType type);
    static bool rangeTypeFromKey(const QString &key, RangeType &type);

    // {"type": "LastHours", "count": 8, "timeSpec": "LocalTime"|"UTC",
    //  "start": ISO 8601, "end": ISO 8601}. On failure `error` says why and the
    // range is unchanged.
    QJsonObject toJson() const;
    bool fromJson(const QJsonObject &object, const QString &path, QString &error);

private:
    QDateTime inSpec(const QDateTime &t) const;

    RangeType m_type = LastHours;
    int m_count = 1;
    QDateTime m_start;
    QDateTime m_end;
    Qt::TimeSpec m_timeSpec = Qt::LocalTime;
};

Q_DECLARE_METATYPE(TimeRange)
