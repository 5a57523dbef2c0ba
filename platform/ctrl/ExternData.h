#pragma once

#include "platform_export.h"

// Data that a caller attaches to a checked-in script. The controller only
// uses it to say in its messages who checked a script in.
class PLATFORM_EXPORT ExternData
{
public:
    virtual ~ExternData();
    // A short description of the owner, for messages.
    virtual const char *describe() const = 0;

protected:
    ExternData() = default;
    ExternData(const ExternData &) = default;
    ExternData &operator=(const ExternData &) = default;
};
