#pragma once

#include "CharString.h"
#include "LazyAppObject.h"
#include "NativeFunction.h"
#include "platform_export.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QString>

#include <map>
#include <memory>

class CtrlLibrary;
class DoneCB;
class DynVar;
class ExternData;
class ScriptWatchdog;
class Variable;

// The process's CTRL controller: checks scripts in and runs their functions
// asynchronously in the GUI thread.
//
// A script is a list of lines `#uses "name"` (blank lines and // comments are
// allowed); each names a library whose functions the script may call. A library
// is either native (C++ functions that the host registered under that name) or
// the file scripts/libs/<name>.js (a trailing ".ctl" of the name is dropped),
// found along the project paths, last configured path first, and run once per
// process by a JavaScript engine; its top-level functions are the library's
// functions. Answers never arrive before control returns to the event loop.
class PLATFORM_EXPORT Controller : public QObject
{
    Q_OBJECT
public:
    // Access to the process's controller, made on first use.
    class PLATFORM_EXPORT Pointer
    {
    public:
        Controller *operator->() const;
        Controller &operator*() const;
        operator Controller *() const;
    };
    static Pointer thisPtr;

    ~Controller() override;

    // Compiles the script and returns its id (1, 2, ...), or -1 when a line is
    // not a #uses line or a library is unknown or does not load; the reason is
    // logged with the file and line concerned. `externData` names the owner in
    // messages; `value` and the three numbers are accepted and not used.
    int checkIn(const CharString &script, const DynVar &args, ExternData *externData,
                Variable *value, unsigned int, unsigned int, unsigned int);

    // Starts `function` of a checked-in script with the arguments in `args` (a
    // dyn of arguments; any other variable is passed as the only argument).
    // Returns 0 when the call was started: `callback` then belongs to the
    // controller, which calls its execute() once with the return value (null
    // when there is none or the function failed, which is logged) and deletes
    // it. Returns 1 when the call cannot be started (unknown script id or
    // function); the callback then stays the caller's and is not remembered.
    int startFunc(int scriptId, const CharString &function, const Variable &args,
                  DoneCB *callback);

    // Makes a native library available to later check-ins; an existing library
    // of that name is replaced for them.
    void registerNativeLibrary(const QString &name, const QMap<QString, NativeFunction> &functions);
    // Delays every answer of library `name` (as written in #uses, without
    // extension) by `milliseconds`.
    void setAnswerDelay(const QString &library, int milliseconds);
    int answerDelay(const QString &library) const;
    // A script function (or a library's top-level code) running longer than
    // this is interrupted. Default 5000 ms.
    void setScriptTimeout(int milliseconds);
    int scriptTimeout() const { return m_scriptTimeout; }
    // Calls started and not yet answered.
    int pendingCallCount() const { return static_cast<int>(m_pendingCalls.size()); }

    // For hosts' tests: every checkIn call so far, failed ones included.
    int checkInCount() const { return m_checkInCount; }
    // For hosts' tests: the next startFunc that would start reports `result`
    // instead of 0. A forced 1 refuses that start as an unknown function
    // would (the callback stays the caller's); any other value starts the
    // call as usual, so the callback belongs to the controller. Real
    // controllers answer with other values than 0 and 1, and callers must
    // cope with them.
    void forceNextStartResult(int result);

private:
    friend class LazyAppObject<Controller>;
    struct PendingCall;

    explicit Controller(QObject *parent);
    std::shared_ptr<CtrlLibrary> resolveLibrary(const QString &name, int line,
                                                const QString &owner);
    void runCall(quint64 callId);

    std::unique_ptr<ScriptWatchdog> m_watchdog;
    QMap<QString, std::shared_ptr<CtrlLibrary>> m_nativeLibraries;
    // Script libraries by file path: each file is run once per process.
    QMap<QString, std::shared_ptr<CtrlLibrary>> m_scriptLibraries;
    std::map<int, QList<std::shared_ptr<CtrlLibrary>>> m_scripts;
    std::map<quint64, std::unique_ptr<PendingCall>> m_pendingCalls;
    QHash<QString, int> m_answerDelays;
    int m_scriptTimeout = 5000;
    int m_lastScriptId = 0;
    int m_checkInCount = 0;
    bool m_startResultForced = false;
    int m_forcedStartResult = 0;
    quint64 m_lastCallId = 0;
};
