#pragma once

#include "Constants.h"
#include "alarmmodel_export.h"

#include <QString>
#include <QVariant>

class ValueFilter;

// What a filter asks of the thing it filters (one alarm, one table row): the
// value of a property, by its column id and value source. Filters call it once
// per value filter and alarm, so an implementation should answer from data it
// already holds (an invalid QVariant for an unknown property).
class ALARMMODEL_EXPORT FilterValueProvider
{
public:
    virtual ~FilterValueProvider();
    virtual QVariant filterValue(const QString &valueId, Constants::ValueSource source) const = 0;
    // Whether `filter` passes this provider's value of the filter's property.
    // Providers that hold typed values override it to hand them to the filter
    // without boxing them into a QVariant.
    virtual bool passes(const ValueFilter &filter) const;
};
