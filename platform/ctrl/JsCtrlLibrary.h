#pragma once

#include "CtrlLibrary.h"

#include <QJSValue>
#include <QSet>

class JsValueConverter;
class QJSEngine;
class ScriptWatchdog;

// A library written as a JavaScript file (scripts/libs/<name>.js). The file is
// run once, in an engine of its own that keeps the library's global state
// between calls; its top-level functions are the library's functions.
class JsCtrlLibrary : public CtrlLibrary
{
public:
    ~JsCtrlLibrary() override;

    // Loads and runs the file; null with `error` ("file:line: message") when it
    // cannot be read, does not compile, throws or runs longer than `timeoutMs`.
    static std::unique_ptr<JsCtrlLibrary> load(const QString &name, const QString &filePath,
                                               ScriptWatchdog &watchdog, int timeoutMs,
                                               QString &error);

    const QString &filePath() const { return m_filePath; }
    bool hasFunction(const QString &function) const override;
    std::unique_ptr<Variable> call(const QString &function, const DynVar &args, int timeoutMs,
                                   QString &error) override;

private:
    JsCtrlLibrary(const QString &name, const QString &filePath, ScriptWatchdog &watchdog);
    // "file:line: message" of a thrown value.
    QString describeError(const QJSValue &thrown) const;
    // Calls `fn` and converts its answer; the watchdog must be armed, since
    // reading a thrown or returned value runs script code too.
    std::unique_ptr<Variable> callWatched(const QString &function, const QJSValue &fn, const QJSValue &args,
                                          QString &error);

    QString m_filePath;
    ScriptWatchdog &m_watchdog;
    std::unique_ptr<QJSEngine> m_engine;
    std::unique_ptr<JsValueConverter> m_converter;
    // Calls a function and catches what it throws, so that a thrown string
    // can be told from a returned one.
    QJSValue m_guardedCall;
    QSet<QString> m_functions;
};
