#include "AlarmMatcher.h"

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
    m_ruleSetsEmpty = filter.isEmpty();
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
    m_values.setAlarm(&alarm);
    return m_filter.matches(m_values);
}

bool AlarmMatcher::matchesQuick(const AlarmInstance &alarm) const
{
    for (int prop : m_quickProps) {
        if (m_quick.matches(alarm.getText(prop)))
            return true;
    }
    return false;
}
