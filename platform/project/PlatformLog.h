#pragma once

#include "platform_export.h"

#include <QString>

#include <functional>

// Where the platform's own messages go. The platform sits below the logging of
// the alarm model library, so it has this minimal sink of its own: by default
// Qt's message log (category "alarmscreen.platform"); a host or a test may
// install a function that receives every line instead.
class PLATFORM_EXPORT PlatformLog
{
public:
    // Same numbers as the severities of the alarm screen's logging.
    enum Severity { Trace = 0, DetailedTrace = 1, Warning = 2, Error = 3 };
    using Sink = std::function<void(Severity, const QString &)>;

    // Installs `sink` (an empty function restores the default) and returns the
    // one it replaces.
    static Sink setSink(Sink sink);
    static void write(Severity severity, const QString &message);
};
