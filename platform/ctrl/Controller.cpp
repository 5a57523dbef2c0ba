#include "Controller.h"

#include "DoneCB.h"
#include "DynVar.h"
#include "ExternData.h"
#include "JsCtrlLibrary.h"
#include "NativeCtrlLibrary.h"
#include "PlatformLog.h"
#include "Resources.h"
#include "ScriptWatchdog.h"

#include <QRegularExpression>
#include <QTimer>

namespace {
LazyAppObject<Controller> s_controller;

void logError(const char *method, const QString &message)
{
    PlatformLog::write(PlatformLog::Error, QLatin1String(method) + QLatin1String(": ") + message);
}

// The library name without the extension a CTRL author might have written.
QString baseLibraryName(const QString &name)
{
    QString base = name;
    if (base.endsWith(QLatin1String(".ctl")) || base.endsWith(QLatin1String(".js")))
        base.truncate(base.lastIndexOf(QLatin1Char('.')));
    return base;
}
} // namespace

struct Controller::PendingCall
{
    std::shared_ptr<CtrlLibrary> library;
    QString function;
    std::unique_ptr<DynVar> args;
    std::unique_ptr<DoneCB> callback;
};

Controller::Pointer Controller::thisPtr;

Controller *Controller::Pointer::operator->() const
{
    return s_controller.get();
}

Controller &Controller::Pointer::operator*() const
{
    return *s_controller.get();
}

Controller::Pointer::operator Controller *() const
{
    return s_controller.get();
}

Controller::Controller(QObject *parent)
    : QObject(parent)
    , m_watchdog(std::make_unique<ScriptWatchdog>())
{
}

// Calls still pending are dropped: their callbacks are deleted unexecuted.
Controller::~Controller() = default;

int Controller::checkIn(const CharString &script, const DynVar & /*args*/,
                        ExternData *externData, Variable * /*value*/, unsigned int,
                        unsigned int, unsigned int)
{
    static const QRegularExpression usesLine(
        QStringLiteral("^#uses\\s+\"([^\"]*)\"\\s*(//.*)?$"));
    ++m_checkInCount;
    const QString owner =
        externData ? QStringLiteral("script of %1").arg(QString::fromLatin1(externData->describe()))
                   : QStringLiteral("script");
    const QStringList lines = script.toQString().split(QLatin1Char('\n'));

    QList<std::shared_ptr<CtrlLibrary>> libraries;
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines.at(i).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1String("//")))
            continue;
        const QRegularExpressionMatch match = usesLine.match(line);
        if (!match.hasMatch() || match.captured(1).isEmpty()) {
            logError("Controller::checkIn",
                     QStringLiteral("%1, line %2: expected #uses \"library\", got: %3")
                         .arg(owner).arg(i + 1).arg(line));
            return -1;
        }
        std::shared_ptr<CtrlLibrary> library = resolveLibrary(match.captured(1), i + 1, owner);
        if (!library)
            return -1;
        libraries.append(library);
    }
    const int id = ++m_lastScriptId;
    m_scripts[id] = libraries;
    return id;
}

std::shared_ptr<CtrlLibrary> Controller::resolveLibrary(const QString &name, int line,
                                                         const QString &owner)
{
    const QString base = baseLibraryName(name);
    if (const auto native = m_nativeLibraries.value(base))
        return native;

    const QString relative = QStringLiteral("scripts/libs/") + base + QStringLiteral(".js");
    const QString path = Resources::findFile(relative);
    if (path.isEmpty()) {
        logError("Controller::checkIn",
                 QStringLiteral("%1, line %2: unknown library \"%3\": not registered "
                                "and %4 not found along the project paths")
                     .arg(owner).arg(line).arg(name, relative));
        return nullptr;
    }
    if (const auto loaded = m_scriptLibraries.value(path))
        return loaded;

    QString error;
    std::shared_ptr<CtrlLibrary> library =
        JsCtrlLibrary::load(base, path, *m_watchdog, m_scriptTimeout, error);
    if (!library) {
        logError("Controller::checkIn",
                 QStringLiteral("%1, line %2: library \"%3\" failed to load: %4")
                     .arg(owner).arg(line).arg(name, error));
        return nullptr;
    }
    m_scriptLibraries.insert(path, library);
    return library;
}

int Controller::startFunc(int scriptId, const CharString &function, const Variable &args,
                          DoneCB *callback)
{
    const auto script = m_scripts.find(scriptId);
    if (script == m_scripts.end()) {
        logError("Controller::startFunc", QStringLiteral("unknown script id %1").arg(scriptId));
        return 1;
    }
    const QString name = function.toQString();
    std::shared_ptr<CtrlLibrary> library;
    for (const auto &candidate : script->second) {
        if (candidate->hasFunction(name)) {
            library = candidate;
            break;
        }
    }
    if (!library) {
        logError("Controller::startFunc",
                 QStringLiteral("script %1 has no function \"%2\"").arg(scriptId).arg(name));
        return 1;
    }

    const bool forced = m_startResultForced;
    m_startResultForced = false;
    if (forced && m_forcedStartResult == 1)
        return 1;

    auto call = std::make_unique<PendingCall>();
    call->library = library;
    call->function = name;
    if (args.isA(DYN_VAR)) {
        call->args.reset(static_cast<DynVar *>(args.clone()));
    } else {
        call->args = std::make_unique<DynVar>();
        call->args->append(args);
    }
    call->callback.reset(callback);

    const quint64 callId = ++m_lastCallId;
    m_pendingCalls[callId] = std::move(call);
    QTimer::singleShot(answerDelay(library->name()), this, [this, callId] { runCall(callId); });
    return forced ? m_forcedStartResult : 0;
}

void Controller::forceNextStartResult(int result)
{
    m_startResultForced = true;
    m_forcedStartResult = result;
}

void Controller::runCall(quint64 callId)
{
    const auto found = m_pendingCalls.find(callId);
    if (found == m_pendingCalls.end())
        return;
    // Taken out first: the callback may start further calls.
    const std::unique_ptr<PendingCall> call = std::move(found->second);
    m_pendingCalls.erase(found);

    QString error;
    const std::unique_ptr<Variable> result =
        call->library->call(call->function, *call->args, m_scriptTimeout, error);
    if (!error.isEmpty()) {
        logError("Controller::startFunc",
                 QStringLiteral("function \"%1\" of library \"%2\" failed: %3")
                     .arg(call->function, call->library->name(), error));
    }
    if (call->callback)
        call->callback->execute(error.isEmpty() ? result.get() : nullptr);
}

void Controller::registerNativeLibrary(const QString &name,
                                       const QMap<QString, NativeFunction> &functions)
{
    const QString base = baseLibraryName(name);
    m_nativeLibraries.insert(base, std::make_shared<NativeCtrlLibrary>(base, functions));
}

void Controller::setAnswerDelay(const QString &library, int milliseconds)
{
    m_answerDelays.insert(baseLibraryName(library), qMax(0, milliseconds));
}

int Controller::answerDelay(const QString &library) const
{
    return m_answerDelays.value(baseLibraryName(library), 0);
}

void Controller::setScriptTimeout(int milliseconds)
{
    m_scriptTimeout = qMax(1, milliseconds);
}
