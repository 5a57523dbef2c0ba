#include "MsgLoggerEnums.h"

QString MsgLoggerEnums::severityName(int severity)
{
    switch (severity) {
    case Trace: return QStringLiteral("trace");
    case DetailedTrace: return QStringLiteral("detail");
    case Warning: return QStringLiteral("warning");
    case Error: return QStringLiteral("error");
    }
    return QString::number(severity);
}
