#pragma once

#include "ValueFilter.h"
#include "alarmmodel_export.h"

// One value that the property must have (chosen from a list by the operator).
// Texts are compared with the filter's case rule, other values by equality of
// value (5 equals 5.0). An invalid value makes the filter empty.
class ALARMMODEL_EXPORT ValueFilterSingleValue : public ValueFilter
{
public:
    ValueFilterSingleValue(const WildcardConfig &config, const QString &valueId,
                           Constants::ValueSource source, bool matchCase);
    ValueFilterSingleValue(const ValueFilterSingleValue &other) = default;
    ValueFilterSingleValue &operator=(const ValueFilterSingleValue &other) = default;
    ~ValueFilterSingleValue() override;

    Kind getKind() const override { return SingleValueKind; }
    QSharedPointer<ValueFilter> clone() const override;

    QVariant getFilterValue() const { return m_value; }
    void setFilterValue(const QVariant &value) { m_value = value; }

    bool isEmpty() const override;
    QString describeContent() const override;
    bool matches(const QVariant &value) const override;

protected:
    bool isContentEqual(const ValueFilter &other) const override;
    void writeContent(QJsonObject &object) const override;
    bool readContent(const QJsonObject &object, const QString &path, QString &error) override;

private:
    QVariant m_value;
};
