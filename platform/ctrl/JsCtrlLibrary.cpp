#include "JsCtrlLibrary.h"

#include "DynVar.h"
#include "JsValueConverter.h"
#include "ScriptWatchdog.h"

#include <QFile>
#include <QJSEngine>
#include <QJSValueIterator>

namespace {
const char GuardedCallSource[] =
    "(function (f, args) {\n"
    "    try { return { ok: true, value: f.apply(undefined, args) }; }\n"
    "    catch (e) { return { ok: false, error: e }; }\n"
    "})";

QSet<QString> globalFunctions(QJSEngine &engine)
{
    QSet<QString> names;
    QJSValueIterator it(engine.globalObject());
    while (it.hasNext()) {
        it.next();
        if (it.value().isCallable())
            names.insert(it.name());
    }
    return names;
}
} // namespace

JsCtrlLibrary::JsCtrlLibrary(const QString &name, const QString &filePath,
                             ScriptWatchdog &watchdog)
    : CtrlLibrary(name)
    , m_filePath(filePath)
    , m_watchdog(watchdog)
    , m_engine(std::make_unique<QJSEngine>())
{
    m_engine->installExtensions(QJSEngine::ConsoleExtension);
    m_converter = std::make_unique<JsValueConverter>(*m_engine);
}

JsCtrlLibrary::~JsCtrlLibrary() = default;

std::unique_ptr<JsCtrlLibrary> JsCtrlLibrary::load(const QString &name, const QString &filePath,
                                                   ScriptWatchdog &watchdog, int timeoutMs,
                                                   QString &error)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("%1: cannot be read: %2").arg(filePath, file.errorString());
        return nullptr;
    }
    const QString source = QString::fromUtf8(file.readAll());

    std::unique_ptr<JsCtrlLibrary> library(new JsCtrlLibrary(name, filePath, watchdog));
    QJSEngine &engine = *library->m_engine;
    const QSet<QString> builtIn = globalFunctions(engine);

    watchdog.arm(&engine, timeoutMs);
    const QJSValue result = engine.evaluate(source, filePath, 1);
    const bool interrupted = watchdog.disarm();
    if (interrupted) {
        error = QStringLiteral("%1: interrupted after %2 ms while loading").arg(filePath).arg(timeoutMs);
        return nullptr;
    }
    if (result.isError()) {
        error = library->describeError(result);
        return nullptr;
    }
    library->m_functions = globalFunctions(engine) - builtIn;
    library->m_guardedCall = engine.evaluate(QString::fromLatin1(GuardedCallSource));
    return library;
}

bool JsCtrlLibrary::hasFunction(const QString &function) const
{
    return m_functions.contains(function);
}

QString JsCtrlLibrary::describeError(const QJSValue &thrown) const
{
    QString file = m_filePath;
    int line = 0;
    if (thrown.isObject()) {
        const QJSValue fileName = thrown.property(QStringLiteral("fileName"));
        if (fileName.isString() && !fileName.toString().isEmpty())
            file = fileName.toString();
        line = thrown.property(QStringLiteral("lineNumber")).toInt();
    }
    if (file.startsWith(QLatin1String("file://")))
        file = file.mid(7);
    return QStringLiteral("%1:%2: %3").arg(file).arg(line).arg(thrown.toString());
}

std::unique_ptr<Variable> JsCtrlLibrary::call(const QString &function, const DynVar &args,
                                              int timeoutMs, QString &error)
{
    const QJSValue fn = m_engine->globalObject().property(function);
    if (!fn.isCallable()) {
        error = QStringLiteral("%1: %2 is not a function").arg(m_filePath, function);
        return nullptr;
    }
    QJSValue jsArgs = m_engine->newArray(static_cast<uint>(args.count()));
    for (int i = 0; i < args.count(); ++i)
        jsArgs.setProperty(static_cast<quint32>(i), m_converter->toJs(*args.at(i)));

    // The answer is converted within the script's time: converting runs
    // getters, and a large answer takes time of its own.
    m_watchdog.arm(m_engine.get(), timeoutMs);
    std::unique_ptr<Variable> result = callWatched(function, fn, jsArgs, error);
    if (m_watchdog.disarm()) {
        error = QStringLiteral("%1: function %2 interrupted after %3 ms")
                    .arg(m_filePath, function).arg(timeoutMs);
        return nullptr;
    }
    return result;
}

std::unique_ptr<Variable> JsCtrlLibrary::callWatched(const QString &function, const QJSValue &fn,
                                                     const QJSValue &args, QString &error)
{
    const QJSValue outcome = m_guardedCall.call({fn, args});
    if (outcome.isError()) {
        error = describeError(outcome);
        return nullptr;
    }
    if (!outcome.property(QStringLiteral("ok")).toBool()) {
        error = QStringLiteral("function %1 threw: %2")
                    .arg(function, describeError(outcome.property(QStringLiteral("error"))));
        return nullptr;
    }
    QString conversionError;
    std::unique_ptr<Variable> result =
        m_converter->fromJs(outcome.property(QStringLiteral("value")), conversionError);
    if (!conversionError.isEmpty()) {
        error = QStringLiteral("%1: return value of %2: %3").arg(m_filePath, function, conversionError);
        return nullptr;
    }
    return result;
}
