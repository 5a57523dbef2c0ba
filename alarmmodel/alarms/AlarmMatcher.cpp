#include "AlarmMatcher.h"

#include <typeinfo>

AlarmMatcher::AlarmMatcher() = default;

void AlarmMatcher::setFilter(const SourceAndFilter &filter)
{
    m_filter = filter;
    m_systems.clear();
    m_dpNames.clear();
    if (filter.getSelectionKind() == SourceAndFilter::SelectByDpNames) {
        for (const QString &name : filter.getDpNames()) {
            TextMatcher matcher;
            if (matcher.setPattern(name, TextMatcher::Wildcard, Qt::CaseSensitive, true))
                m_dpNames.append(matcher);
        }
    } else {
        const QStringList systems = filter.getSystems();
        m_systems = QSet<QString>(systems.begin(), systems.end());
    }
    m_rules.clear();
    m_excludes.clear();
    m_includes.clear();
    if (const auto container = filter.getFilterContainer()) {
        for (const FilterRuleSet &set : container->getRuleSets()) {
            const int begin = m_rules.size();
            for (const auto &f : set.getFilters()) {
                if (f->isEmpty())
                    continue;
                const int propIndex = AlarmProp::byName(f->getValueId()).getIndex();
                // Only the plain kind: an editor deriving from it may match otherwise.
                const bool plainPattern = typeid(*f) == typeid(ValueFilterStringPattern) &&
                                          AlarmFilterValues::isTextProperty(propIndex);
                m_rules.append(Rule{f, plainPattern ? static_cast<const ValueFilterStringPattern *>(f.data()) : nullptr,
                                    propIndex});
            }
            if (m_rules.size() == begin)
                continue; // restricts nothing
            (set.isInclude() ? m_includes : m_excludes).append(RuleSet{begin, m_rules.size()});
        }
    }
    m_ruleSetsEmpty = m_excludes.isEmpty() && m_includes.isEmpty();
    m_structuredEmpty = m_ruleSetsEmpty && m_systems.isEmpty() && m_dpNames.isEmpty();
}

void AlarmMatcher::setQuickFilter(const QuickCellFilter &filter, const QVector<int> &propIndexes)
{
    m_quick = filter;
    m_quickProps = propIndexes;
    // An invalid pattern matches nothing, which is what the operator sees.
    m_quickEmpty = filter.isValid() && filter.isEmpty();
}

bool AlarmMatcher::matchesStructured(const AlarmInstance &alarm) const
{
    if (!m_systems.isEmpty() && !m_systems.contains(alarm.getIdent().getSystem()))
        return false;
    if (!m_dpNames.isEmpty()) {
        const QString &dpe = alarm.getText(AlarmProp::Dpe);
        const bool any = std::any_of(m_dpNames.cbegin(), m_dpNames.cend(),
                                     [&dpe](const TextMatcher &m) { return m.matches(dpe); });
        if (!any)
            return false;
    }
    if (m_ruleSetsEmpty)
        return true;
    // An alarm passes when no exclude set matches and some include set does
    // (or there is none). The exclude sets go first: an alarm one of them
    // matches needs no include set tested, and the answer does not depend on
    // the order.
    for (const RuleSet &set : m_excludes) {
        if (ruleSetMatches(set, alarm))
            return false;
    }
    if (m_includes.isEmpty())
        return true;
    for (const RuleSet &set : m_includes) {
        if (ruleSetMatches(set, alarm))
            return true;
    }
    return false;
}

bool AlarmMatcher::ruleSetMatches(const RuleSet &set, const AlarmInstance &alarm) const
{
    for (int i = set.begin; i < set.end; ++i) {
        const Rule &rule = m_rules.at(i);
        const bool passes = rule.pattern ? rule.pattern->matchesPattern(alarm.getText(rule.propIndex))
                                         : AlarmFilterValues::passes(alarm, *rule.filter, rule.propIndex);
        if (!passes)
            return false;
    }
    return true;
}

bool AlarmMatcher::matchesQuick(const AlarmInstance &alarm) const
{
    for (int prop : m_quickProps) {
        if (m_quick.matches(alarm.getText(prop)))
            return true;
    }
    return false;
}
