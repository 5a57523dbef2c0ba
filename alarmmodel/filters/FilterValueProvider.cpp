#include "FilterValueProvider.h"

FilterValueProvider::~FilterValueProvider() = default;
