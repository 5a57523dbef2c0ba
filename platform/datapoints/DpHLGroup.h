#pragma once

#include "DpItemContainer.h"

// A hotlink: the values of all elements of a connection after one of them changed.
class PLATFORM_EXPORT DpHLGroup : public DpItemContainer
{
public:
    DpHLGroup() = default;
    ~DpHLGroup() override;
};
