// Measures the alarm table proxy against baselines doing the same work in the
// same run, at 10 000 and 100 000 alarms (1 000 000 with --million):
// - the quick filter (literal, wildcard, regular expression) against a bare
//   loop of QRegularExpression::match over the same cell texts, alone and with
//   a structured filter in force;
// - the structured filter (5 rule sets) against a bare loop testing the same
//   rules on typed fields, with the same matching rows;
// - the stock QSortFilterProxyModel with the same expression, building its
//   row list from scratch and changing the filter of an existing one;
// - grouping, sorting, bursts (also with statistics consumers attached) and
//   memory per alarm.
// Every pass checks that it finds the same rows as its baseline.

#include "AlarmBurst.h"
#include "BenchCommon.h"
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
#include <cmath>
#include <functional>
#include <memory>
#include <vector>

using namespace BenchCommon;

namespace {

QTextStream out(stdout);

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

size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
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

struct Figures {
    int count = 0;
    double bytesPerAlarm = 0;
    // Quick filter: literal, wildcard, regular expression.
    double quick[3] = {0, 0, 0};
    double quickBare[3] = {0, 0, 0};
    double quickUnderStructured = 0;
    double stockFresh = 0;
    double stockChange = 0;
    double structured = 0;
    double structuredBare = 0;
    double grouping = 0;
    double sortFlat = 0;
    double burst = 0;
    double burstStats = 0;
    double statsPass = 0;
    bool agree = true;
};

// The same five rule sets as fiveRuleSets(), on the typed fields: what the
// structured filter has to do at the least.
bool bareFiveRuleSets(const AlarmInstance &alarm)
{
    const AlarmInstance::Data &d = alarm.getData();
    if (d.alarmClass.compare(QLatin1String("info"), Qt::CaseInsensitive) == 0 ||
        d.description.contains(QLatin1String("99")))
        return false;
    const QString &system = d.ident.getSystem();
    return ((system.compare(QLatin1String("System1"), Qt::CaseInsensitive) == 0 ||
             system.compare(QLatin1String("System2"), Qt::CaseInsensitive) == 0) &&
            d.priority > 150) ||
           d.alarmText.startsWith(QLatin1String("Pressure"), Qt::CaseInsensitive) ||
           d.alias.startsWith(QLatin1String("APum-1"), Qt::CaseInsensitive);
}

QVector<AlarmBurst> makeBursts(const QVector<AlarmInstancePtr> &alarms, int repeat, qint64 shift)
{
    QRandomGenerator random(7);
    QVector<AlarmBurst> bursts;
    for (int r = 0; r < repeat; ++r) {
        AlarmBurst burst;
        for (int i = 0; i < 3000; ++i) {
            AlarmInstance::Data data = alarms.at(int(random.bounded(alarms.size())))->getData();
            data.state = AlarmInstance::State(random.bounded(3));
            data.priority = data.priority / 10 * 10 + int(random.bounded(10));
            data.timeMs += shift;
            burst.upsert(QSharedPointer<AlarmInstance>::create(data));
        }
        bursts.append(burst);
    }
    return bursts;
}

// `sortRepeat` runs for the sort at every size: its growth from one size to
// the next is a ratio of two best times, each to be taken from as many runs.
Figures measure(int count, int repeat, int sortRepeat, bool stockChange)
{
    Figures f;
    f.count = count;
    const size_t heapBefore = heapInUse();
    const QVector<AlarmInstancePtr> alarms = makeAlarms(count);
    auto model = QSharedPointer<AlarmsModel>::create();
    model->setAlarms(alarms);
    AlarmsProxyModel proxy;
    proxy.setAlarmsModel(model);
    proxy.setGrouping(twoLevels());
    f.bytesPerAlarm = double(heapInUse() - heapBefore) / count;
    proxy.setGrouping(GroupingConfiguration());

    QVector<int> props;
    for (const ColumnDefinition &column : proxy.getColumnsDefinition(true))
        props << AlarmProp::byName(column.getId()).getIndex();

    // Each mode with its pattern and the expression a bare loop runs for it:
    // case-insensitive, anywhere in a cell.
    const QString patterns[3] = {QStringLiteral("pressure h"), QStringLiteral("apum*7"), QStringLiteral("pump.*7")};
    const QString expressions[3] = {QRegularExpression::escape(patterns[0]), QStringLiteral("apum.*7"), patterns[2]};
    QRegularExpression regexes[3];
    for (int m = 0; m < 3; ++m) {
        regexes[m] = QRegularExpression(expressions[m], QRegularExpression::CaseInsensitiveOption |
                                                            QRegularExpression::DotMatchesEverythingOption);
        regexes[m].optimize();
        const QRegularExpression &re = regexes[m];
        int bareMatches = 0;
        f.quickBare[m] = bestOf(repeat, nullptr, [&] {
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
        QuickCellFilter quick;
        quick.setMode(m);
        quick.setString(patterns[m]);
        f.quick[m] = bestOf(
            repeat, [&] { proxy.setQuickFilter(QuickCellFilter()); }, [&] { proxy.setQuickFilter(quick); });
        f.agree = f.agree && proxy.rowCount() == bareMatches;
        proxy.setQuickFilter(QuickCellFilter());
    }
    const QRegularExpression &re = regexes[2];

    CellTableModel cells(alarms, props);
    int stockRows = -1;
    std::unique_ptr<QSortFilterProxyModel> fresh;
    f.stockFresh = bestOf(
        repeat,
        [&] {
            fresh.reset(new QSortFilterProxyModel);
            fresh->setFilterKeyColumn(-1);
            fresh->setFilterRegularExpression(re);
        },
        [&] {
            // No row list yet: the proxy filters every row once.
            fresh->setSourceModel(&cells);
            stockRows = fresh->rowCount();
        });
    fresh.reset();
    if (stockChange) {
        QSortFilterProxyModel stock;
        stock.setSourceModel(&cells);
        stock.setFilterKeyColumn(-1);
        f.stockChange = bestOf(
            repeat,
            [&] {
                stock.setFilterRegularExpression(QRegularExpression());
                stock.rowCount();
            },
            [&] {
                // Qt's path for a new filter over an existing row list.
                stock.setFilterRegularExpression(re);
                stock.rowCount();
            });
    }

    const SourceAndFilter structured = fiveRuleSets();
    int bareStructured = 0;
    f.structuredBare = bestOf(repeat, nullptr, [&] {
        bareStructured = 0;
        for (const AlarmInstancePtr &alarm : alarms)
            bareStructured += bareFiveRuleSets(*alarm) ? 1 : 0;
    });
    f.structured = bestOf(
        repeat, [&] { proxy.setFilter(SourceAndFilter()); }, [&] { proxy.setFilter(structured); });
    f.agree = f.agree && proxy.rowCount() == bareStructured;

    // The quick filter with the structured filter in force: the product
    // evaluates both.
    QuickCellFilter quick;
    quick.setMode(QuickCellFilter::ModeRegularExpression);
    quick.setString(patterns[2]);
    f.quickUnderStructured = bestOf(
        repeat, [&] { proxy.setQuickFilter(QuickCellFilter()); }, [&] { proxy.setQuickFilter(quick); });
    int both = 0;
    for (const AlarmInstancePtr &alarm : alarms) {
        if (!bareFiveRuleSets(*alarm))
            continue;
        for (int prop : props) {
            if (re.match(alarm->getText(prop)).hasMatch()) {
                ++both;
                break;
            }
        }
    }
    f.agree = f.agree && proxy.rowCount() == both;
    proxy.setQuickFilter(QuickCellFilter());
    proxy.setFilter(SourceAndFilter());

    f.grouping = bestOf(
        repeat, [&] { proxy.setGrouping(GroupingConfiguration()); }, [&] { proxy.setGrouping(twoLevels()); });
    proxy.setGrouping(GroupingConfiguration());

    const int textColumn = props.indexOf(AlarmProp::AlarmText);
    f.sortFlat = bestOf(
        sortRepeat, [&] { proxy.sort(0, Qt::DescendingOrder); }, [&] { proxy.sort(textColumn, Qt::AscendingOrder); });
    proxy.sort(0, Qt::DescendingOrder);

    // Worst case burst: unfiltered, grouped, updates anywhere.
    proxy.setGrouping(twoLevels());
    const QVector<AlarmBurst> bursts = makeBursts(alarms, repeat, 500);
    int next = 0;
    f.burst = bestOf(repeat, nullptr, [&] { model->applyBurst(bursts.at(next++)); });

    // The same table with a statistics bar of 20 filters counting the same model.
    const QVector<SourceAndFilter> statsFilters = statisticsFilters();
    FilterStatisticsValueConsumer single;
    single.setModel(model);
    f.statsPass = bestOf(
        repeat, [&] { single.setFilter(QStringLiteral("pass"), SourceAndFilter()); },
        [&] { single.setFilter(QStringLiteral("pass"), statsFilters.first()); });
    single.setModel(QSharedPointer<AlarmsModel>());
    std::vector<std::unique_ptr<FilterStatisticsValueConsumer>> consumers;
    for (int s = 0; s < statsFilters.size(); ++s) {
        consumers.emplace_back(new FilterStatisticsValueConsumer);
        consumers.back()->setFilter(QStringLiteral("f%1").arg(s), statsFilters.at(s));
        consumers.back()->setTextTemplate(QStringLiteral("%id%: %matching% of %total%, %unacknowledged% unack."));
        consumers.back()->setModel(model);
    }
    const QVector<AlarmBurst> statsBursts = makeBursts(alarms, repeat, 900);
    next = 0;
    f.burstStats = bestOf(repeat, nullptr, [&] { model->applyBurst(statsBursts.at(next++)); });
    consumers.clear();
    f.agree = f.agree && stockRows >= 0;
    return f;
}

QString ms(double value)
{
    return QString::number(value, 'f', value < 10 ? 2 : 1);
}

void row(const QString &what, const QVector<double> &values, const QVector<double> &baselines, double target)
{
    QString line = QStringLiteral("  %1").arg(what, -58);
    bool ok = true;
    for (int i = 0; i < values.size(); ++i) {
        if (baselines.isEmpty()) {
            line += QStringLiteral(" %1").arg(ms(values.at(i)), 20);
            continue;
        }
        const double ratio = values.at(i) / baselines.at(i);
        ok = ok && ratio <= target;
        line += QStringLiteral(" %1").arg(QStringLiteral("%1 ms %2x").arg(ms(values.at(i))).arg(ratio, 0, 'f', 2), 20);
    }
    if (target > 0)
        line += QStringLiteral("  <= %1x %2").arg(target, 0, 'f', 1).arg(ok ? QStringLiteral("ok") : QStringLiteral("MISSED"));
    out << line << '\n';
    out.flush();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QVector<int> counts{10000, 100000};
    int repeat = 5;
    const QStringList args = app.arguments();
    for (int i = 1; i < args.size(); ++i) {
        if (args.at(i) == QLatin1String("--alarms") && i + 1 < args.size())
            counts = {qMax(100, args.at(++i).toInt())};
        else if (args.at(i) == QLatin1String("--repeat") && i + 1 < args.size())
            repeat = qMax(1, args.at(++i).toInt());
        else if (args.at(i) == QLatin1String("--million"))
            counts << 1000000;
    }
    MsgLoggingProducer::setDefaultLogThreshold(4);
    out << QStringLiteral("Alarm table benchmarks, best of %1 runs; each ratio is to the baseline named after it\n")
               .arg(repeat);

    QVector<Figures> all;
    for (int count : counts) {
        out << QStringLiteral("  measuring %1 alarms...\n").arg(count);
        out.flush();
        // Qt's filter-change path grows worse than n log n: at a million it
        // would take minutes, so it is only timed below.
        all << measure(count, count <= 100000 ? repeat : qMin(repeat, 2), repeat, count <= 100000);
    }
    const auto pick = [&all](const std::function<double(const Figures &)> &get) {
        QVector<double> values;
        for (const Figures &f : all)
            values << get(f);
        return values;
    };
    QString header = QStringLiteral("  %1").arg(QStringLiteral("alarms"), -58);
    for (const Figures &f : all)
        header += QStringLiteral(" %1").arg(f.count, 20);
    out << header << '\n';
    const char *modes[3] = {"literal", "wildcard", "regular expression"};
    for (int m = 0; m < 3; ++m) {
        row(QStringLiteral("bare QRegularExpression loop, %1").arg(QLatin1String(modes[m])),
            pick([m](const Figures &f) { return f.quickBare[m]; }), {}, 0);
        row(QStringLiteral("quick filter, %1 / bare loop").arg(QLatin1String(modes[m])),
            pick([m](const Figures &f) { return f.quick[m]; }), pick([m](const Figures &f) { return f.quickBare[m]; }),
            m == 2 ? 1.0 : 0.3);
    }
    row(QStringLiteral("QSortFilterProxyModel, fresh row list"), pick([](const Figures &f) { return f.stockFresh; }),
        {}, 0);
    row(QStringLiteral("QSortFilterProxyModel, filter change"), pick([](const Figures &f) { return f.stockChange; }),
        {}, 0);
    row(QStringLiteral("quick filter, regex / stock proxy fresh row list"),
        pick([](const Figures &f) { return f.quick[2]; }), pick([](const Figures &f) { return f.stockFresh; }), 1.0);
    row(QStringLiteral("quick filter under the structured filter / bare regex"),
        pick([](const Figures &f) { return f.quickUnderStructured; }),
        pick([](const Figures &f) { return f.quickBare[2]; }), 1.0);
    row(QStringLiteral("bare loop, 5 rule sets on typed fields"), pick([](const Figures &f) { return f.structuredBare; }),
        {}, 0);
    row(QStringLiteral("structured filter, 5 rule sets / same-work bare loop"),
        pick([](const Figures &f) { return f.structured; }), pick([](const Figures &f) { return f.structuredBare; }),
        1.5);
    row(QStringLiteral("two-level grouping rebuild / structured bare loop"),
        pick([](const Figures &f) { return f.grouping; }), pick([](const Figures &f) { return f.structuredBare; }), 0);
    row(QStringLiteral("sort by text, flat (ms)"), pick([](const Figures &f) { return f.sortFlat; }), {}, 0);
    row(QStringLiteral("burst of 3000, unfiltered and grouped (ms)"), pick([](const Figures &f) { return f.burst; }),
        {}, 0);
    row(QStringLiteral("the same burst, 20 statistics filters attached / without"),
        pick([](const Figures &f) { return f.burstStats; }), pick([](const Figures &f) { return f.burst; }), 0);
    row(QStringLiteral("one statistics filter pass (ms)"), pick([](const Figures &f) { return f.statsPass; }), {}, 0);
    row(QStringLiteral("memory, bytes per alarm (model, proxy, grouping)"),
        pick([](const Figures &f) { return f.bytesPerAlarm; }), {}, 0);
    for (int i = 1; i < all.size(); ++i) {
        const double growth = all.at(i).sortFlat / all.at(i - 1).sortFlat;
        const double factor = double(all.at(i).count) / all.at(i - 1).count;
        out << QStringLiteral("  sort growth %1 -> %2: %3x (n log n: %4x)\n")
                   .arg(all.at(i - 1).count)
                   .arg(all.at(i).count)
                   .arg(growth, 0, 'f', 1)
                   .arg(factor * std::log(double(all.at(i).count)) / std::log(double(all.at(i - 1).count)), 0, 'f', 1);
    }
    bool memoryOk = true;
    for (const Figures &f : all)
        memoryOk = memoryOk && f.bytesPerAlarm <= 1024;
    out << QStringLiteral("  memory <= 1024 bytes per alarm: %1\n").arg(memoryOk ? QStringLiteral("ok") : QStringLiteral("MISSED"));
    for (const Figures &f : all) {
        if (!f.agree) {
            out << QStringLiteral("  ERROR: at %1 alarms a filter and its baseline disagree about the matching rows\n")
                       .arg(f.count);
            return 1;
        }
    }
    return 0;
}
