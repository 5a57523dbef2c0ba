#pragma once

#include "AlarmFilterValues.h"
#include "AlarmInstance.h"
#include "QuickCellFilter.h"
#include "SourceAndFilter.h"
#include "TextMatcher.h"
#include "ValueFilterStringPattern.h"
#include "alarmmodel_export.h"

#include <QSet>
#include <QVector>

// Decides whether one alarm passes a source-and-filter record (its rule sets
// and its choice of systems or datapoint names) and, optionally, a quick
// filter over some of the alarm's texts. Filters that restrict nothing are
// skipped altogether, so an empty matcher costs nothing per alarm.
class ALARMMODEL_EXPORT AlarmMatcher
{
public:
    AlarmMatcher();

    // The rule sets are read here: a container changed afterwards needs
    // another setFilter() (its value filters are kept alive, not copied).
    void setFilter(const SourceAndFilter &filter);
    const SourceAndFilter &getFilter() const { return m_filter; }
    // The quick filter is matched against the texts of `propIndexes` (the
    // table's columns); an alarm passes when any of them matches.
    void setQuickFilter(const QuickCellFilter &filter, const QVector<int> &propIndexes);
    const QuickCellFilter &getQuickFilter() const { return m_quick; }

    bool isEmpty() const { return m_structuredEmpty && m_quickEmpty; }
    bool matches(const AlarmInstance &alarm) const
    {
        return (m_structuredEmpty || matchesStructured(alarm)) && (m_quickEmpty || matchesQuick(alarm));
    }
    bool matchesStructured(const AlarmInstance &alarm) const;
    bool matchesQuick(const AlarmInstance &alarm) const;

private:
    // The rule sets as the pass tests them, read from the filter container
    // once: every non-empty value filter with the property it reads, so that
    // no alarm pays for names, empty filters or empty sets.
    struct Rule {
        QSharedPointer<ValueFilter> filter;
        // Set for the most common rule, a pattern list on a text: it is
        // matched without a virtual call.
        const ValueFilterStringPattern *pattern;
        int propIndex;
    };
    // Rules [begin, end) of m_rules, which must all pass.
    struct RuleSet {
        int begin;
        int end;
    };
    bool ruleSetMatches(const RuleSet &set, const AlarmInstance &alarm) const;

    SourceAndFilter m_filter;
    QSet<QString> m_systems;
    QVector<TextMatcher> m_dpNames;
    bool m_ruleSetsEmpty = true;
    bool m_structuredEmpty = true;
    QuickCellFilter m_quick;
    QVector<int> m_quickProps;
    bool m_quickEmpty = true;
    QVector<Rule> m_rules;
    QVector<RuleSet> m_excludes;
    QVector<RuleSet> m_includes;
};
