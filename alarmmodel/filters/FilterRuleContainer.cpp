#include "FilterRuleContainer.h"

#include "JsonFieldReader.h"

#include <QJsonArray>

namespace {
// Adapts a function to the provider interface for one matches() call.
class FunctionValueProvider : public FilterValueProvider
{
public:
    explicit FunctionValueProvider(const FilterRuleContainer::ValueFunction &f) : m_f(f) {}
    QVariant filterValue(const QString &valueId, Constants::ValueSource source) const override
    {
        return m_f(valueId, source);
    }

private:
    const FilterRuleContainer::ValueFunction &m_f;
};
} // namespace

FilterRuleContainer::FilterRuleContainer() = default;

FilterRuleContainer::FilterRuleContainer(const WildcardConfig &config, bool matchCase)
    : m_wildcardConfig(config), m_matchCase(matchCase)
{
}

FilterRuleContainer::FilterRuleContainer(const WildcardConfig &config, const QList<FilterRuleSet> &ruleSets,
                                         bool matchCase)
    : m_wildcardConfig(config), m_ruleSets(ruleSets), m_matchCase(matchCase)
{
}

FilterRuleContainer::FilterRuleContainer(const WildcardConfig &config,
                                         const QList<QSharedPointer<FilterRuleSet>> &ruleSets, bool matchCase)
    : m_wildcardConfig(config), m_matchCase(matchCase)
{
    for (const auto &set : ruleSets) {
        if (set)
            m_ruleSets << *set;
    }
}

FilterRuleContainer::~FilterRuleContainer() = default;

void FilterRuleContainer::setMatchCase(bool matchCase)
{
    m_matchCase = matchCase;
    for (FilterRuleSet &set : m_ruleSets)
        set.setMatchCase(matchCase);
}

void FilterRuleContainer::addRuleSet(const FilterRuleSet &ruleSet)
{
    m_ruleSets << ruleSet;
}

bool FilterRuleContainer::isEmpty() const
{
    for (const FilterRuleSet &set : m_ruleSets) {
        if (!set.isEmpty())
            return false;
    }
    return true;
}

bool FilterRuleContainer::matches(const FilterValueProvider &values) const
{
    bool hasInclude = false;
    bool included = false;
    for (const FilterRuleSet &set : m_ruleSets) {
        if (set.isEmpty())
            continue;
        if (!set.isInclude()) {
            if (set.matches(values))
                return false;
        } else if (!included) {
            hasInclude = true;
            included = set.matches(values);
        }
    }
    return included || !hasInclude;
}

bool FilterRuleContainer::matches(const ValueFunction &valueOf) const
{
    return matches(FunctionValueProvider(valueOf));
}

bool FilterRuleContainer::isEqual(const FilterRuleContainer &other) const
{
    return m_matchCase == other.m_matchCase && m_ruleSets == other.m_ruleSets;
}

QSharedPointer<FilterRuleContainer> FilterRuleContainer::clone() const
{
    auto copy = QSharedPointer<FilterRuleContainer>::create(m_wildcardConfig, m_matchCase);
    for (const FilterRuleSet &set : m_ruleSets)
        copy->m_ruleSets << set.clone();
    return copy;
}

QJsonObject FilterRuleContainer::toJson() const
{
    QJsonArray sets;
    for (const FilterRuleSet &set : m_ruleSets)
        sets << set.toJson();
    return QJsonObject{{QStringLiteral("matchCase"), m_matchCase}, {QStringLiteral("ruleSets"), sets}};
}

bool FilterRuleContainer::fromJson(const QJsonObject &object, const WildcardConfig &config, const QString &path,
                                   QString &error)
{
    JsonFieldReader r(object, path, error);
    bool matchCase = false;
    QJsonArray sets;
    r.checkKnownKeys({QStringLiteral("matchCase"), QStringLiteral("ruleSets")});
    r.readBool(QStringLiteral("matchCase"), matchCase);
    r.readArray(QStringLiteral("ruleSets"), sets, true);
    if (!r.ok())
        return false;
    QList<FilterRuleSet> ruleSets;
    for (int i = 0; i < sets.size(); ++i) {
        const QString setPath = r.fieldPath(QStringLiteral("ruleSets[%1]").arg(i));
        if (!sets.at(i).isObject())
            return r.fail(QStringLiteral("'%1' must be an object").arg(setPath));
        FilterRuleSet set;
        if (!set.fromJson(sets.at(i).toObject(), config, setPath, error))
            return false;
        ruleSets << set;
    }
    m_wildcardConfig = config;
    m_ruleSets = ruleSets;
    m_matchCase = matchCase;
    return true;
}
