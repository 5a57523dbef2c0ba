#pragma once

#include "ActionAccessUser.h"
#include "widgets_export.h"

// The root of the shared rights model: it creates the access object that the
// components take over with setActionAccess.
class WIDGETS_EXPORT ActionAccessOwner : public ActionAccessUser
{
public:
    ActionAccessOwner();
};
