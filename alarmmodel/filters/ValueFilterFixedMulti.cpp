#include "ValueFilterFixedMulti.h"

#include "JsonFieldReader.h"

#include <QJsonArray>

ValueFilterFixedMulti::ValueFilterFixedMulti(const WildcardConfig &config, const QString &valueId,
                                             Constants::ValueSource source, bool matchCase)
    : ValueFilter(config, valueId, source, matchCase)
{
}

ValueFilterFixedMulti::ValueFilterFixedMulti(const ValueFilterFixedMulti &other) : ValueFilter(other)
{
    for (const auto &f : other.m_filters)
        m_filters << QSharedPointer<ValueFilterFixed>::create(*f);
}

ValueFilterFixedMulti &ValueFilterFixedMulti::operator=(const ValueFilterFixedMulti &other)
{
    if (this != &other) {
        ValueFilterFixedMulti copy(other);
        ValueFilter::operator=(copy);
        m_filters.swap(copy.m_filters);
    }
    return *this;
}

ValueFilterFixedMulti::~ValueFilterFixedMulti() = default;

QSharedPointer<ValueFilter> ValueFilterFixedMulti::clone() const
{
    return QSharedPointer<ValueFilter>(new ValueFilterFixedMulti(*this));
}

void ValueFilterFixedMulti::addFixedFilter(const QSharedPointer<ValueFilterFixed> &filter)
{
    if (!filter)
        return;
    filter->setMatchCase(isMatchCase());
    m_filters << filter;
}

QSharedPointer<ValueFilterFixed> ValueFilterFixedMulti::findFixedFilter(const QString &fixedKind) const
{
    for (const auto &f : m_filters) {
        if (f->getFixedKind() == fixedKind)
            return f;
    }
    return nullptr;
}

bool ValueFilterFixedMulti::isCompatible(const ValueFilterFixedMulti &other) const
{
    if (getValueId() != other.getValueId() || getSource() != other.getSource() ||
        m_filters.size() != other.m_filters.size())
        return false;
    for (int i = 0; i < m_filters.size(); ++i) {
        if (m_filters.at(i)->getFixedKind() != other.m_filters.at(i)->getFixedKind())
            return false;
    }
    return true;
}

void ValueFilterFixedMulti::setMatchCase(bool matchCase)
{
    ValueFilter::setMatchCase(matchCase);
    for (const auto &f : qAsConst(m_filters))
        f->setMatchCase(matchCase);
}

bool ValueFilterFixedMulti::isEmpty() const
{
    for (const auto &f : m_filters) {
        if (f->isChecked())
            return false;
    }
    return true;
}

QString ValueFilterFixedMulti::describeContent() const
{
    QStringList checked;
    for (const auto &f : m_filters) {
        if (f->isChecked())
            checked << f->getFixedKind();
    }
    return QStringLiteral("one of [%1]").arg(checked.join(QStringLiteral(", ")));
}

bool ValueFilterFixedMulti::matches(const QVariant &value) const
{
    bool anyChecked = false;
    for (const auto &f : m_filters) {
        if (f->isChecked()) {
            if (f->matches(value))
                return true;
            anyChecked = true;
        }
    }
    return !anyChecked;
}

bool ValueFilterFixedMulti::isContentEqual(const ValueFilter &other) const
{
    const auto &o = static_cast<const ValueFilterFixedMulti &>(other);
    if (m_filters.size() != o.m_filters.size())
        return false;
    for (int i = 0; i < m_filters.size(); ++i) {
        if (!m_filters.at(i)->isEqual(*o.m_filters.at(i)))
            return false;
    }
    return true;
}

void ValueFilterFixedMulti::writeContent(QJsonObject &object) const
{
    QJsonArray fixed;
    for (const auto &f : m_filters)
        fixed << f->toJson();
    object.insert(QStringLiteral("fixed"), fixed);
}

bool ValueFilterFixedMulti::readContent(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    QJsonArray array;
    r.checkKnownKeys(commonKeys() << QStringLiteral("fixed"));
    if (!r.readArray(QStringLiteral("fixed"), array, true))
        return false;
    QList<QSharedPointer<ValueFilterFixed>> filters;
    for (int i = 0; i < array.size(); ++i) {
        const QString itemPath = r.fieldPath(QStringLiteral("fixed[%1]").arg(i));
        const auto filter = array.at(i).isObject()
                                ? fromJson(array.at(i).toObject(), getWildcardConfig(), itemPath, error)
                                : QSharedPointer<ValueFilter>();
        const auto fixed = filter.dynamicCast<ValueFilterFixed>();
        if (!fixed) {
            if (filter || !array.at(i).isObject())
                error = QStringLiteral("'%1' must be a fixed filter").arg(itemPath);
            return false;
        }
        filters << fixed;
    }
    m_filters = filters;
    return true;
}
