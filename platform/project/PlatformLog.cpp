#include "PlatformLog.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcPlatform, "alarmscreen.platform", QtInfoMsg)

namespace {
PlatformLog::Sink &currentSink()
{
    static PlatformLog::Sink sink;
    return sink;
}
} // namespace

PlatformLog::Sink PlatformLog::setSink(Sink sink)
{
    Sink previous = std::move(currentSink());
    currentSink() = std::move(sink);
    return previous;
}

void PlatformLog::write(Severity severity, const QString &message)
{
    if (currentSink()) {
        currentSink()(severity, message);
        return;
    }
    switch (severity) {
    case Trace:
    case DetailedTrace:
        qCDebug(lcPlatform, "%s", qUtf8Printable(message));
        break;
    case Warning:
        qCWarning(lcPlatform, "%s", qUtf8Printable(message));
        break;
    case Error:
        qCCritical(lcPlatform, "%s", qUtf8Printable(message));
        break;
    }
}
