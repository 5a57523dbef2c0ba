#include "SimulatedSystem.h"

#include <algorithm>

namespace {

const char *const deviceNames[] = {"Motor", "Pump", "Valve", "Tank", "Compressor", "Fan", "Heater", "Conveyor"};
const char *const alarmTexts[] = {"Overtemperature", "Pressure high", "Pressure low", "Level high",
                                  "Level low", "Vibration", "Protection tripped", "Communication lost"};
struct AlarmClassInfo {
    const char *name;
    int priority;
    bool acknowledgeable;
};
const AlarmClassInfo alarmClasses[] = {{"alert", 200, true}, {"warning", 100, true}, {"info", 20, false}};

// Archive serials live far above the serials of live alarms.
constexpr qint64 archiveSerialBase = qint64(1) << 40;
constexpr qint64 archiveSerialsPerHour = 1000000;

quint64 mix(quint64 a, quint64 b)
{
    quint64 x = a ^ (b + 0x9E3779B97F4A7C15ULL + (a << 6) + (a >> 2));
    x ^= x >> 33;
    x *= 0xFF51AFD7ED558CCDULL;
    x ^= x >> 33;
    return x;
}

} // namespace

SimulatedSystem::SimulatedSystem(const SimulationConfig::System &config, quint64 seed)
    : m_config(config), m_seed(mix(seed, config.id)), m_random(quint64(m_seed))
{
    QRandomGenerator catalog(quint64(mix(m_seed, 1)));
    m_datapoints.reserve(config.datapoints);
    for (int i = 0; i < config.datapoints; ++i) {
        const int area = i / 64 + 1;
        const char *device = deviceNames[i % 8];
        const AlarmClassInfo &cls = alarmClasses[catalog.bounded(3)];
        Datapoint dp;
        dp.dpe = QStringLiteral("%1:Area%2.%3%4.alarm")
                     .arg(config.name)
                     .arg(area, 2, 10, QLatin1Char('0'))
                     .arg(QLatin1String(device))
                     .arg(i, 5, 10, QLatin1Char('0'));
        dp.alias = QStringLiteral("A%1-%2-%3")
                       .arg(area, 2, 10, QLatin1Char('0'))
                       .arg(QString::fromLatin1(device).left(3).toUpper())
                       .arg(i, 5, 10, QLatin1Char('0'));
        dp.description = QStringLiteral("%1 %2 in area %3").arg(QLatin1String(device)).arg(i).arg(area);
        dp.text = QLatin1String(alarmTexts[catalog.bounded(8)]);
        dp.alarmClass = QLatin1String(cls.name);
        dp.priority = cls.priority;
        dp.acknowledgeable = cls.acknowledgeable;
        dp.nominal = 10.0 * (1 + catalog.bounded(100));
        m_datapoints.append(dp);
    }
}

AlarmRecord SimulatedSystem::makeRecord(const Datapoint &dp, qint64 serial, qint64 timeMs, double value) const
{
    AlarmRecord record;
    record.system = m_config.name;
    record.serial = serial;
    record.dpe = dp.dpe;
    record.alias = dp.alias;
    record.description = dp.description;
    record.text = dp.text;
    record.alarmClass = dp.alarmClass;
    record.timeMs = timeMs;
    record.value = value;
    record.priority = dp.priority;
    record.acknowledgeable = dp.acknowledgeable;
    return record;
}

void SimulatedSystem::createInitialAlarms(qint64 nowMs, AlarmRecordList &out)
{
    // Every element gets its chance in turn, so the count is exact.
    for (int i = 0; i < m_config.initialAlarms && i < m_datapoints.size(); ++i) {
        const int dpIndex = int((qint64(i) * m_datapoints.size()) / qMax(1, m_config.initialAlarms));
        if (m_datapoints.at(dpIndex).cameSerial < 0)
            raise(dpIndex, nowMs - 1000 * (m_config.initialAlarms - i), out);
    }
}

void SimulatedSystem::generateEvent(qint64 nowMs, AlarmRecordList &out)
{
    if (m_datapoints.isEmpty())
        return;
    const int dpIndex = int(m_random.bounded(m_datapoints.size()));
    Datapoint &dp = m_datapoints[dpIndex];
    if (dp.cameSerial < 0)
        return raise(dpIndex, nowMs, out);
    switch (m_rows.value(dp.cameSerial).state) {
    case AlarmRecord::CameUnacknowledged:
        if (dp.acknowledgeable && m_random.bounded(2) == 0)
            acknowledge(dp, nowMs, out);
        else
            went(dp, nowMs, out);
        break;
    case AlarmRecord::CameAcknowledged:
        went(dp, nowMs, out);
        break;
    default:
        acknowledge(dp, nowMs, out);
        break;
    }
}

