// Measures live bursts in the alarm table proxy at a realistic size (100 000
// alarms by default), in the worst case: no filter, so every row is shown, and
// updates that move their alarms anywhere in the table. Baselines come from
// the same run:
// - the grouped burst against the flat burst of the same changes;
// - a burst with a tree view on the table holding 100 selected rows, against
//   one quick filter pass of the same proxy with the same view and selection.

#include "AlarmBurst.h"
#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "BenchCommon.h"
#include "GroupingConfiguration.h"
#include "ViewTopAnchor.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QRandomGenerator>
#include <QTextStream>
#include <QTreeView>

using namespace BenchCommon;

namespace {

QTextStream out(stdout);
const int burstSize = 3000;

GroupingConfiguration twoLevels()
{
    GroupingConfiguration grouping(nullptr, QStringLiteral("bench"));
    grouping.addRule(QSharedPointer<AlarmsGroupRule>::create(0, QStringLiteral("system")));
    grouping.addRule(QSharedPointer<AlarmsGroupRule>::create(0, QStringLiteral("alarmClass")));
    return grouping;
}

// `repeat` bursts of updates of random alarms: a new time anywhere in the
// table's range, a new state and priority. The same seed gives the same
// bursts to every configuration.
QVector<AlarmBurst> makeBursts(const QVector<AlarmInstancePtr> &alarms, int repeat)
{
    QRandomGenerator random(7);
    const int count = alarms.size();
    QVector<AlarmBurst> bursts;
    for (int r = 0; r < repeat; ++r) {
        AlarmBurst burst;
        for (int i = 0; i < burstSize; ++i) {
            AlarmInstance::Data data = alarms.at(int(random.bounded(count)))->getData();
            data.state = AlarmInstance::State(random.bounded(3));
            data.priority = data.priority / 10 * 10 + int(random.bounded(10));
            data.timeMs = baseTime + qint64(random.bounded(count)) * 1000;
            burst.upsert(QSharedPointer<AlarmInstance>::create(data));
        }
        bursts.append(burst);
    }
    return bursts;
}

struct Table {
    QSharedPointer<AlarmsModel> model = QSharedPointer<AlarmsModel>::create();
    AlarmsProxyModel proxy;

    Table(const QVector<AlarmInstancePtr> &alarms, const GroupingConfiguration &grouping)
    {
        model->setAlarms(alarms);
        proxy.setAlarmsModel(model);
        proxy.setGrouping(grouping);
    }
};

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
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    int count = 100000;
    int repeat = 5;
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); i += 2) {
        if (args.at(i) == QLatin1String("--alarms"))
            count = qMax(burstSize, args.at(i + 1).toInt());
        else if (args.at(i) == QLatin1String("--repeat"))
            repeat = qMax(1, args.at(i + 1).toInt());
    }
    MsgLoggingProducer::setDefaultLogThreshold(4);
    out << QStringLiteral("Burst benchmarks, %1 alarms, bursts of %2 updates, no filter, best of %3 runs\n")
               .arg(count)
               .arg(burstSize)
               .arg(repeat);
    const QVector<AlarmInstancePtr> alarms = makeAlarms(count);
    const QVector<AlarmBurst> bursts = makeBursts(alarms, repeat);

    // The three take turns burst by burst, so that a busy machine slows
    // them alike.
    AlarmsModel modelAlone; // the model's own share of every burst: no table attached
    modelAlone.setAlarms(alarms);
    Table flat(alarms, GroupingConfiguration());
    Table grouped(alarms, twoLevels());
    double modelMs = 1e300;
    double flatMs = 1e300;
    double groupedMs = 1e300;
    for (const AlarmBurst &burst : bursts) {
        modelMs = std::min(modelMs, bestOf(1, nullptr, [&] { modelAlone.applyBurst(burst); }));
        flatMs = std::min(flatMs, bestOf(1, nullptr, [&] { flat.model->applyBurst(burst); }));
        groupedMs = std::min(groupedMs, bestOf(1, nullptr, [&] { grouped.model->applyBurst(burst); }));
    }

    // The operator's view: a tree view with 100 selected rows spread over
    // the table, the current row and the top row kept.
    Table viewed(alarms, GroupingConfiguration());
    QTreeView view;
    view.setModel(&viewed.proxy);
    view.setUniformRowHeights(true);
    view.resize(1200, 800);
    new ViewTopAnchor(&view);
    // A filter pass deselects the rows it hides: each run starts from the
    // same 100 selected rows.
    const auto selectRows = [&] {
        QCoreApplication::processEvents();
        view.selectionModel()->clearSelection();
        for (int i = 0; i < 100; ++i) {
            view.selectionModel()->select(viewed.proxy.index(i * (count / 100), 0),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        view.selectionModel()->setCurrentIndex(viewed.proxy.index(count / 2, 0), QItemSelectionModel::NoUpdate);
    };
    view.show();
    QuickCellFilter quick;
    quick.setMode(QuickCellFilter::ModeLiteral);
    quick.setString(QStringLiteral("pump"));
    const double filterMs = bestOf(
        repeat,
        [&] {
            viewed.proxy.setQuickFilter(QuickCellFilter());
            selectRows();
        },
        [&] { viewed.proxy.setQuickFilter(quick); });
    const int filterRows = viewed.proxy.rowCount();
    viewed.proxy.setQuickFilter(QuickCellFilter());
    selectRows();
    int next = 0;
    const double viewedMs = bestOf(
        repeat, [&] { QCoreApplication::processEvents(); }, [&] { viewed.model->applyBurst(bursts.at(next++)); });
    const int selectedRows = view.selectionModel()->selectedRows().size();

    out << QStringLiteral("  flat burst: %1 ms, of which %2 ms the alarm model alone\n")
               .arg(flatMs, 0, 'f', 1)
               .arg(modelMs, 0, 'f', 1);
    out << QStringLiteral("  baseline: quick filter \"pump\" pass with the view, %1 ms (%2 rows)\n")
               .arg(filterMs, 0, 'f', 1)
               .arg(filterRows);
    report("grouped burst (two levels)", groupedMs, flatMs, "flat burst", 1.2);
    report("burst with 100 selected rows in a view", viewedMs, filterMs, "quick filter pass", 2.0);
    if (selectedRows != 100) {
        out << QStringLiteral("  ERROR: %1 of the 100 selected rows are still selected\n").arg(selectedRows);
        return 1;
    }
    return 0;
}
