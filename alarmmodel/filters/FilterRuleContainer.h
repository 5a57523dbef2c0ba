#pragma once

#include "FilterRuleSet.h"
#include "FilterValueProvider.h"
#include "WildcardConfig.h"
#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QList>
#include <QSharedPointer>

#include <functional>

// A structured filter: rule sets plus the case rule chosen in the editor.
//
// An alarm passes when it matches at least one include set (or there is no
// non-empty include set) and no non-empty exclude set.
class ALARMMODEL_EXPORT FilterRuleContainer
{
public:
    using ValueFunction = std::function<QVariant(const QString &valueId, Constants::ValueSource source)>;

    FilterRuleContainer();
    explicit FilterRuleContainer(const WildcardConfig &config, bool matchCase = false);
    FilterRuleContainer(const WildcardConfig &config, const QList<FilterRuleSet> &ruleSets, bool matchCase);
    FilterRuleContainer(const WildcardConfig &config, const QList<QSharedPointer<FilterRuleSet>> &ruleSets,
                        bool matchCase);
    FilterRuleContainer(const FilterRuleContainer &other) = default;
    FilterRuleContainer &operator=(const FilterRuleContainer &other) = default;
    ~FilterRuleContainer();

    const WildcardConfig &getWildcardConfig() const { return m_wildcardConfig; }
    bool isMatchCase() const { return m_matchCase; }
    // Also sets the case rule of every rule set and value filter.
    void setMatchCase(bool matchCase);

    const QList<FilterRuleSet> &getRuleSets() const { return m_ruleSets; }
    void addRuleSet(const FilterRuleSet &ruleSet);
    void clearRuleSets() { m_ruleSets.clear(); }
    // True when no rule set restricts anything.
    bool isEmpty() const;

    bool matches(const FilterValueProvider &values) const;
    bool matches(const ValueFunction &valueOf) const;

    // Same case rule and equal rule sets in the same order.
    bool isEqual(const FilterRuleContainer &other) const;
    bool operator==(const FilterRuleContainer &other) const { return isEqual(other); }
    // A deep copy (new value filters).
    QSharedPointer<FilterRuleContainer> clone() const;

    // {"matchCase": b, "ruleSets": [rule sets]}
    QJsonObject toJson() const;
    // Value filters read get `config`. On failure `error` says why and this
    // container is unchanged.
    bool fromJson(const QJsonObject &object, const WildcardConfig &config, const QString &path,
                  QString &error);

private:
    WildcardConfig m_wildcardConfig;
    QList<FilterRuleSet> m_ruleSets;
    bool m_matchCase = false;
};
