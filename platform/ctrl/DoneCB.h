#pragma once

#include "platform_export.h"

class Variable;

// The callback of an asynchronous CTRL function call. The caller creates it on
// the heap and hands it to Controller::startFunc; once the start succeeded the
// controller owns it, calls execute() exactly once in the GUI thread with the
// function's return value (null when the function returned nothing or failed)
// and then deletes it.
class PLATFORM_EXPORT DoneCB
{
public:
    virtual ~DoneCB();
    // `result` belongs to the controller and lives only during the call.
    virtual void execute(const Variable *result) = 0;
    // A heap copy of this callback.
    virtual DoneCB *clone() const = 0;

protected:
    DoneCB() = default;
    DoneCB(const DoneCB &) = default;
    DoneCB &operator=(const DoneCB &) = default;
};
