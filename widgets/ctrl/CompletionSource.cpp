#include "CompletionSource.h"

#include "CompletionSourceDoneCb.h"
#include "DynVar.h"
#include "FilterWidgetConfiguration.h"
#include "converter.h"

#include <memory>

QList<QSharedPointer<CompletionSource>> CompletionSource::m_instances;

QSharedPointer<CompletionSource> CompletionSource::getInstance(const MsgLoggingProducer *logger,
                                                               const FilterWidgetConfiguration &config)
{
    for (const QSharedPointer<CompletionSource> &source : qAsConst(m_instances)) {
        if (source->canBeUsedForConfig(config)) {
            source->addLogProducer(logger);
            return source;
        }
    }
    auto source = QSharedPointer<CompletionSource>::create(logger, config);
    m_instances.append(source);
    return source;
}

CompletionSource::CompletionSource(const MsgLoggingProducer *logger, const FilterWidgetConfiguration &config)
    : MsgLoggingMultiProducer(logger), m_library(config.getCtrlLibrary()),
      m_masterFunction(config.getMasterFunction()), m_slaveFunction(config.getSlaveFunction()),
      m_externData("CompletionSource", "CompletionSource")
{
    qRegisterMetaType<QSharedPointer<FilterCompletions>>("QSharedPointer<FilterCompletions>");
    const QMap<QString, QStringList> fixed = config.getFixedCompletions();
    for (auto it = fixed.begin(); it != fixed.end(); ++it) {
        auto completions = QSharedPointer<FilterCompletions>::create(this, it.key(), QStringList());
        completions->setFixedList(it.value());
        m_completions.insert(it.key(), completions);
    }
}

CompletionSource::~CompletionSource() = default;

bool CompletionSource::canBeUsedForConfig(const FilterWidgetConfiguration &config) const
{
    if (m_library != config.getCtrlLibrary() || m_masterFunction != config.getMasterFunction() ||
        m_slaveFunction != config.getSlaveFunction())
        return false;
    const QMap<QString, QStringList> fixed = config.getFixedCompletions();
    for (auto it = fixed.begin(); it != fixed.end(); ++it) {
        const QSharedPointer<FilterCompletions> held = m_completions.value(it.key());
        if (!held || held->getType() > FilterCompletions::SingleList || held->getList() != it.value())
            return false;
    }
    return true;
}

QSharedPointer<FilterCompletions> CompletionSource::getCompletions(const QString &property) const
{
    return m_completions.value(property);
}

QVariantList CompletionSource::buildMasterArgs(const QString &property, const QStringList &systems) const
{
    return {property, systems};
}

QVariantList CompletionSource::buildSlaveArgs(const QString &property,
                                              const QMap<QString, QString> &values) const
{
    QVariantMap map;
    for (auto it = values.begin(); it != values.end(); ++it)
        map.insert(it.key(), it.value());
    return {property, map};
}

void CompletionSource::requestCompletions(void *consumer, const QString &property, const QStringList &systems)
{
    QSharedPointer<FilterCompletions> completions = m_completions.value(property);
    if (!completions) {
        completions = QSharedPointer<FilterCompletions>::create(this, property, systems);
        connect(completions.data(), &FilterCompletions::requestCompleted, this,
                &CompletionSource::completionsUpdated);
        m_completions.insert(property, completions);
        if (!queryMasterCompletions(consumer, completions, systems))
            completions->masterCallFailed(consumer);
        return;
    }
    switch (completions->getType()) {
    case FilterCompletions::NoCompletions:
    case FilterCompletions::SingleList:
    case FilterCompletions::DependentList:
        emit completionsReady(consumer, completions);
        break;
    case FilterCompletions::PerSystem:
        requestMissingSystems(consumer, completions, systems);
        break;
    case FilterCompletions::UnknownType:
        // The first request is still running.
        completions->addPendingSystems(systems);
        break;
    default:
        if (!queryMasterCompletions(consumer, completions, systems))
            completions->masterCallFailed(consumer);
        break;
    }
}

void CompletionSource::requestMissingSystems(void *consumer, const QSharedPointer<FilterCompletions> &completions,
                                             const QStringList &systems)
{
    const QStringList missing = completions->findMissingSystems(systems);
    if (missing.isEmpty())
        emit completionsReady(consumer, completions);
    else if (completions->isRequestRunning())
        completions->addPendingSystems(missing);
    else if (!queryMasterCompletions(consumer, completions, missing))
        completions->masterCallFailed(consumer);
}

