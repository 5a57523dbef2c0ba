#pragma once

#include "widgets_export.h"

#include <QString>

class CCodeExternData;
class DoneCB;
class Variable;

// The id of a script checked in with the CTRL controller; negative until a
// check-in succeeded.
using ScriptId = int;

// How the script-backed services reach the process's CTRL controller: a
// library is checked in as a script that only imports it, and its functions
// are started asynchronously with a callback that the controller owns once
// the start succeeded. Logging stays with the callers, whose messages differ.
class WIDGETS_EXPORT CtrlBridge
{
public:
    CtrlBridge() = delete;

    // The script text that imports `library`.
    static QString usesScript(const QString &library);
    // Checks the script in; the controller's result (negative on failure).
    static ScriptId checkIn(const QString &scriptText, CCodeExternData &externData);
    // Starts `function`; true when the controller took the call (every
    // result but 1) and with it `callback`. On false the callback has been
    // deleted here, unexecuted.
    static bool startFunc(ScriptId scriptId, const QString &function, const Variable &args,
                          DoneCB *callback);
};
