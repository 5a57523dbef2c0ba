#pragma once

#include <QStringList>
#include <QtPlugin>

class AlarmScreenConfiguration;
class QWidget;
class SourceAndFiltersUi;

// The interface of a panel plug-in: a library under a project's bin/plugins that
// builds richer source and filter panels, and the pages of rule editors that go
// into the tabs of a structured filter.
class SourceAndFiltersUiFactoryPlugin
{
public:
    virtual ~SourceAndFiltersUiFactoryPlugin() = default;
    // A new panel owned by `parent` (or by the caller), or null.
    virtual SourceAndFiltersUi *create(const AlarmScreenConfiguration &config, QWidget *parent) = 0;
    // A new page of rule editors, caller-owned, or null. The plug-in may fill
    // `list` for its caller.
    virtual QWidget *buildStructuredFilterPageUi(const AlarmScreenConfiguration &config,
                                                 QStringList &list) = 0;
};

#define SourceAndFiltersUiFactoryPlugin_iid                                                        \
    "Tessaly.Ro.Mvk.Brightline.AlarmScreen.SourceAndFiltersUiFactoryPlugin"

Q_DECLARE_INTERFACE(SourceAndFiltersUiFactoryPlugin, SourceAndFiltersUiFactoryPlugin_iid)
