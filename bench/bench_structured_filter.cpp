// The structured filter of the filter tabs, against baselines measured in the
// same run:
// - a filter of 5 rule sets (include and exclude, as the tabs build them)
//   applied to 100 000 alarms, against a bare loop that does the same
//   matches with the same pattern matchers on the alarms' texts (typed
//   accessors, no QVariant); both must find the same alarms, target <= 3x;
// - a tab page of 30 pattern editors with their labels, against the same
//   page made of 30 plain QLineEdits; target under 50 ms.

#include "BenchCommon.h"
#include "AlarmFilterValues.h"
#include "AlarmInstance.h"
#include "AlarmProp.h"
#include "FilterRuleContainer.h"
#include "StringPatternEditor.h"
#include "TextMatcher.h"
#include "ValueFilterStringPattern.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QTextStream>

#include <functional>

using BenchCommon::bestOf;

namespace {

QTextStream out(stdout);

QVector<QSharedPointer<AlarmInstance>> makeAlarms(int count)
{
    static const char *const devices[] = {"Motor", "Pump", "Valve", "Tank", "Compressor", "Fan", "Heater", "Conveyor"};
    static const char *const texts[] = {"Overtemperature", "Pressure high", "Pressure low", "Level high",
                                        "Level low", "Vibration", "Protection tripped", "Communication lost"};
    static const char *const classes[] = {"alert", "warning", "info"};
    QRandomGenerator random(7);
    QVector<QSharedPointer<AlarmInstance>> alarms;
    alarms.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QString system = QStringLiteral("System%1").arg(i % 10);
        const QLatin1String device(devices[random.bounded(8)]);
        AlarmInstance::Data data;
        data.ident = AlarmIdent(system, i + 1);
        data.dpe = QStringLiteral("%1:Area%2.%3%4.alarm").arg(system).arg(i / 500 % 100).arg(device).arg(i);
        data.description = QStringLiteral("%1 %2 in area %3").arg(device).arg(i).arg(i / 500 % 100);
        data.alarmText = QLatin1String(texts[random.bounded(8)]);
        data.alarmClass = QLatin1String(classes[random.bounded(3)]);
        alarms.append(QSharedPointer<AlarmInstance>::create(data));
    }
    return alarms;
}

struct Rule
{
    int prop;
    QString pattern;
};

struct RuleSet
{
    bool include;
    QVector<Rule> rules;
};

// Five tabs as an operator fills them: three include sets, two exclude sets.
const QVector<RuleSet> &ruleSets()
{
    static const QVector<RuleSet> sets = {
        {true, {{AlarmProp::System, QStringLiteral("System1")}, {AlarmProp::AlarmClass, QStringLiteral("alert")}}},
        {true, {{AlarmProp::AlarmText, QStringLiteral("Pressure*")}}},
        {true, {{AlarmProp::Dpe, QStringLiteral("*Pump*")}, {AlarmProp::AlarmClass, QStringLiteral("warning")}}},
        {false, {{AlarmProp::Description, QStringLiteral("* in area 1?")}}},
        {false, {{AlarmProp::AlarmText, QStringLiteral("Vibration")}}},
    };
    return sets;
}

