#include "ExternData.h"

ExternData::~ExternData() = default;
