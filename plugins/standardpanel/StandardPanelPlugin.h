#pragma once

#include "SourceAndFiltersUiFactoryPlugin.h"

#include <QObject>

// The plug-in object of standardpanel.so: panels with the tabbed structured
// filter, and the pages of rule editors of its tabs.
class StandardPanelPlugin : public QObject, public SourceAndFiltersUiFactoryPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID SourceAndFiltersUiFactoryPlugin_iid)
    Q_INTERFACES(SourceAndFiltersUiFactoryPlugin)
public:
    SourceAndFiltersUi *create(const AlarmScreenConfiguration &config, QWidget *parent) override;
    QWidget *buildStructuredFilterPageUi(const AlarmScreenConfiguration &config, QStringList &list) override;
};
