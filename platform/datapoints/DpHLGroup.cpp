#include "DpHLGroup.h"

DpHLGroup::~DpHLGroup() = default;
