// Measures the alarm table proxy at a realistic size (100 000 alarms by
// default) against baselines measured in the same run: a bare loop of
// QRegularExpression::match over the same cell texts, and a stock
// QSortFilterProxyModel with the same expression. Prints each figure and its
// ratio to the target.

#include "AlarmBurst.h"
#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "FilterStatisticsValueConsumer.h"
#include "FilterRuleContainer.h"
#include "FilterRuleSet.h"
#include "GroupingConfiguration.h"
#include "ValueFilterNumbers.h"
#include "ValueFilterStringPattern.h"

#include <QAbstractTableModel>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSortFilterProxyModel>
#include <QTextStream>

#include <malloc.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

namespace {

QTextStream out(stdout);

const char *const devices[] = {"Motor", "Pump", "Valve", "Tank", "Compressor", "Fan", "Heater", "Conveyor"};
const char *const texts[] = {"Overtemperature", "Pressure high", "Pressure low", "Level high",
                             "Level low", "Vibration", "Protection tripped", "Communication lost"};
const char *const classes[] = {"alert", "warning", "info"};
const qint64 baseTime = 1700000000000;

// Every alarm on its own element, with its own alias and description (the
// expensive case for memory); systems, texts and classes are shared.
QVector<AlarmInstancePtr> makeAlarms(int count)
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

// The cells of the alarms as a plain table model: what a stock proxy filters.
class CellTableModel : public QAbstractTableModel
{
public:
    CellTableModel(const QVector<AlarmInstancePtr> &alarms, const QVector<int> &props)
        : m_alarms(alarms), m_props(props)
    {
    }
    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : m_alarms.size(); }
    int columnCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : m_props.size(); }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole)
            return QVariant();
        return m_alarms.at(index.row())->getText(m_props.at(index.column()));
    }

private:
    QVector<AlarmInstancePtr> m_alarms;
    QVector<int> m_props;
};

double bestOf(int repeat, const std::function<void()> &prepare, const std::function<void()> &measured)
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

size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

QSharedPointer<ValueFilter> pattern(const QString &property, const QString &text)
{
    auto filter = QSharedPointer<ValueFilterStringPattern>::create(WildcardConfig(), property,
                                                                   Constants::ValueSourceAlarm, false);
    filter->setFilterText(text);
    return filter;
}

QSharedPointer<ValueFilter> numbers(const QString &property, const QString &text)
{
    auto filter = QSharedPointer<ValueFilterNumbers>::create(WildcardConfig(), property,
                                                             Constants::ValueSourceAlarm, false);
    filter->setFilterText(text);
    return filter;
}

FilterRuleSet ruleSet(bool include, const QList<QSharedPointer<ValueFilter>> &filters)
{
    FilterRuleSet set(WildcardConfig(), include, false);
    for (const auto &f : filters)
        set.addFilter(f);
    return set;
}

SourceAndFilter fiveRuleSets()
{
    const QList<FilterRuleSet> sets = {
        ruleSet(true, {pattern(QStringLiteral("system"), QStringLiteral("System1;System2")),
                       numbers(QStringLiteral("priority"), QStringLiteral(">150"))}),
        ruleSet(true, {pattern(QStringLiteral("text"), QStringLiteral("Pressure*"))}),
        ruleSet(true, {pattern(QStringLiteral("alias"), QStringLiteral("APum-1*"))}),
        ruleSet(false, {pattern(QStringLiteral("alarmClass"), QStringLiteral("info"))}),
        ruleSet(false, {pattern(QStringLiteral("description"), QStringLiteral("*99*"))}),
    };
    SourceAndFilter filter;
    filter.setFilterContainer(QSharedPointer<FilterRuleContainer>::create(WildcardConfig(), sets, false));
    return filter;
}

// Twenty statistics filters as a statistics bar has them: per system and
// class, per text, per priority band.
QVector<SourceAndFilter> statisticsFilters()
{
    QVector<SourceAndFilter> filters;
    const auto single = [](const QList<QSharedPointer<ValueFilter>> &rules) {
        SourceAndFilter filter;
        filter.setFilterContainer(
            QSharedPointer<FilterRuleContainer>::create(WildcardConfig(), QList<FilterRuleSet>{ruleSet(true, rules)}, false));
        return filter;
    };
    for (int s = 1; s <= 10; ++s)
        filters << single({pattern(QStringLiteral("system"), QStringLiteral("System%1").arg(s)),
                           pattern(QStringLiteral("alarmClass"), QStringLiteral("alert"))});
    for (const char *t : texts)
        filters << single({pattern(QStringLiteral("text"), QLatin1String(t))});
    filters << single({numbers(QStringLiteral("priority"), QStringLiteral(">150"))});
    filters << single({numbers(QStringLiteral("priority"), QStringLiteral("<50"))});
    return filters;
}

