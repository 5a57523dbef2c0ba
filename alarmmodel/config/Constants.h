#pragma once

#include "alarmmodel_export.h"

#include <QObject>
#include <QString>

// Enumerations shared by the alarm screen's model and its widgets.
// The numbers are part of the contract with the owner and with saved filters;
// the keys are what configuration and filter files use.
class ALARMMODEL_EXPORT Constants
{
    Q_GADGET
public:
    Constants() = delete;

    // Where the alarm table's alarms come from.
    enum SourceMode : int {
        SourceModeUndefined = 0, // not chosen yet (a record built without a source)
        SourceModeLive = 1,      // the alarms currently pending in the systems
        SourceModeHistory = 2    // a history query over a time range and systems
    };
    Q_ENUM(SourceMode)

    // State of the alarm source. States 0 to 4 belong to live operation and
    // are shown without counts; 5 and 6 are a running history query (the
    // elapsed time is measured); 7 to 9 are the outcomes of a query.
    enum SourceState : int {
        SourceDisconnected = 0, // no connection to the alarm source (an error)
        SourceNoQuery = 1,      // nothing requested yet
        SourceConnecting = 2,   // live source being connected
        SourceLoading = 3,      // live source loading the pending alarms
        SourceLive = 4,         // live alarms up to date
        QueryStarting = 5,      // history query sent, no answer yet
        QueryRunning = 6,       // history query delivering alarms
        QueryFinished = 7,      // history query complete
        QueryFailed = 8,        // history query ended with an error
        QueryAborted = 9        // history query aborted by the operator
    };
    Q_ENUM(SourceState)
    static constexpr int SourceStateCount = 10;

    // Where the value that a filter (or a column) looks at comes from.
    enum ValueSource : int {
        ValueSourceAlarm = 0,    // a property of the alarm itself (text, time, priority...)
        ValueSourceDpConfig = 1, // the configuration of the alarm's datapoint element
                                 // (description, alias, unit, alarm class settings)
        ValueSourceDerived = 2   // computed by the screen (system name, group value...)
    };
    Q_ENUM(ValueSource)

    // The operator-visible name of a state, as the source selector shows it.
    // An unknown value gives "Unknown (<number>)".
    static QString getSourceStateVisibleName(SourceState state);

    // Key lookup helpers used by the JSON readers: the key of a value (the
    // enumerator without its prefix: "Live", "Alarm"; empty for an unknown value),
    // and the value of a key (false when unknown). Keys are case-sensitive.
    static QString sourceModeKey(SourceMode mode);
    static bool sourceModeFromKey(const QString &key, SourceMode &mode);
    static QString valueSourceKey(ValueSource source);
    static bool valueSourceFromKey(const QString &key, ValueSource &source);
};
