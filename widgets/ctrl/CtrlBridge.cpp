#include "CtrlBridge.h"

#include "CCodeExternData.h"
#include "Controller.h"
#include "DoneCB.h"
#include "DynVar.h"

namespace {
// The controller's answer for a call it did not take.
constexpr int NotStarted = 1;
} // namespace

QString CtrlBridge::usesScript(const QString &library)
{
    return QStringLiteral("#uses \"%1\"").arg(library);
}

ScriptId CtrlBridge::checkIn(const QString &scriptText, CCodeExternData &externData)
{
    return Controller::thisPtr->checkIn(CharString(scriptText.toLatin1()), DynVar(), &externData,
                                        nullptr, 0, 0, 0);
}

bool CtrlBridge::startFunc(ScriptId scriptId, const QString &function, const Variable &args,
                           DoneCB *callback)
{
    if (Controller::thisPtr->startFunc(scriptId, CharString(function.toLatin1()), args, callback) !=
        NotStarted)
        return true;
    delete callback;
    return false;
}
