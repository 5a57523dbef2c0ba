#include "StructuredFilterUi.h"

#include "CompletionSource.h"
#include "FilterCompletions.h"
#include "FilterRuleContainer.h"

StructuredFilterUi::StructuredFilterUi(const AlarmScreenConfiguration &config, QWidget *parent)
    : QWidget(parent), MsgLoggingProducer(&config), ActionAccessUser(new ActionAccess()),
      m_config(config),
      m_completionSource(CompletionSource::getInstance(this, config.getFilterWidgetConfig())),
      m_basicFilter(&config), m_defaultFilter(&config)
{
    qRegisterMetaType<SourceAndFilter>();
    if (m_completionSource)
        connect(m_completionSource.data(), &CompletionSource::completionsReady, this,
                &StructuredFilterUi::completionsReady);
}

StructuredFilterUi::~StructuredFilterUi() = default;

bool StructuredFilterUi::isUseDefaultFilter() const
{
    return m_useDefaultFilter;
}

void StructuredFilterUi::setUseDefaultFilter(bool use)
{
    m_useDefaultFilter = use;
}

SourceAndFilter StructuredFilterUi::getDefaultFilter() const
{
    SourceAndFilter result(this);
    result.setFilterContainer(QSharedPointer<FilterRuleContainer>::create(
        WildcardConfig(this), QList<FilterRuleSet>(), m_matchCase));
    const SourceAndFilter &held = isUseDefaultFilter() ? m_defaultFilter : m_basicFilter;
    if (held.getFilterContainer())
        result.setFilterContainer(held.getFilterContainer()->clone());
    return result;
}

void StructuredFilterUi::setDefaultFilter(const SourceAndFilter &filter,
                                          UserSettings::DefaultFilterAction action)
{
    switch (action) {
    case UserSettings::DefaultFilterEnable:
        m_useDefaultFilter = true;
        break;
    case UserSettings::DefaultFilterDisable:
        m_useDefaultFilter = false;
        m_defaultFilter.setFilterContainer(QSharedPointer<FilterRuleContainer>());
        break;
    case UserSettings::DefaultFilterSetAndShow: {
        m_useDefaultFilter = true;
        const QSharedPointer<FilterRuleContainer> container = filter.getFilterContainer();
        m_defaultFilter.setFilterContainer(container ? container->clone()
                                                     : QSharedPointer<FilterRuleContainer>());
        if (!filter.isFilterEqual(getFilter()))
            displayDefaultFilter();
        break;
    }
    case UserSettings::DefaultFilterClearAndShow:
        m_useDefaultFilter = true;
        m_defaultFilter.setFilterContainer(QSharedPointer<FilterRuleContainer>());
        if (!getFilter().isEmpty())
            displayDefaultFilter();
        break;
    }
}

void StructuredFilterUi::displayDefaultFilter()
{
    QString error;
    const WFilter::FilterDisplayResult result = displayFilter(getDefaultFilter(), DefaultFilter, error);
    if (result != WFilter::AllDisplayed)
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("error applying default filter: ") + error);
}

bool StructuredFilterUi::mayApplySettings() const
{
    return m_mayApplySettings;
}

void StructuredFilterUi::setMayApplySettings(bool on)
{
    m_mayApplySettings = on;
}

void StructuredFilterUi::setMatchCase(bool on)
{
    if (on == m_matchCase)
        return;
    m_matchCase = on;
    const QList<WFilter *> editors = findChildren<WFilter *>();
    for (WFilter *editor : editors)
        editor->setMatchCase(on);
    emit structuredFilterChanged();
}

void StructuredFilterUi::clearFilterToBasic()
{
    QString error;
    if (displayFilter(SourceAndFilter(this), BasicFilter, error) == WFilter::DisplayFailed)
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("error clearing filter: ") + error);
}

void StructuredFilterUi::clearFilterToDefault()
{
    QString error;
    if (displayFilter(getDefaultFilter(), BasicFilter, error) == WFilter::DisplayFailed)
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("error clearing filter: ") + error);
}

void StructuredFilterUi::completionsReady(void *consumer,
                                          const QSharedPointer<FilterCompletions> &completions)
{
    processNewCompletions(consumer, completions);
}
