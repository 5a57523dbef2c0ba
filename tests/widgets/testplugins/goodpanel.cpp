// A panel plug-in as a project would ship it.
#include "AlarmScreenConfiguration.h"
#include "SourceAndFiltersUi.h"
#include "SourceAndFiltersUiFactoryPlugin.h"

class PluginPanel : public SourceAndFiltersUi
{
    Q_OBJECT
public:
    PluginPanel(const AlarmScreenConfiguration &config, QWidget *parent)
        : SourceAndFiltersUi(config, parent)
    {
        setObjectName(QStringLiteral("pluginPanel"));
    }
    QList<QWidget *> getTabGroups() const override { return {}; }
};

class GoodPanelPlugin : public QObject, public SourceAndFiltersUiFactoryPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID SourceAndFiltersUiFactoryPlugin_iid)
    Q_INTERFACES(SourceAndFiltersUiFactoryPlugin)
public:
    SourceAndFiltersUi *create(const AlarmScreenConfiguration &config, QWidget *parent) override
    {
        return new PluginPanel(config, parent);
    }
    QWidget *buildStructuredFilterPageUi(const AlarmScreenConfiguration &config,
                                         QStringList &list) override
    {
        Q_UNUSED(config)
        list << QStringLiteral("fromPlugin");
        auto *page = new QWidget;
        page->setObjectName(QStringLiteral("pluginPage"));
        return page;
    }
};

#include "goodpanel.moc"
