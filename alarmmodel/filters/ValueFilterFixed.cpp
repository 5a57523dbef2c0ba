#include "ValueFilterFixed.h"

#include "JsonFieldReader.h"

ValueFilterFixed::ValueFilterFixed(const WildcardConfig &config, const QString &valueId,
                                   Constants::ValueSource source, bool matchCase, const QString &fixedKind,
                                   const QVariant &fixedValue, bool checked)
    : ValueFilter(config, valueId, source, matchCase), m_fixedKind(fixedKind), m_fixedValue(fixedValue),
      m_checked(checked)
{
}

ValueFilterFixed::~ValueFilterFixed() = default;

QSharedPointer<ValueFilter> ValueFilterFixed::clone() const
{
    return QSharedPointer<ValueFilter>(new ValueFilterFixed(*this));
}

QVariant ValueFilterFixed::getFixedValue() const
{
    return m_fixedValue.isValid() ? m_fixedValue : QVariant(m_fixedKind);
}

QString ValueFilterFixed::describeContent() const
{
    return QStringLiteral("fixed '%1' = '%2' %3")
        .arg(m_fixedKind, getFixedValue().toString(), m_checked ? QStringLiteral("on") : QStringLiteral("off"));
}

bool ValueFilterFixed::matches(const QVariant &value) const
{
    return !m_checked || valuesEqual(getFixedValue(), value, isMatchCase() ? Qt::CaseSensitive : Qt::CaseInsensitive);
}

bool ValueFilterFixed::isContentEqual(const ValueFilter &other) const
{
    const auto &o = static_cast<const ValueFilterFixed &>(other);
    return m_fixedKind == o.m_fixedKind && m_checked == o.m_checked && m_fixedValue == o.m_fixedValue;
}

void ValueFilterFixed::writeContent(QJsonObject &object) const
{
    object.insert(QStringLiteral("fixedKind"), m_fixedKind);
    object.insert(QStringLiteral("checked"), m_checked);
    if (m_fixedValue.isValid())
        JsonFieldReader::writeVariant(object, QStringLiteral("fixedValue"), m_fixedValue);
}

bool ValueFilterFixed::readContent(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    QString kind;
    QVariant value;
    bool checked = false;
    r.checkKnownKeys(commonKeys() << QStringLiteral("fixedKind") << QStringLiteral("checked")
                                  << QStringLiteral("fixedValue") << QStringLiteral("fixedValueType"));
    r.readString(QStringLiteral("fixedKind"), kind, true);
    r.readBool(QStringLiteral("checked"), checked);
    r.readVariant(QStringLiteral("fixedValue"), value);
    if (!r.ok())
        return false;
    m_fixedKind = kind;
    m_fixedValue = value;
    m_checked = checked;
    return true;
}
