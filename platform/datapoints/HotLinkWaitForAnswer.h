#pragma once

#include "platform_export.h"

class DpHLGroup;
class DpMsgAnswer;

// Receiver of a datapoint connection (Manager::dpConnect). Both callbacks run
// in the GUI thread from the event loop. The object stays its creator's: it is
// never deleted by the platform, and destroying it ends its connections, so
// nothing is delivered to it afterwards.
class PLATFORM_EXPORT HotLinkWaitForAnswer
{
public:
    HotLinkWaitForAnswer() = default;
    virtual ~HotLinkWaitForAnswer();
    HotLinkWaitForAnswer(const HotLinkWaitForAnswer &) = delete;
    HotLinkWaitForAnswer &operator=(const HotLinkWaitForAnswer &) = delete;

    // The current values, once, right after connecting.
    virtual void hotLinkCallBack(DpMsgAnswer &answer) = 0;
    // The values after each change.
    virtual void hotLinkCallBack(DpHLGroup &group) = 0;
};
