#pragma once

#include "ValueFilter.h"
#include "ValueFilterFixed.h"
#include "alarmmodel_export.h"

#include <QList>

// A group of fixed conditions on one property, toggled together, e.g. the
// priorities "high", "medium", "low" as three buttons.
//
// A value passes when it has the fixed value of at least one checked condition.
// With no condition checked the filter is empty (restricts nothing).
// Copies are deep: the copy's conditions are new objects.
class ALARMMODEL_EXPORT ValueFilterFixedMulti : public ValueFilter
{
public:
    ValueFilterFixedMulti(const WildcardConfig &config, const QString &valueId,
                          Constants::ValueSource source, bool matchCase);
    ValueFilterFixedMulti(const ValueFilterFixedMulti &other);
    ValueFilterFixedMulti &operator=(const ValueFilterFixedMulti &other);
    ~ValueFilterFixedMulti() override;

    Kind getKind() const override { return FixedMultiKind; }
    QSharedPointer<ValueFilter> clone() const override;

    // Appends a condition (null is ignored); it takes the group's case rule.
    void addFixedFilter(const QSharedPointer<ValueFilterFixed> &filter);
    const QList<QSharedPointer<ValueFilterFixed>> &getFixedFilters() const { return m_filters; }
    // The first condition of that kind, or null.
    QSharedPointer<ValueFilterFixed> findFixedFilter(const QString &fixedKind) const;

    // Same property, source and the same condition kinds in the same order:
    // `other`'s checked states can be shown on this group's buttons.
    bool isCompatible(const ValueFilterFixedMulti &other) const;

    void setMatchCase(bool matchCase) override;
    bool isEmpty() const override;
    QString describeContent() const override;
    bool matches(const QVariant &value) const override;

protected:
    bool isContentEqual(const ValueFilter &other) const override;
    void writeContent(QJsonObject &object) const override;
    bool readContent(const QJsonObject &object, const QString &path, QString &error) override;

private:
    QList<QSharedPointer<ValueFilterFixed>> m_filters;
};
