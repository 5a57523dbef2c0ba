#include "ActionAccessOwner.h"

ActionAccessOwner::ActionAccessOwner() : ActionAccessUser(new ActionAccess())
{
}
