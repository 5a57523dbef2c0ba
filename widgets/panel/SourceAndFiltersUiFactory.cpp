#include "SourceAndFiltersUiFactory.h"

#include "AlarmScreenConfiguration.h"
#include "BasicSourceAndFiltersUi.h"
#include "FileSysSlim.h"
#include "Resources.h"
#include "SourceAndFiltersUiFactoryPlugin.h"

#include <QDir>
#include <QPluginLoader>

SourceAndFiltersUiFactory::SourceAndFiltersUiFactory(const MsgLoggingProducer *logger)
    : MsgLoggingProducer(logger)
{
}

SourceAndFiltersUiFactory::~SourceAndFiltersUiFactory() = default;

SourceAndFiltersUiFactory::PluginMap &SourceAndFiltersUiFactory::getAllPlugins()
{
    static PluginMap plugins;
    return plugins;
}

bool SourceAndFiltersUiFactory::isPlainPluginName(const QString &name)
{
    return !name.isEmpty() && !name.contains(QLatin1Char(FileSysSlim::PATH_CHAR))
           && !name.contains(QLatin1Char('\\')) && !name.contains(QLatin1String(".."));
}

QSharedPointer<SourceAndFiltersUiFactoryPlugin>
SourceAndFiltersUiFactory::findOrLoadPlugin(const QString &name)
{
    PluginMap &plugins = getAllPlugins();
    auto it = plugins.find(name);
    if (it == plugins.end())
        it = plugins.insert(name, loadPlugin(name));
    return it.value();
}

SourceAndFiltersUi *SourceAndFiltersUiFactory::create(const AlarmScreenConfiguration &config,
                                                      QWidget *parent)
{
    const FilterWidgetConfiguration widgetConfig = config.getFilterWidgetConfig();
    if (widgetConfig.isNoPanel())
        return nullptr;
    const QString name = widgetConfig.getPanelPluginName();
    if (name.isEmpty())
        return new BasicSourceAndFiltersUi(config, parent);
    const QSharedPointer<SourceAndFiltersUiFactoryPlugin> plugin = findOrLoadPlugin(name);
    if (!plugin) {
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("No plugin found/loaded: ") + name);
        return nullptr;
    }
    return plugin->create(config, parent);
}

QWidget *SourceAndFiltersUiFactory::buildStructuredFilterPageUi(const AlarmScreenConfiguration &config,
                                                               QStringList &list)
{
    const FilterWidgetConfiguration widgetConfig = config.getFilterWidgetConfig();
    if (widgetConfig.isNoPanel())
        return nullptr;
    const QString name = widgetConfig.getPanelPluginName();
    if (name.isEmpty())
        return new BasicSourceAndFiltersUi(config, nullptr);
    const QSharedPointer<SourceAndFiltersUiFactoryPlugin> plugin = findOrLoadPlugin(name);
    if (!plugin) {
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("No plugin found/loaded: ") + name);
        return nullptr;
    }
    return plugin->buildStructuredFilterPageUi(config, list);
}

QSharedPointer<SourceAndFiltersUiFactoryPlugin> SourceAndFiltersUiFactory::loadPlugin(const QString &name)
{
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("loading plugin ") + name);
    if (!isPlainPluginName(name)) {
        ASLOG(this, MsgLoggerEnums::Warning,
              QStringLiteral("plugin name ") + name + QStringLiteral(" is not a plain file name, refused"));
        return {};
    }
    const QStringList &paths = Resources::getProjectPaths();
    for (int i = paths.size() - 1; i >= 0; --i) {
        const QString binDir = paths.at(i) + QStringLiteral("bin") + QLatin1Char(FileSysSlim::PATH_CHAR);
        const QSharedPointer<SourceAndFiltersUiFactoryPlugin> plugin = loadPluginInBinDir(binDir, name);
        if (plugin) {
            ASLOG(this, MsgLoggerEnums::Trace,
                  QStringLiteral("plugin ") + name + QStringLiteral(" has been loaded from ") + binDir);
            return plugin;
        }
    }
    ASLOG(this, MsgLoggerEnums::Warning,
          QStringLiteral("Plugin for building source & filters UI (") + name
              + QStringLiteral(") is not loaded"));
    return {};
}

QSharedPointer<SourceAndFiltersUiFactoryPlugin>
SourceAndFiltersUiFactory::loadPluginInBinDir(const QString &binDir, const QString &name)
{
    if (!isPlainPluginName(name)) {
        ASLOG(this, MsgLoggerEnums::Warning,
              QStringLiteral("plugin name ") + name + QStringLiteral(" is not a plain file name, refused"));
        return {};
    }
    QDir dir(binDir);
    if (!dir.cd(QStringLiteral("plugins"))) {
        ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("no plugins directory under ") + binDir);
        return {};
    }
    const QString fileName = name + QStringLiteral(".so");
    if (!dir.exists(fileName)) {
        ASLOG(this, MsgLoggerEnums::Trace,
              QStringLiteral("file ") + fileName + QStringLiteral(" does not exist in ") + dir.absolutePath());
        return {};
    }
    const QString filePath = dir.absoluteFilePath(fileName);
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("trying to load ") + filePath);
    QPluginLoader loader(filePath);
    QObject *instance = loader.instance();
    if (!instance) {
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("plugin is not loaded: ") + loader.errorString());
        return {};
    }
    auto *plugin = qobject_cast<SourceAndFiltersUiFactoryPlugin *>(instance);
    if (!plugin) {
        loader.unload();
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("loaded plugin is of wrong type ") + filePath);
        return {};
    }
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("plugin loaded ") + filePath);
    return QSharedPointer<SourceAndFiltersUiFactoryPlugin>(plugin);
}
