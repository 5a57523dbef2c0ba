#include "TimeRange.h"

#include "JsonFieldReader.h"

#include <QCoreApplication>
#include <QMetaEnum>

namespace {
QString tr(const char *text)
{
    return QCoreApplication::translate("TimeRange", text);
}

void registerTimeRange()
{
    qRegisterMetaType<TimeRange>("TimeRange");
}
Q_CONSTRUCTOR_FUNCTION(registerTimeRange)
} // namespace

TimeRange::TimeRange() : TimeRange(nullptr) {}

TimeRange::TimeRange(const MsgLoggingProducer *logger, Qt::TimeSpec timeSpec) : MsgLoggingProducer(logger)
{
    m_timeSpec = timeSpec == Qt::UTC ? Qt::UTC : Qt::LocalTime;
    m_end = inSpec(QDateTime::currentDateTime());
    m_end.setTime(QTime(m_end.time().hour(), m_end.time().minute()));
    m_start = m_end.addSecs(-3600);
}

TimeRange::~TimeRange() = default;

QDateTime TimeRange::inSpec(const QDateTime &t) const
{
    return t.isValid() ? t.toTimeSpec(m_timeSpec) : t;
}

void TimeRange::setRangeType(RangeType type)
{
    if (QMetaEnum::fromType<RangeType>().valueToKey(type))
        m_type = type;
    else
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("unknown range type %1 ignored").arg(int(type)));
}

bool TimeRange::hasValueCount(RangeType type)
{
    return type >= LastMinutes && type <= LastMonths;
}

void TimeRange::setValueCount(int count)
{
    m_count = qMax(1, count);
}

QString TimeRange::getValueLabel() const
{
    switch (m_type) {
    case LastMinutes:
        return tr(" minutes");
    case LastHours:
        return tr(" hours");
    case LastDays:
        return tr(" days");
    case LastWeeks:
        return tr(" weeks");
    case LastMonths:
        return tr(" months");
    default:
        return QString();
    }
}

void TimeRange::setStartTime(const QDateTime &start)
{
    m_start = inSpec(start);
}

void TimeRange::setEndTime(const QDateTime &end)
{
    m_end = inSpec(end);
}

void TimeRange::setStartSeconds(qint64 secondsSinceEpoch)
{
    m_start = QDateTime::fromSecsSinceEpoch(secondsSinceEpoch, m_timeSpec);
}

void TimeRange::setEndSeconds(qint64 secondsSinceEpoch)
{
    m_end = QDateTime::fromSecsSinceEpoch(secondsSinceEpoch, m_timeSpec);
}

void TimeRange::setTimeSpec(Qt::TimeSpec timeSpec)
{
    m_timeSpec = timeSpec == Qt::UTC ? Qt::UTC : Qt::LocalTime;
    m_start = inSpec(m_start);
    m_end = inSpec(m_end);
}

QString TimeRange::getDateTimeFormat()
{
    return QStringLiteral("yyyy-MM-dd HH:mm:ss");
}

QString TimeRange::getDescription() const
{
    switch (m_type) {
    case LastMinutes:
    case LastHours:
    case LastDays:
    case LastWeeks:
    case LastMonths:
        return tr("Last %1%2").arg(m_count).arg(getValueLabel());
    case Today:
        return tr("Today");
    case Yesterday:
        return tr("Yesterday");
    case ThisWeek:
        return tr("This week");
    case PreviousWeek:
        return tr("Previous week");
    case ThisMonth:
        return tr("This month");
    case CustomInterval:
        break;
    }
    return QStringLiteral("%1 - %2").arg(m_start.toString(getDateTimeFormat()), m_end.toString(getDateTimeFormat()));
}

void TimeRange::getEffectiveInterval(const QDateTime &now, QDateTime &start, QDateTime &end) const
{
    const QDateTime t = inSpec(now);
    const QDateTime midnight(t.date(), QTime(0, 0), m_timeSpec);
    end = t;
    switch (m_type) {
    case LastMinutes:
        start = t.addSecs(-60LL * m_count);
        break;
    case LastHours:
        start = t.addSecs(-3600LL * m_count);
        break;
    case LastDays:
        start = t.addDays(-m_count);
        break;
    case LastWeeks:
        start = t.addDays(-7LL * m_count);
        break;
    case LastMonths:
        start = t.addMonths(-m_count);
        break;
    case Today:
        start = midnight;
        break;
    case Yesterday:
        start = midnight.addDays(-1);
        end = midnight;
        break;
    case ThisWeek:
        start = midnight.addDays(1 - t.date().dayOfWeek());
        break;
    case PreviousWeek:
        end = midnight.addDays(1 - t.date().dayOfWeek());
        start = end.addDays(-7);
        break;
    case ThisMonth:
        start = QDateTime(QDate(t.date().year(), t.date().month(), 1), QTime(0, 0), m_timeSpec);
        break;
    case CustomInterval:
        start = m_start;
        end = m_end;
        break;
    }
}

