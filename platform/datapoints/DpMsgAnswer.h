#pragma once

#include "DpItemContainer.h"

// The answer to a connection: the current values of the connected elements.
class PLATFORM_EXPORT DpMsgAnswer : public DpItemContainer
{
public:
    DpMsgAnswer() = default;
    ~DpMsgAnswer() override;
};