void CompletionSource::filterChanged(void *consumer, const QString &filterName,
                                     const QMap<QString, QString> &values)
{
    for (const QSharedPointer<FilterCompletions> &completions : qAsConst(m_completions)) {
        if (completions->dependsOnFilter(filterName))
            querySlaveCompletions(consumer, completions, values);
    }
}

void CompletionSource::systemConnectionChanged(void *consumer, const QStringList &systems)
{
    for (const QSharedPointer<FilterCompletions> &completions : qAsConst(m_completions)) {
        if (completions->getType() == FilterCompletions::PerSystem)
            requestMissingSystems(consumer, completions, systems);
        else if (completions->getType() == FilterCompletions::UnknownType)
            completions->addPendingSystems(completions->findMissingSystems(systems));
    }
}

void CompletionSource::completionsUpdated(void *consumer, const FilterCompletions *completions)
{
    const QSharedPointer<FilterCompletions> stored = m_completions.value(completions->getProperty());
    if (!stored) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Signal from unknown FilterCompletions for property ") + completions->getProperty());
        return;
    }
    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral("completionsUpdated() callback for property ") + stored->getProperty() +
              QStringLiteral(", type ") + QString::number(stored->getType()));
    if (stored->getType() == FilterCompletions::NoCompletions)
        return;
    if (stored->getType() == FilterCompletions::PerSystem) {
        const QStringList pending = stored->getPendingSystems();
        if (!pending.isEmpty()) {
            ASLOG(this, MsgLoggerEnums::Trace,
                  QStringLiteral("query for pending systems: ") + pending.join(QLatin1Char('|')));
            if (queryMasterCompletions(consumer, stored, pending))
                stored->clearPendingSystems();
            else
                stored->masterCallFailed(consumer);
        }
    }
    emit completionsReady(consumer, stored);
}

bool CompletionSource::loadCtrlLib()
{
    if (m_scriptId >= 0)
        return true;
    if (m_library.isEmpty()) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("Empty CTRL library name for requesting gilter completions"));
        return false;
    }
    const QString script = CtrlBridge::usesScript(m_library);
    m_scriptId = CtrlBridge::checkIn(script, m_externData);
    if (m_scriptId < 0) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("Failed to check in script: ") + script);
        return false;
    }
    return true;
}

bool CompletionSource::queryMasterCompletions(void *consumer, const QSharedPointer<FilterCompletions> &completions,
                                              const QStringList &systems)
{
    if (m_masterFunction.isEmpty()) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Empty CTRL function name for requesting filter completions"));
        return false;
    }
    if (!loadCtrlLib())
        return false;
    return callMasterCompletionsCtrl(consumer, completions, systems);
}

bool CompletionSource::callMasterCompletionsCtrl(void *consumer,
                                                 const QSharedPointer<FilterCompletions> &completions,
                                                 const QStringList &systems)
{
    return startCall(m_masterFunction, buildMasterArgs(completions->getProperty(), systems), completions,
                     consumer);
}

bool CompletionSource::querySlaveCompletions(void *consumer, const QSharedPointer<FilterCompletions> &completions,
                                             const QMap<QString, QString> &values)
{
    if (m_slaveFunction.isEmpty()) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Empty CTRL function name for requesting slave filter completions"));
        return false;
    }
    if (!loadCtrlLib())
        return false;
    return startCall(m_slaveFunction, buildSlaveArgs(completions->getProperty(), values), completions, consumer);
}

bool CompletionSource::startCall(const QString &function, const QVariantList &args,
                                 const QSharedPointer<FilterCompletions> &completions, void *consumer)
{
    const std::unique_ptr<DynVar> ctrlArgs(converter::nativeToCtrlArguments(this, args));
    if (!ctrlArgs) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Conversion to CTRL arcguments for ") + m_library + QStringLiteral(", function ") +
                  function + QStringLiteral("failed"));
        return false;
    }
    auto *callback = new CompletionSourceDoneCb(this, completions.data(), consumer, function);
    if (!CtrlBridge::startFunc(m_scriptId, function, *ctrlArgs, callback)) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("call of function ") + function + QStringLiteral(" in library ") + m_library +
                  QStringLiteral(" failed"));
        return false;
    }
    completions->setFunction(function);
    completions->requestStarted();
    return true;
}
