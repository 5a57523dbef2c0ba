#pragma once

#include "ValueFilter.h"
#include "alarmmodel_export.h"

#include <QDateTime>

// A comparison of a time value with one or two dates.
//
// Method 1 "before": the value is earlier than the first date; 2 "after": later
// than the first date; 3 "between": from the first to the second date, both
// included (in either order). Method 0 is no comparison: the filter is empty.
class ALARMMODEL_EXPORT ValueFilterDate : public ValueFilter
{
public:
    enum ComparisonMethod : int { NoComparison = 0, Before = 1, After = 2, Between = 3 };

    ValueFilterDate(const WildcardConfig &config, const QString &valueId, Constants::ValueSource source,
                    bool matchCase);
    ValueFilterDate(const ValueFilterDate &other) = default;
    ValueFilterDate &operator=(const ValueFilterDate &other) = default;
    ~ValueFilterDate() override;

    Kind getKind() const override { return DateKind; }
    QSharedPointer<ValueFilter> clone() const override;

    int getComparisonMethod() const { return m_method; }
    // Values outside 0..3 are stored as 0.
    void setComparisonMethod(int method);
    QDateTime getFirstDate() const { return m_first; }
    void setFirstDate(const QDateTime &date) { m_first = date; }
    QDateTime getSecondDate() const { return m_second; }
    void setSecondDate(const QDateTime &date) { m_second = date; }

    // Empty without a method, or without the dates the method needs.
    bool isEmpty() const override;
    QString describeContent() const override;
    // The value is read as a date and time (QDateTime, or a text in ISO 8601);
    // anything else does not pass.
    bool matches(const QVariant &value) const override;

protected:
    bool isContentEqual(const ValueFilter &other) const override;
    void writeContent(QJsonObject &object) const override;
    bool readContent(const QJsonObject &object, const QString &path, QString &error) override;

private:
    int m_method = NoComparison;
    QDateTime m_first;
    QDateTime m_second;
};
