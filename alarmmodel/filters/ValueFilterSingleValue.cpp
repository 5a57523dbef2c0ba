#include "ValueFilterSingleValue.h"

#include "JsonFieldReader.h"

ValueFilterSingleValue::ValueFilterSingleValue(const WildcardConfig &config, const QString &valueId,
                                               Constants::ValueSource source, bool matchCase)
    : ValueFilter(config, valueId, source, matchCase)
{
}

ValueFilterSingleValue::~ValueFilterSingleValue() = default;

QSharedPointer<ValueFilter> ValueFilterSingleValue::clone() const
{
    return QSharedPointer<ValueFilter>(new ValueFilterSingleValue(*this));
}

bool ValueFilterSingleValue::isEmpty() const
{
    return !m_value.isValid();
}

QString ValueFilterSingleValue::describeContent() const
{
    return QStringLiteral("value '%1'").arg(m_value.toString());
}

bool ValueFilterSingleValue::matches(const QVariant &value) const
{
    return isEmpty() || valuesEqual(m_value, value, isMatchCase() ? Qt::CaseSensitive : Qt::CaseInsensitive);
}

bool ValueFilterSingleValue::isContentEqual(const ValueFilter &other) const
{
    const QVariant &o = static_cast<const ValueFilterSingleValue &>(other).m_value;
    return m_value.userType() == o.userType() && m_value == o;
}

void ValueFilterSingleValue::writeContent(QJsonObject &object) const
{
    JsonFieldReader::writeVariant(object, QStringLiteral("value"), m_value);
}

bool ValueFilterSingleValue::readContent(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    QVariant value;
    r.checkKnownKeys(commonKeys() << QStringLiteral("value") << QStringLiteral("valueType"));
    if (!r.readVariant(QStringLiteral("value"), value))
        return false;
    m_value = value;
    return true;
}
