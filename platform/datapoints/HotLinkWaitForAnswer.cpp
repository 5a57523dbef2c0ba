#include "HotLinkWaitForAnswer.h"

#include "DpStore.h"

HotLinkWaitForAnswer::~HotLinkWaitForAnswer()
{
    if (DpStore *store = DpStore::existing())
        store->forget(this);
}
