#include "DoneCB.h"

DoneCB::~DoneCB() = default;
