#include "StandardPanelPlugin.h"

#include "AlarmScreenConfiguration.h"
#include "StandardSourceAndFiltersUi.h"
#include "StructuredFilterPageBuilder.h"

SourceAndFiltersUi *StandardPanelPlugin::create(const AlarmScreenConfiguration &config, QWidget *parent)
{
    return new StandardSourceAndFiltersUi(config, parent);
}

QWidget *StandardPanelPlugin::buildStructuredFilterPageUi(const AlarmScreenConfiguration &config,
                                                          QStringList &list)
{
    return StructuredFilterPageBuilder(&config).build(config, list);
}
