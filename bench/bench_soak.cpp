// Flood soak: a large alarm table under a steady stream of updates for a
// minute, with everything an operator may have switched on at once (quick
// filter, structured filter, grouping, statistics). Prints the resident memory
// every 5 s and, at the end, the event-loop latency (p50, p99, max) measured by
// a probe timer, with the growth of memory after the warm-up.
//
// Goals: memory growth after the warm-up at most 5 %, p99 latency at most 100 ms.

#include "AlarmBurst.h"
#include "BenchCommon.h"
#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "FilterRuleContainer.h"
#include "FilterRuleSet.h"
#include "FilterStatisticsValueConsumer.h"
#include "GroupingConfiguration.h"
#include "QuickCellFilter.h"
#include "SourceAndFilter.h"
#include "ValueFilterNumbers.h"
#include "ValueFilterStringPattern.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTextStream>
#include <QTimer>

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <vector>

using BenchCommon::numbers;
using BenchCommon::pattern;

namespace {

QTextStream out(stdout);

const char *const devices[] = {"Motor", "Pump", "Valve", "Tank", "Compressor", "Fan", "Heater", "Conveyor"};
const char *const texts[] = {"Overtemperature", "Pressure high", "Pressure low", "Level high",
                             "Level low", "Vibration", "Protection tripped", "Communication lost"};
const char *const classes[] = {"alert", "warning", "info"};

AlarmInstancePtr makeAlarm(int i, QRandomGenerator &random, qint64 timeMs)
{
    const QString system = QStringLiteral("System%1").arg(i % 10 + 1);
    const char *device = devices[random.bounded(8)];
    AlarmInstance::Data data;
    data.ident = AlarmIdent(system, i + 1);
    data.dpe = QStringLiteral("%1:Area%2.%3%4.alarm").arg(system).arg(i / 500 % 100).arg(QLatin1String(device)).arg(i);
    data.alias = QStringLiteral("A%1-%2").arg(QLatin1String(device).left(3)).arg(i);
    data.description = QStringLiteral("%1 %2 in area %3").arg(QLatin1String(device)).arg(i).arg(i / 500 % 100);
    data.alarmText = QLatin1String(texts[random.bounded(8)]);
    const int cls = int(random.bounded(3));
    data.alarmClass = QLatin1String(classes[cls]);
    data.priority = QVector<int>{200, 100, 20}.at(cls) + int(random.bounded(5));
    data.timeMs = timeMs;
    data.value = random.bounded(1000.0);
    data.state = AlarmInstance::State(random.bounded(3));
    return QSharedPointer<AlarmInstance>::create(data);
}

SourceAndFilter filterOf(const QList<QList<QSharedPointer<ValueFilter>>> &includeSets,
                         const QList<QSharedPointer<ValueFilter>> &excludeSet = {})
{
    QList<FilterRuleSet> sets;
    for (const auto &filters : includeSets) {
        FilterRuleSet set(WildcardConfig(), true, false);
        for (const auto &f : filters)
            set.addFilter(f);
        sets << set;
    }
    if (!excludeSet.isEmpty()) {
        FilterRuleSet set(WildcardConfig(), false, false);
        for (const auto &f : excludeSet)
            set.addFilter(f);
        sets << set;
    }
    SourceAndFilter filter;
    filter.setFilterContainer(QSharedPointer<FilterRuleContainer>::create(WildcardConfig(), sets, false));
    return filter;
}

qint64 residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields.at(1).toLongLong() * sysconf(_SC_PAGESIZE) : 0;
}

