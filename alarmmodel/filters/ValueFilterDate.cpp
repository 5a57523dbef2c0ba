#include "ValueFilterDate.h"

#include "JsonFieldReader.h"

ValueFilterDate::ValueFilterDate(const WildcardConfig &config, const QString &valueId,
                                 Constants::ValueSource source, bool matchCase)
    : ValueFilter(config, valueId, source, matchCase)
{
}

ValueFilterDate::~ValueFilterDate() = default;

QSharedPointer<ValueFilter> ValueFilterDate::clone() const
{
    return QSharedPointer<ValueFilter>(new ValueFilterDate(*this));
}

void ValueFilterDate::setComparisonMethod(int method)
{
    m_method = method >= NoComparison && method <= Between ? method : NoComparison;
}

bool ValueFilterDate::isEmpty() const
{
    return m_method == NoComparison || !m_first.isValid() || (m_method == Between && !m_second.isValid());
}

QString ValueFilterDate::describeContent() const
{
    const QString first = m_first.toString(Qt::ISODate);
    switch (m_method) {
    case Before:
        return QStringLiteral("before %1").arg(first);
    case After:
        return QStringLiteral("after %1").arg(first);
    case Between:
        return QStringLiteral("between %1 and %2").arg(first, m_second.toString(Qt::ISODate));
    default:
        return QStringLiteral("no date comparison");
    }
}

bool ValueFilterDate::matches(const QVariant &value) const
{
    if (isEmpty())
        return true;
    const QDateTime t = value.userType() == QMetaType::QString
                            ? QDateTime::fromString(value.toString(), Qt::ISODateWithMs)
                            : value.toDateTime();
    if (!t.isValid())
        return false;
    switch (m_method) {
    case Before:
        return t < m_first;
    case After:
        return t > m_first;
    case Between: {
        const bool ordered = m_first <= m_second;
        const QDateTime &low = ordered ? m_first : m_second;
        const QDateTime &high = ordered ? m_second : m_first;
        return t >= low && t <= high;
    }
    default:
        return true;
    }
}

bool ValueFilterDate::isContentEqual(const ValueFilter &other) const
{
    const auto &o = static_cast<const ValueFilterDate &>(other);
    return m_method == o.m_method && m_first == o.m_first && m_second == o.m_second;
}

void ValueFilterDate::writeContent(QJsonObject &object) const
{
    object.insert(QStringLiteral("method"), m_method);
    JsonFieldReader::writeVariant(object, QStringLiteral("first"), m_first.isValid() ? QVariant(m_first) : QVariant());
    JsonFieldReader::writeVariant(object, QStringLiteral("second"),
                                  m_second.isValid() ? QVariant(m_second) : QVariant());
}

bool ValueFilterDate::readContent(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    int method = NoComparison;
    QVariant first, second;
    r.checkKnownKeys(commonKeys() << QStringLiteral("method") << QStringLiteral("first")
                                  << QStringLiteral("firstType") << QStringLiteral("second")
                                  << QStringLiteral("secondType"));
    r.readInt(QStringLiteral("method"), method, true);
    r.readVariant(QStringLiteral("first"), first);
    r.readVariant(QStringLiteral("second"), second);
    if (r.ok() && (method < NoComparison || method > Between))
        r.fail(QStringLiteral("'%1' must be 0 to 3").arg(r.fieldPath(QStringLiteral("method"))));
    // Anything but a date would load as a filter that restricts nothing.
    const auto requireDate = [&r](const QString &key, const QVariant &value) {
        if (r.ok() && value.isValid() && value.userType() != QMetaType::QDateTime)
            r.fail(QStringLiteral("'%1' must be a date and time in ISO 8601 form (%2Type \"QDateTime\") or null")
                       .arg(r.fieldPath(key), key));
    };
    requireDate(QStringLiteral("first"), first);
    requireDate(QStringLiteral("second"), second);
    if (!r.ok())
        return false;
    m_method = method;
    m_first = first.toDateTime();
    m_second = second.toDateTime();
    return true;
}
