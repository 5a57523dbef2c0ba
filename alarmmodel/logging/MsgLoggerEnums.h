#pragma once

#include "alarmmodel_export.h"

#include <QObject>

// Severities of log messages. The numbers are part of the contract with the owner
// (thresholds are configured as numbers), the names are ours.
class ALARMMODEL_EXPORT MsgLoggerEnums
{
    Q_GADGET
public:
    enum LogSeverity : int {
        Trace = 0,         // traces
        DetailedTrace = 1, // detailed traces
        Warning = 2,       // warnings, syntax and configuration errors
        Error = 3          // errors
    };
    Q_ENUM(LogSeverity)

    // How a log line names the method that wrote it.
    enum LogFunc : int {
        NoFuncName = 0,
        ShortFuncName = 1,
        FullFuncName = 2
    };
    Q_ENUM(LogFunc)

    static QString severityName(int severity);
};