double percentile(std::vector<double> sorted, double p)
{
    if (sorted.empty())
        return 0;
    std::sort(sorted.begin(), sorted.end());
    const size_t index = std::min(sorted.size() - 1, size_t(p * double(sorted.size() - 1) + 0.5));
    return sorted.at(index);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    int count = 100000;
    int rate = 1000;
    int seconds = 60;
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); i += 2) {
        if (args.at(i) == QLatin1String("--alarms"))
            count = qMax(100, args.at(i + 1).toInt());
        else if (args.at(i) == QLatin1String("--rate"))
            rate = qMax(1, args.at(i + 1).toInt());
        else if (args.at(i) == QLatin1String("--seconds"))
            seconds = qMax(1, args.at(i + 1).toInt());
    }
    MsgLoggingProducer::setDefaultLogThreshold(4);
    out << QStringLiteral("Flood soak: %1 alarms, %2 updates/s for %3 s, quick filter, structured filter, "
                          "grouping and 20 statistics filters on\n")
               .arg(count).arg(rate).arg(seconds);
    out.flush();

    QRandomGenerator random(42);
    const qint64 baseTime = 1700000000000;
    auto model = QSharedPointer<AlarmsModel>::create();
    {
        // Only the model keeps the alarms: a replaced alarm must be freed, as
        // in the screen, or the soak would measure its own list.
        QVector<AlarmInstancePtr> alarms;
        alarms.reserve(count);
        for (int i = 0; i < count; ++i)
            alarms.append(makeAlarm(i, random, baseTime + qint64(i) * 1000));
        model->setAlarms(alarms);
    }
    AlarmsProxyModel proxy;
    proxy.setAlarmsModel(model);

    QuickCellFilter quick;
    quick.setString(QStringLiteral("*pump*"));
    proxy.setQuickFilter(quick);
    proxy.setFilter(filterOf({{pattern(QStringLiteral("system"), QStringLiteral("System1;System2;System3")),
                               numbers(QStringLiteral("priority"), QStringLiteral(">50"))},
                              {pattern(QStringLiteral("text"), QStringLiteral("Pressure*"))}},
                             {pattern(QStringLiteral("description"), QStringLiteral("*99*"))}));
    GroupingConfiguration grouping(nullptr, QStringLiteral("soak"));
    grouping.addRule(QSharedPointer<AlarmsGroupRule>::create(0, QStringLiteral("system")));
    grouping.addRule(QSharedPointer<AlarmsGroupRule>::create(0, QStringLiteral("alarmClass")));
    proxy.setGrouping(grouping);

    std::vector<std::unique_ptr<FilterStatisticsValueConsumer>> statistics;
    for (int s = 1; s <= 10; ++s) {
        for (const char *cls : {"alert", "warning"}) {
            statistics.emplace_back(new FilterStatisticsValueConsumer);
            statistics.back()->setFilter(QStringLiteral("s%1%2").arg(s).arg(QLatin1String(cls)),
                                         filterOf({{pattern(QStringLiteral("system"), QStringLiteral("System%1").arg(s)),
                                                    pattern(QStringLiteral("alarmClass"), QLatin1String(cls))}}));
            statistics.back()->setTextTemplate(QStringLiteral("%id%: %matching% of %total%, %unacknowledged% unack."));
            statistics.back()->setModel(model);
        }
    }

    // Updates arrive in bursts every 50 ms, as a platform connection delivers
    // them: mostly state changes, a tenth of them an alarm going and a new one
    // coming, so that the table's size stays the same.
    const int tickMs = 50;
    const int perTick = qMax(1, rate * tickMs / 1000);
    int nextNumber = count;
    QVector<int> live(count);
    for (int i = 0; i < count; ++i)
        live[i] = i;
    qint64 now = baseTime + qint64(count) * 1000;
    qint64 applied = 0;
    QTimer feeder;
    feeder.setTimerType(Qt::PreciseTimer);
    QObject::connect(&feeder, &QTimer::timeout, [&] {
        AlarmBurst burst;
        for (int i = 0; i < perTick; ++i) {
            const int slot = int(random.bounded(count));
            now += 1;
            if (random.bounded(10) == 0) {
                burst.remove(AlarmIdent(QStringLiteral("System%1").arg(live[slot] % 10 + 1), live[slot] + 1));
                live[slot] = nextNumber++;
                burst.upsert(makeAlarm(live[slot], random, now));
            } else {
                const int number = live[slot];
                const AlarmInstancePtr current =
                    model->getAlarm(AlarmIdent(QStringLiteral("System%1").arg(number % 10 + 1), number + 1));
                if (!current)
                    continue;
                AlarmInstance::Data data = current->getData();
                data.state = AlarmInstance::State(random.bounded(3));
                data.priority = data.priority / 10 * 10 + int(random.bounded(10));
                data.timeMs = now;
                burst.upsert(QSharedPointer<AlarmInstance>::create(data));
            }
        }
        applied += burst.size();
        model->applyBurst(burst);
    });

    // The probe: how late a 10 ms timer fires is how long the operator waits
    // for the screen to react.
    const int probeMs = 10;
    std::vector<double> latencies;
    QElapsedTimer sinceProbe;
    QTimer probe;
    probe.setTimerType(Qt::PreciseTimer);
    QObject::connect(&probe, &QTimer::timeout, [&] {
        const double late = sinceProbe.nsecsElapsed() / 1e6 - probeMs;
        latencies.push_back(std::max(0.0, late));
        sinceProbe.restart();
    });

    const int warmUpSeconds = qMin(10, seconds / 2);
    qint64 afterWarmUp = 0;
    qint64 last = 0;
    QElapsedTimer clock;
    QTimer sampler;
    QObject::connect(&sampler, &QTimer::timeout, [&] {
        last = residentBytes();
        const int at = int(clock.elapsed() / 1000);
        if (at >= warmUpSeconds && afterWarmUp == 0)
            afterWarmUp = last;
        // The heap in use tells growth of live data from memory the allocator
        // keeps after frees (fragmentation).
        const struct mallinfo2 heap = mallinfo2();
        out << QStringLiteral("  %1 s: resident %2 MiB, heap in use %3 MiB, %4 alarms, %5 rows shown\n")
                   .arg(at, 3).arg(last / 1048576.0, 0, 'f', 1).arg(double(heap.uordblks + heap.hblkhd) / 1048576.0, 0, 'f', 1)
                   .arg(model->count()).arg(proxy.rowCount());
        out.flush();
    });

    out << QStringLiteral("  0 s: resident %1 MiB before the flood\n").arg(residentBytes() / 1048576.0, 0, 'f', 1);
    clock.start();
    sinceProbe.start();
    feeder.start(tickMs);
    probe.start(probeMs);
    sampler.start(qMin(5000, seconds * 1000));
    QTimer::singleShot(seconds * 1000 + 10, &app, &QCoreApplication::quit);
    app.exec();

    const double growth = afterWarmUp > 0 ? 100.0 * double(last - afterWarmUp) / double(afterWarmUp) : 0;
    const double p50 = percentile(latencies, 0.50);
    const double p99 = percentile(latencies, 0.99);
    const double worst = latencies.empty() ? 0 : *std::max_element(latencies.begin(), latencies.end());
    out << QStringLiteral("  memory growth after %1 s warm-up: %2 % (goal <= 5 %) %3\n")
               .arg(warmUpSeconds).arg(growth, 0, 'f', 1)
               .arg(growth <= 5 ? QStringLiteral("ok") : QStringLiteral("MISSED"));
    out << QStringLiteral("  event-loop latency over %1 probes: p50 %2 ms, p99 %3 ms (goal <= 100 ms) %4, max %5 ms\n")
               .arg(latencies.size()).arg(p50, 0, 'f', 1).arg(p99, 0, 'f', 1)
               .arg(p99 <= 100 ? QStringLiteral("ok") : QStringLiteral("MISSED")).arg(worst, 0, 'f', 1);
    out << QStringLiteral("  operations applied: %1 (%2 alarms replaced)\n").arg(applied).arg(nextNumber - count);
    return 0;
}
