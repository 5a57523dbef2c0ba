#pragma once

#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

class AlarmScreenConfiguration;
class QWidget;
class SourceAndFiltersUi;
class SourceAndFiltersUiFactoryPlugin;

// Builds the source and filter panel the configuration asks for: the built-in
// one, or one from a plug-in found in the project's bin/plugins directories.
// Plug-ins are loaded at most once per process and kept until it ends; a name
// whose load failed is not tried again.
class WIDGETS_EXPORT SourceAndFiltersUiFactory : public MsgLoggingProducer
{
public:
    using PluginMap = QMap<QString, QSharedPointer<SourceAndFiltersUiFactoryPlugin>>;

    explicit SourceAndFiltersUiFactory(const MsgLoggingProducer *logger);
    ~SourceAndFiltersUiFactory() override;

    // Null when the configuration wants no panel or its plug-in is unavailable.
    SourceAndFiltersUi *create(const AlarmScreenConfiguration &config, QWidget *parent);
    QWidget *buildStructuredFilterPageUi(const AlarmScreenConfiguration &config, QStringList &list);

    QSharedPointer<SourceAndFiltersUiFactoryPlugin> loadPlugin(const QString &name);
    QSharedPointer<SourceAndFiltersUiFactoryPlugin> loadPluginInBinDir(const QString &binDir,
                                                                      const QString &name);

    // The plug-ins of the process by name (null for names that failed to load).
    static PluginMap &getAllPlugins();

    // A plug-in name is a plain file name: no directory part, nothing that
    // could lead out of bin/plugins.
    static bool isPlainPluginName(const QString &name);

private:
    QSharedPointer<SourceAndFiltersUiFactoryPlugin> findOrLoadPlugin(const QString &name);
};
