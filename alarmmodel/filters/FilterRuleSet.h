#pragma once

#include "FilterValueProvider.h"
#include "ValueFilter.h"
#include "WildcardConfig.h"
#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QList>
#include <QSharedPointer>

// One rule set of a structured filter (one tab of the filter editor): a list of
// value filters that must all match, and whether the set includes or excludes
// the alarms that match it. Empty value filters are ignored; a set without
// non-empty filters matches every alarm.
//
// Copies share the value filters (they are not changed once built); clone()
// copies them too.
class ALARMMODEL_EXPORT FilterRuleSet
{
public:
    FilterRuleSet();
    FilterRuleSet(const WildcardConfig &config, bool include, bool matchCase);

    bool isInclude() const { return m_include; }
    void setInclude(bool include) { m_include = include; }
    bool isMatchCase() const { return m_matchCase; }
    // Also sets the case rule of every value filter.
    void setMatchCase(bool matchCase);
    const WildcardConfig &getWildcardConfig() const { return m_wildcardConfig; }

    // Null filters are ignored.
    void addFilter(const QSharedPointer<ValueFilter> &filter);
    const QList<QSharedPointer<ValueFilter>> &getFilters() const { return m_filters; }
    // True when no value filter restricts anything.
    bool isEmpty() const;

    bool matches(const FilterValueProvider &values) const;

    // Same include flag, case rule, and equal value filters in the same order.
    bool isEqual(const FilterRuleSet &other) const;
    bool operator==(const FilterRuleSet &other) const { return isEqual(other); }
    FilterRuleSet clone() const;

    // {"include": b, "matchCase": b, "filters": [value filters]}
    QJsonObject toJson() const;
    // On failure `error` says why and this set is unchanged.
    bool fromJson(const QJsonObject &object, const WildcardConfig &config, const QString &path,
                  QString &error);

private:
    WildcardConfig m_wildcardConfig;
    bool m_include = true;
    bool m_matchCase = false;
    QList<QSharedPointer<ValueFilter>> m_filters;
};
