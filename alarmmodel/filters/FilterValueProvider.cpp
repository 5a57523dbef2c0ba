#include "FilterValueProvider.h"

#include "ValueFilter.h"

FilterValueProvider::~FilterValueProvider() = default;

bool FilterValueProvider::passes(const ValueFilter &filter) const
{
    return filter.matches(filterValue(filter.getValueId(), filter.getSource()));
}
