#pragma once

// What the benchmarks share: the alarms they work on (a realistic mix
// generated from a fixed seed, so that runs compare the same rows) and the
// timing of a step.

#include "AlarmInstance.h"
#include "ValueFilterNumbers.h"
#include "ValueFilterStringPattern.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <functional>

namespace BenchCommon {

inline const char *const devices[] = {"Motor", "Pump", "Valve", "Tank", "Compressor", "Fan", "Heater", "Conveyor"};
inline const char *const texts[] = {"Overtemperature", "Pressure high", "Pressure low", "Level high",
                                    "Level low", "Vibration", "Protection tripped", "Communication lost"};
inline const char *const classes[] = {"alert", "warning", "info"};
inline const qint64 baseTime = 1700000000000;

// Every alarm on its own element, with its own alias and description (the
// expensive case for memory); systems, texts and classes are shared.
inline QVector<AlarmInstancePtr> makeAlarms(int count)
{
    QStringList systems;
    for (int s = 1; s <= 10; ++s)
        systems << QStringLiteral("System%1").arg(s);
    QStringList textList, classList;
    for (const char *t : texts)
        textList << QLatin1String(t);
    for (const char *c : classes)
        classList << QLatin1String(c);
    QRandomGenerator random(42);
    QVector<AlarmInstancePtr> alarms;
    alarms.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QString &system = systems.at(i % systems.size());
        const char *device = devices[random.bounded(8)];
        AlarmInstance::Data data;
        data.ident = AlarmIdent(system, i + 1);
        data.dpe = QStringLiteral("%1:Area%2.%3%4.alarm").arg(system).arg(i / 500 % 100).arg(QLatin1String(device)).arg(i);
        data.alias = QStringLiteral("A%1-%2").arg(QLatin1String(device).left(3)).arg(i);
        data.description = QStringLiteral("%1 %2 in area %3").arg(QLatin1String(device)).arg(i).arg(i / 500 % 100);
        data.alarmText = textList.at(int(random.bounded(8)));
        const int cls = int(random.bounded(3));
        data.alarmClass = classList.at(cls);
        data.priority = QVector<int>{200, 100, 20}.at(cls) + int(random.bounded(5));
        data.timeMs = baseTime + qint64(i) * 1000 + random.bounded(1000);
        data.value = random.bounded(1000.0);
        data.state = AlarmInstance::State(random.bounded(3));
        alarms.append(QSharedPointer<AlarmInstance>::create(data));
    }
    return alarms;
}

// The best time of `repeat` runs of `measured`, in milliseconds; `prepare`
// (optional) runs untimed before each.
inline double bestOf(int repeat, const std::function<void()> &prepare, const std::function<void()> &measured)
{
    double best = 1e300;
    for (int i = 0; i < repeat; ++i) {
        if (prepare)
            prepare();
        QElapsedTimer timer;
        timer.start();
        measured();
        best = std::min(best, timer.nsecsElapsed() / 1e6);
    }
    return best;
}

inline double bestOf(int repeat, const std::function<void()> &measured)
{
    return bestOf(repeat, nullptr, measured);
}

// Rules of the structured filter as an operator types them.
inline QSharedPointer<ValueFilter> pattern(const QString &property, const QString &text)
{
    auto filter = QSharedPointer<ValueFilterStringPattern>::create(WildcardConfig(), property,
                                                                   Constants::ValueSourceAlarm, false);
    filter->setFilterText(text);
    return filter;
}

inline QSharedPointer<ValueFilter> numbers(const QString &property, const QString &text)
{
    auto filter = QSharedPointer<ValueFilterNumbers>::create(WildcardConfig(), property,
                                                             Constants::ValueSourceAlarm, false);
    filter->setFilterText(text);
    return filter;
}

} // namespace BenchCommon
