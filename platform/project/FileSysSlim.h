#pragma once

#include "platform_export.h"

// File system helpers of the platform.
class PLATFORM_EXPORT FileSysSlim
{
public:
    // The separator of directory names in the platform's paths.
    static constexpr char PATH_CHAR = '/';
};