GroupingConfiguration twoLevels()
{
    GroupingConfiguration grouping(nullptr, QStringLiteral("bench"));
    grouping.addRule(QSharedPointer<AlarmsGroupRule>::create(0, QStringLiteral("system")));
    grouping.addRule(QSharedPointer<AlarmsGroupRule>::create(0, QStringLiteral("alarmClass")));
    return grouping;
}

void report(const char *what, double ms, double baselineMs, const char *baseline, double target)
{
    const double ratio = ms / baselineMs;
    out << QStringLiteral("  %1: %2 ms = %3x %4 (target <= %5x) %6\n")
               .arg(QLatin1String(what))
               .arg(ms, 0, 'f', 1)
               .arg(ratio, 0, 'f', 2)
               .arg(QLatin1String(baseline))
               .arg(target, 0, 'f', 1)
               .arg(ratio <= target ? QStringLiteral("ok") : QStringLiteral("MISSED"));
    out.flush();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    int count = 100000;
    int repeat = 5;
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); i += 2) {
        if (args.at(i) == QLatin1String("--alarms"))
            count = qMax(100, args.at(i + 1).toInt());
        else if (args.at(i) == QLatin1String("--repeat"))
            repeat = qMax(1, args.at(i + 1).toInt());
    }
    MsgLoggingProducer::setDefaultLogThreshold(4);
    out << QStringLiteral("Alarm table benchmarks, %1 alarms, best of %2 runs\n").arg(count).arg(repeat);

    const size_t heapBefore = heapInUse();
    const QVector<AlarmInstancePtr> alarms = makeAlarms(count);
    auto model = QSharedPointer<AlarmsModel>::create();
    model->setAlarms(alarms);
    AlarmsProxyModel proxy;
    proxy.setAlarmsModel(model);
    const double bytesPerAlarm = double(heapInUse() - heapBefore) / count;

    QVector<int> props;
    for (const ColumnDefinition &column : proxy.getColumnsDefinition(true))
        props << AlarmProp::byName(column.getId()).getIndex();

    // The same expression everywhere: case-insensitive, anywhere in a cell.
    const QString expression = QStringLiteral("pump.*7");
    QRegularExpression re(expression, QRegularExpression::CaseInsensitiveOption);
    re.optimize();
    int bareMatches = 0;
    const double bare = bestOf(repeat, nullptr, [&] {
        bareMatches = 0;
        for (const AlarmInstancePtr &alarm : alarms) {
            for (int prop : props) {
                if (re.match(alarm->getText(prop)).hasMatch()) {
                    ++bareMatches;
                    break;
                }
            }
        }
    });

    CellTableModel cells(alarms, props);
    QSortFilterProxyModel stock;
    stock.setSourceModel(&cells);
    stock.setFilterKeyColumn(-1);
    const double stockMs = bestOf(
        repeat,
        [&] {
            stock.setFilterRegularExpression(QRegularExpression());
            stock.rowCount();
        },
        [&] {
            // The stock proxy maps rows when they are first asked for.
            stock.setFilterRegularExpression(re);
            stock.rowCount();
        });

    QuickCellFilter quick;
    quick.setMode(QuickCellFilter::ModeRegularExpression);
    quick.setString(expression);
    const double quickMs = bestOf(
        repeat, [&] { proxy.setQuickFilter(QuickCellFilter()); }, [&] { proxy.setQuickFilter(quick); });
    const int quickRows = proxy.rowCount();
    proxy.setQuickFilter(QuickCellFilter());

    const SourceAndFilter structured = fiveRuleSets();
    const double structuredMs = bestOf(
        repeat, [&] { proxy.setFilter(SourceAndFilter()); }, [&] { proxy.setFilter(structured); });
    const int structuredRows = proxy.rowCount();
    proxy.setFilter(SourceAndFilter());

    const double groupingMs = bestOf(
        repeat, [&] { proxy.setGrouping(GroupingConfiguration()); }, [&] { proxy.setGrouping(twoLevels()); });

    // 3000 live updates with the structured filter and the grouping in force.
    proxy.setFilter(structured);
    QRandomGenerator random(7);
    QVector<AlarmBurst> bursts;
    for (int r = 0; r < repeat; ++r) {
        AlarmBurst burst;
        for (int i = 0; i < 3000; ++i) {
            AlarmInstance::Data data = alarms.at(int(random.bounded(count)))->getData();
            data.state = AlarmInstance::State(random.bounded(3));
            data.priority = data.priority / 10 * 10 + int(random.bounded(10));
            data.timeMs += 500;
            burst.upsert(QSharedPointer<AlarmInstance>::create(data));
        }
        bursts.append(burst);
    }
    int next = 0;
    const double burstMs = bestOf(repeat, nullptr, [&] { model->applyBurst(bursts.at(next++)); });

    // Statistics: 20 filters counted over their own model (no proxy), under
    // the same kind of burst; baseline: one filter counting the whole model.
    auto statsModel = QSharedPointer<AlarmsModel>::create();
    statsModel->setAlarms(alarms);
    const QVector<SourceAndFilter> statsFilters = statisticsFilters();
    std::vector<std::unique_ptr<FilterStatisticsValueConsumer>> consumers;
    FilterStatisticsValueConsumer single;
    single.setModel(statsModel);
    const double passMs = bestOf(
        repeat, [&] { single.setFilter(QStringLiteral("pass"), SourceAndFilter()); },
        [&] { single.setFilter(QStringLiteral("pass"), statsFilters.first()); });
    single.setModel(QSharedPointer<AlarmsModel>());
    for (int f = 0; f < statsFilters.size(); ++f) {
        consumers.emplace_back(new FilterStatisticsValueConsumer);
        consumers.back()->setFilter(QStringLiteral("f%1").arg(f), statsFilters.at(f));
        consumers.back()->setTextTemplate(QStringLiteral("%id%: %matching% of %total%, %unacknowledged% unack."));
        consumers.back()->setModel(statsModel);
    }
    next = 0;
    const double statsBurstMs = bestOf(repeat, nullptr, [&] { statsModel->applyBurst(bursts.at(next++)); });
    consumers.clear();
    next = 0;
    QVector<AlarmBurst> bareBursts = bursts; // the same updates once more, on a model without consumers
    auto bareModel = QSharedPointer<AlarmsModel>::create();
    bareModel->setAlarms(alarms);
    const double bareBurstMs = bestOf(repeat, nullptr, [&] { bareModel->applyBurst(bareBursts.at(next++)); });

    out << QStringLiteral("  memory: %1 bytes per alarm (model and proxy; target <= 1024) %2\n")
               .arg(bytesPerAlarm, 0, 'f', 0)
               .arg(bytesPerAlarm <= 1024 ? QStringLiteral("ok") : QStringLiteral("MISSED"));
    out << QStringLiteral("  baselines: bare regex loop %1 ms (%2 matching rows), QSortFilterProxyModel %3 ms (%4 rows)\n")
               .arg(bare, 0, 'f', 1)
               .arg(bareMatches)
               .arg(stockMs, 0, 'f', 1)
               .arg(stock.rowCount());
    out << QStringLiteral("  quick filter rows %1, structured filter rows %2\n").arg(quickRows).arg(structuredRows);
    report("quick filter pass", quickMs, stockMs, "QSortFilterProxyModel", 1.0);
    report("quick filter pass", quickMs, bare, "bare loop", 3.0);
    report("structured filter, 5 rule sets", structuredMs, bare, "bare loop", 3.0);
    report("two-level grouping rebuild", groupingMs, quickMs, "quick filter pass", 2.0);
    report("burst of 3000 updates, filtered and grouped", burstMs, quickMs, "quick filter pass", 2.0);
    out << QStringLiteral("  statistics baselines: one filter pass %1 ms, the burst without consumers %2 ms\n")
               .arg(passMs, 0, 'f', 1)
               .arg(bareBurstMs, 0, 'f', 1);
    report("burst of 3000 updates counted by 20 statistics filters", statsBurstMs, passMs, "one filter pass", 2.0);
    if (quickRows != bareMatches || stock.rowCount() != bareMatches) {
        out << "  ERROR: the filters disagree about the matching rows\n";
        return 1;
    }
    return 0;
}