FilterRuleContainer structuredFilter()
{
    QList<FilterRuleSet> sets;
    for (const RuleSet &set : ruleSets()) {
        FilterRuleSet ruleSet(WildcardConfig(), set.include, false);
        for (const Rule &rule : set.rules) {
            auto filter = QSharedPointer<ValueFilterStringPattern>::create(
                WildcardConfig(), AlarmProp::byIndex(rule.prop).getName(), Constants::ValueSourceAlarm, false);
            filter->setFilterText(rule.pattern);
            ruleSet.addFilter(filter);
        }
        sets.append(ruleSet);
    }
    return FilterRuleContainer(WildcardConfig(), sets, false);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    int count = 100000;
    int repeat = 5;
    int editors = 30;
    const QStringList args = app.arguments();
    for (int i = 1; i + 1 < args.size(); i += 2) {
        if (args.at(i) == QLatin1String("--alarms"))
            count = qMax(100, args.at(i + 1).toInt());
        else if (args.at(i) == QLatin1String("--repeat"))
            repeat = qMax(1, args.at(i + 1).toInt());
        else if (args.at(i) == QLatin1String("--editors"))
            editors = qMax(1, args.at(i + 1).toInt());
    }
    MsgLoggingProducer::setDefaultLogThreshold(4);
    out << QStringLiteral("Structured filter benchmarks, %1 alarms, best of %2 runs\n").arg(count).arg(repeat);

    const QVector<QSharedPointer<AlarmInstance>> alarms = makeAlarms(count);

    // The baseline: the same rule sets as matchers on the texts, no QVariant.
    struct BareRule
    {
        int prop;
        TextMatcher matcher;
    };
    QVector<QPair<bool, QVector<BareRule>>> bare;
    for (const RuleSet &set : ruleSets()) {
        QVector<BareRule> rules;
        for (const Rule &rule : set.rules) {
            BareRule r{rule.prop, TextMatcher()};
            r.matcher.setPattern(rule.pattern, TextMatcher::Wildcard, Qt::CaseInsensitive, true);
            rules.append(r);
        }
        bare.append({set.include, rules});
    }
    int bareMatches = 0;
    const double baseline = bestOf(repeat, [&] {
        bareMatches = 0;
        for (const auto &alarm : alarms) {
            bool anyInclude = false;
            bool included = false;
            bool excluded = false;
            for (const auto &set : qAsConst(bare)) {
                bool all = true;
                for (const BareRule &rule : set.second) {
                    if (!rule.matcher.matches(alarm->getText(rule.prop))) {
                        all = false;
                        break;
                    }
                }
                if (set.first) {
                    anyInclude = true;
                    included = included || all;
                } else if (all) {
                    excluded = true;
                    break;
                }
            }
            if ((included || !anyInclude) && !excluded)
                ++bareMatches;
        }
    });

    const FilterRuleContainer filter = structuredFilter();
    int filterMatches = 0;
    const double applied = bestOf(repeat, [&] {
        filterMatches = 0;
        AlarmFilterValues values;
        for (const auto &alarm : alarms) {
            values.setAlarm(alarm.data());
            if (filter.matches(values))
                ++filterMatches;
        }
    });
    const double ratio = applied / baseline;
    out << QStringLiteral("  5 rule sets on %1 alarms: %2 ms = %3x a bare loop of the same matches (%4 ms); "
                          "target <= 3x %5\n")
               .arg(count)
               .arg(applied, 0, 'f', 1)
               .arg(ratio, 0, 'f', 2)
               .arg(baseline, 0, 'f', 1)
               .arg(ratio <= 3.0 ? QStringLiteral("ok") : QStringLiteral("MISSED"));
    out << QStringLiteral("  matching alarms: %1 (bare loop %2)\n").arg(filterMatches).arg(bareMatches);
    if (filterMatches != bareMatches || filterMatches == 0 || filterMatches == count) {
        out << QStringLiteral("  ERROR: the filter and the bare loop disagree, or the filter decides nothing\n");
        return 1;
    }

    // A tab page: labelled editors in a grid, as the standard plug-in lays them out.
    const WildcardConfig wildcards;
    const auto page = [&](const std::function<QWidget *(int, QWidget *)> &make) {
        QWidget widget;
        auto *layout = new QGridLayout(&widget);
        for (int i = 0; i < editors; ++i) {
            layout->addWidget(new QLabel(QStringLiteral("Property %1").arg(i), &widget), i / 3, 2 * (i % 3));
            layout->addWidget(make(i, &widget), i / 3, 2 * (i % 3) + 1);
        }
        widget.adjustSize(); // lays the page out, as showing it would
    };
    const double plain = bestOf(repeat, [&] { page([](int, QWidget *parent) { return new QLineEdit(parent); }); });
    const double patterns = bestOf(repeat, [&] {
        page([&wildcards](int i, QWidget *parent) {
            return new StringPatternEditor(wildcards, QStringLiteral("p%1").arg(i), Constants::ValueSourceAlarm, parent);
        });
    });
    out << QStringLiteral("  tab page of %1 pattern editors: %2 ms = %3x %1 plain QLineEdits (%4 ms); "
                          "target < 50 ms %5\n")
               .arg(editors)
               .arg(patterns, 0, 'f', 2)
               .arg(patterns / plain, 0, 'f', 2)
               .arg(plain, 0, 'f', 2)
               .arg(patterns < 50.0 ? QStringLiteral("ok") : QStringLiteral("MISSED"));
    return 0;
}