bool TimeRange::isEqual(const TimeRange &other) const
{
    if (m_type != other.m_type || m_timeSpec != other.m_timeSpec)
        return false;
    if (hasValueCount(m_type))
        return m_count == other.m_count;
    if (m_type == CustomInterval)
        return m_start == other.m_start && m_end == other.m_end;
    return true;
}

QString TimeRange::rangeTypeKey(RangeType type)
{
    return QString::fromLatin1(QMetaEnum::fromType<RangeType>().valueToKey(type));
}

bool TimeRange::rangeTypeFromKey(const QString &key, RangeType &type)
{
    bool ok = false;
    const int v = QMetaEnum::fromType<RangeType>().keyToValue(key.toLatin1().constData(), &ok);
    if (ok)
        type = RangeType(v);
    return ok;
}

QJsonObject TimeRange::toJson() const
{
    return QJsonObject{{QStringLiteral("type"), rangeTypeKey(m_type)},
                       {QStringLiteral("count"), m_count},
                       {QStringLiteral("timeSpec"), m_timeSpec == Qt::UTC ? QStringLiteral("UTC")
                                                                          : QStringLiteral("LocalTime")},
                       {QStringLiteral("start"), m_start.toString(Qt::ISODateWithMs)},
                       {QStringLiteral("end"), m_end.toString(Qt::ISODateWithMs)}};
}

bool TimeRange::fromJson(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    QString typeText = rangeTypeKey(m_type);
    QString specText = m_timeSpec == Qt::UTC ? QStringLiteral("UTC") : QStringLiteral("LocalTime");
    QString startText, endText;
    int count = m_count;
    r.checkKnownKeys({QStringLiteral("type"), QStringLiteral("count"), QStringLiteral("timeSpec"),
                      QStringLiteral("start"), QStringLiteral("end")});
    r.readString(QStringLiteral("type"), typeText, true);
    r.readInt(QStringLiteral("count"), count);
    r.readString(QStringLiteral("timeSpec"), specText);
    r.readString(QStringLiteral("start"), startText);
    r.readString(QStringLiteral("end"), endText);
    RangeType type = m_type;
    if (r.ok() && !rangeTypeFromKey(typeText, type))
        r.fail(QStringLiteral("'%1' is an unknown range type '%2'").arg(r.fieldPath(QStringLiteral("type")), typeText));
    if (r.ok() && count < 1)
        r.fail(QStringLiteral("'%1' must be at least 1").arg(r.fieldPath(QStringLiteral("count"))));
    if (r.ok() && specText != QLatin1String("UTC") && specText != QLatin1String("LocalTime"))
        r.fail(QStringLiteral("'%1' must be \"LocalTime\" or \"UTC\"").arg(r.fieldPath(QStringLiteral("timeSpec"))));
    const QDateTime start = startText.isEmpty() ? m_start : QDateTime::fromString(startText, Qt::ISODateWithMs);
    const QDateTime end = endText.isEmpty() ? m_end : QDateTime::fromString(endText, Qt::ISODateWithMs);
    if (r.ok() && (!start.isValid() || !end.isValid()))
        r.fail(QStringLiteral("'%1' and '%2' must be dates and times in ISO 8601 form")
                   .arg(r.fieldPath(QStringLiteral("start")), r.fieldPath(QStringLiteral("end"))));
    if (r.ok() && type == CustomInterval && start > end)
        r.fail(QStringLiteral("'%1': the custom interval ends before it starts").arg(path));
    if (!r.ok())
        return false;
    m_type = type;
    m_count = count;
    m_timeSpec = specText == QLatin1String("UTC") ? Qt::UTC : Qt::LocalTime;
    m_start = inSpec(start);
    m_end = inSpec(end);
    return true;
}
