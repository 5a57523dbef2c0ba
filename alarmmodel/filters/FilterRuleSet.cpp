#include "FilterRuleSet.h"

#include "JsonFieldReader.h"

#include <QJsonArray>

FilterRuleSet::FilterRuleSet() = default;

FilterRuleSet::FilterRuleSet(const WildcardConfig &config, bool include, bool matchCase)
    : m_wildcardConfig(config), m_include(include), m_matchCase(matchCase)
{
}

void FilterRuleSet::setMatchCase(bool matchCase)
{
    m_matchCase = matchCase;
    for (const auto &f : qAsConst(m_filters))
        f->setMatchCase(matchCase);
}

void FilterRuleSet::addFilter(const QSharedPointer<ValueFilter> &filter)
{
    if (filter)
        m_filters << filter;
}

bool FilterRuleSet::isEmpty() const
{
    for (const auto &f : m_filters) {
        if (!f->isEmpty())
            return false;
    }
    return true;
}

bool FilterRuleSet::matches(const FilterValueProvider &values) const
{
    for (const auto &f : m_filters) {
        if (!f->isEmpty() && !values.passes(*f))
            return false;
    }
    return true;
}

bool FilterRuleSet::isEqual(const FilterRuleSet &other) const
{
    if (m_include != other.m_include || m_matchCase != other.m_matchCase ||
        m_filters.size() != other.m_filters.size())
        return false;
    for (int i = 0; i < m_filters.size(); ++i) {
        if (!m_filters.at(i)->isEqual(*other.m_filters.at(i)))
            return false;
    }
    return true;
}

FilterRuleSet FilterRuleSet::clone() const
{
    FilterRuleSet copy(m_wildcardConfig, m_include, m_matchCase);
    for (const auto &f : m_filters)
        copy.m_filters << f->clone();
    return copy;
}

QJsonObject FilterRuleSet::toJson() const
{
    QJsonArray filters;
    for (const auto &f : m_filters)
        filters << f->toJson();
    return QJsonObject{{QStringLiteral("include"), m_include},
                       {QStringLiteral("matchCase"), m_matchCase},
                       {QStringLiteral("filters"), filters}};
}

bool FilterRuleSet::fromJson(const QJsonObject &object, const WildcardConfig &config, const QString &path,
                             QString &error)
{
    FilterRuleSet read(config, true, false);
    JsonFieldReader r(object, path, error);
    QJsonArray filters;
    r.checkKnownKeys({QStringLiteral("include"), QStringLiteral("matchCase"), QStringLiteral("filters")});
    r.readBool(QStringLiteral("include"), read.m_include, true);
    r.readBool(QStringLiteral("matchCase"), read.m_matchCase);
    r.readArray(QStringLiteral("filters"), filters);
    if (!r.ok())
        return false;
    for (int i = 0; i < filters.size(); ++i) {
        const QString filterPath = r.fieldPath(QStringLiteral("filters[%1]").arg(i));
        if (!filters.at(i).isObject())
            return r.fail(QStringLiteral("'%1' must be an object").arg(filterPath));
        const auto filter = ValueFilter::fromJson(filters.at(i).toObject(), config, filterPath, error);
        if (!filter)
            return false;
        read.m_filters << filter;
    }
    *this = read;
    return true;
}
