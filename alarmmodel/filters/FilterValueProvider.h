#pragma once

#include "Constants.h"
#include "alarmmodel_export.h"

#include <QString>
#include <QVariant>

// What a filter asks of the thing it filters (one alarm, one table row): the
// value of a property, by its column id and value source. Filters call it once
// per value filter and alarm, so an implementation should answer from data it
// already holds (an invalid QVariant for an unknown property).
class ALARMMODEL_EXPORT FilterValueProvider
{
public:
    virtual ~FilterValueProvider();
    virtual QVariant filterValue(const QString &valueId, Constants::ValueSource source) const = 0;
};