bool SimulatedSystem::acknowledgeElement(const QString &dpe, qint64 nowMs, AlarmRecordList &out)
{
    for (Datapoint &dp : m_datapoints) {
        if (dp.dpe != dpe)
            continue;
        if (!dp.acknowledgeable || dp.cameSerial < 0)
            return false;
        const AlarmRecord::State state = m_rows.value(dp.cameSerial).state;
        if (state != AlarmRecord::CameUnacknowledged && state != AlarmRecord::WentUnacknowledged)
            return false;
        acknowledge(dp, nowMs, out);
        return true;
    }
    return false;
}

void SimulatedSystem::raise(int dpIndex, qint64 nowMs, AlarmRecordList &out)
{
    Datapoint &dp = m_datapoints[dpIndex];
    const double value = dp.nominal * (1.0 + m_random.generateDouble());
    AlarmRecord record = makeRecord(dp, m_nextSerial++, nowMs, value);
    dp.cameSerial = record.serial;
    m_rows.insert(record.serial, record);
    out.append(record);
}

void SimulatedSystem::went(Datapoint &dp, qint64 nowMs, AlarmRecordList &out)
{
    AlarmRecord &came = m_rows[dp.cameSerial];
    if (!dp.acknowledgeable || came.state == AlarmRecord::CameAcknowledged) {
        // Nothing left to acknowledge: the pair is closed.
        removeRow(dp.cameSerial, out);
        dp.cameSerial = -1;
        return;
    }
    AlarmRecord wentRecord = makeRecord(dp, m_nextSerial++, nowMs, dp.nominal);
    wentRecord.direction = AlarmRecord::Went;
    wentRecord.state = AlarmRecord::WentUnacknowledged;
    wentRecord.relatedSerial = came.serial;
    came.state = AlarmRecord::WentUnacknowledged;
    came.relatedSerial = wentRecord.serial;
    dp.wentSerial = wentRecord.serial;
    m_rows.insert(wentRecord.serial, wentRecord);
    out.append(came);
    out.append(wentRecord);
}

void SimulatedSystem::acknowledge(Datapoint &dp, qint64 nowMs, AlarmRecordList &out)
{
    AlarmRecord &came = m_rows[dp.cameSerial];
    if (came.state == AlarmRecord::CameUnacknowledged) {
        came.state = AlarmRecord::CameAcknowledged;
        came.ackTimeMs = nowMs;
        out.append(came);
        return;
    }
    // Acknowledging a pair that went closes it.
    removeRow(dp.cameSerial, out);
    if (dp.wentSerial >= 0)
        removeRow(dp.wentSerial, out);
    dp.cameSerial = -1;
    dp.wentSerial = -1;
}

void SimulatedSystem::removeRow(qint64 serial, AlarmRecordList &out)
{
    AlarmRecord record = m_rows.take(serial);
    record.removed = true;
    out.append(record);
}

AlarmRecordList SimulatedSystem::getArchiveHour(qint64 hour) const
{
    AlarmRecordList records;
    if (m_datapoints.isEmpty() || m_config.archiveRecordsPerHour <= 0)
        return records;
    QRandomGenerator random(quint64(mix(m_seed, quint64(hour) + 7)));
    const double rate = m_config.archiveRecordsPerHour;
    qint64 count = qint64(rate);
    if (random.generateDouble() < rate - double(count))
        ++count;
    count = qMin(count, archiveSerialsPerHour - 1);
    records.reserve(int(count));
    const qint64 hourStart = hour * msPerHour;
    for (qint64 k = 0; k < count; ++k) {
        const Datapoint &dp = m_datapoints.at(int(random.bounded(m_datapoints.size())));
        const qint64 timeMs = hourStart + qint64(random.bounded(quint32(msPerHour)));
        AlarmRecord record = makeRecord(dp, archiveSerialBase + hour * archiveSerialsPerHour + k, timeMs,
                                        dp.nominal * (1.0 + random.generateDouble()));
        record.direction = random.bounded(2) ? AlarmRecord::Went : AlarmRecord::Came;
        record.state = AlarmRecord::State(random.bounded(4));
        if (record.state == AlarmRecord::CameAcknowledged || record.state == AlarmRecord::WentAcknowledged)
            record.ackTimeMs = timeMs + 1000;
        records.append(record);
    }
    std::sort(records.begin(), records.end(), [](const AlarmRecord &a, const AlarmRecord &b) {
        return a.timeMs != b.timeMs ? a.timeMs < b.timeMs : a.serial < b.serial;
    });
    return records;
}
