#include "SourceAndFiltersUi.h"

#include "AlarmScreenConfiguration.h"
#include "FilterRuleContainer.h"
#include "QuickFilterEditor.h"
#include "SourceUi.h"

namespace {

// Takes every part of `from` except its logging settings.
void copyRecord(const SourceAndFilter &from, SourceAndFilter &to)
{
    to.setFilterContainer(from.getFilterContainer());
    to.setTimeRange(from.getTimeRange());
    to.setSystems(from.getSystems());
    to.setDpNames(from.getDpNames());
    to.setSourceMode(from.getSourceMode());
    to.setSelectionKind(from.getSelectionKind());
}

} // namespace

SourceAndFiltersUi::SourceAndFiltersUi(const AlarmScreenConfiguration &config, QWidget *parent)
    : QWidget(parent), MsgLoggingProducer(&config)
{
    qRegisterMetaType<SourceAndFilter>();
    qRegisterMetaType<QuickCellFilter>();
}

SourceAndFiltersUi::~SourceAndFiltersUi() = default;

bool SourceAndFiltersUi::isOldMetadaVisible() const
{
    return false;
}

void SourceAndFiltersUi::adjustForMode(Constants::SourceMode mode)
{
    Q_UNUSED(mode)
}

QString SourceAndFiltersUi::prepareArchiveMode(const QDateTime &start, const QDateTime &end,
                                               const QStringList &systems)
{
    if (!m_sourceUi)
        return tr("as EWO doesn't contains source control, archive mode can't be set");
    return m_sourceUi->prepareArchiveMode(start, end, systems);
}

void SourceAndFiltersUi::prepareOnlineMode()
{
    if (m_sourceUi)
        m_sourceUi->prepareOnlineMode();
}

void SourceAndFiltersUi::displaySourceState(Constants::SourceState state)
{
    if (m_sourceUi)
        m_sourceUi->displaySourceState(state);
}

void SourceAndFiltersUi::displaySourceCounts(unsigned int first, unsigned int second)
{
    if (m_sourceUi)
        m_sourceUi->displaySourceCounts(first, second);
}

Qt::TimeSpec SourceAndFiltersUi::getTimeSpec() const
{
    return m_timeSpec;
}

void SourceAndFiltersUi::setTimeSpec(Qt::TimeSpec timeSpec)
{
    m_timeSpec = timeSpec;
    if (m_sourceUi)
        m_sourceUi->setTimeSpec(timeSpec);
}

void SourceAndFiltersUi::connectedSystemsChanged(const QStringList &systems)
{
    if (m_sourceUi)
        m_sourceUi->connectedSystemsChanged(systems);
    if (m_structuredFilterUi)
        m_structuredFilterUi->connectedSystemsChanged(systems);
}

void SourceAndFiltersUi::setFixedDpNames(const QStringList &dpNames)
{
    if (m_fixedDpNames.isSharedWith(dpNames))
        return;
    m_fixedDpNames = dpNames;
}

bool SourceAndFiltersUi::isUseDefaultFilter() const
{
    return m_structuredFilterUi && m_structuredFilterUi->isUseDefaultFilter();
}

void SourceAndFiltersUi::setUseDefaultFilter(bool use)
{
    if (m_structuredFilterUi)
        m_structuredFilterUi->setUseDefaultFilter(use);
}

SourceAndFilter SourceAndFiltersUi::getFilter() const
{
    SourceAndFilter result(this);
    if (m_structuredFilterUi) {
        copyRecord(m_structuredFilterUi->getFilter(), result);
    } else {
        result.setFilterContainer(QSharedPointer<FilterRuleContainer>::create(
            WildcardConfig(this), QList<FilterRuleSet>(), m_matchCase));
    }
    if (m_sourceUi)
        m_sourceUi->addToFilter(result);
    if (result.getSystems().isEmpty() && !m_fixedDpNames.isEmpty()) {
        result.setSelectionKind(SourceAndFilter::SelectByDpNames);
        result.setDpNames(m_fixedDpNames);
    }
    return result;
}

SourceAndFilter SourceAndFiltersUi::getDefaultFilter() const
{
    if (m_structuredFilterUi)
        return m_structuredFilterUi->getDefaultFilter();
    return SourceAndFilter(this);
}

void SourceAndFiltersUi::setDefaultFilter(const SourceAndFilter &filter,
                                          UserSettings::DefaultFilterAction action)
{
    if (m_structuredFilterUi)
        m_structuredFilterUi->setDefaultFilter(filter, action);
}

WFilter::FilterDisplayResult SourceAndFiltersUi::displayFilter(const SourceAndFilter &filter,
                                                              StructuredFilterUi::FilterType type,
                                                              QString &error)
{
    if (m_structuredFilterUi)
        return m_structuredFilterUi->displayFilter(filter, type, error);
    if (filter.isEmpty())
        return WFilter::NoneDisplayed;
    error = tr("there is no editor to display content of structured filter");
    return WFilter::DisplayFailed;
}

void SourceAndFiltersUi::compareWithFilter(const SourceAndFilter &filter, bool flag)
{
    if (m_sourceUi)
        m_sourceUi->compareWithFilter(filter, flag);
    if (m_structuredFilterUi)
        m_structuredFilterUi->compareWithFilter(filter, flag);
    const bool equal = getFilter().isEqual(filter);
    if (m_sourceUi)
        m_sourceUi->displayFilterModified(equal);
    if (m_structuredFilterUi)
        m_structuredFilterUi->displayFilterModified(equal);
}

void SourceAndFiltersUi::setAppliedQuickFilter(const QuickCellFilter &filter)
{
    if (m_quickFilterEditor)
        m_quickFilterEditor->setAppliedFilter(filter);
}

void SourceAndFiltersUi::clearQuickFilter()
{
    if (m_quickFilterEditor)
        m_quickFilterEditor->clear();
}

void SourceAndFiltersUi::setQuickFilterEditor(QuickFilterEditor *editor)
{
    m_quickFilterEditor = editor;
    if (editor)
        connect(editor, &QuickFilterEditor::filterModified, this,
                &SourceAndFiltersUi::quickFilterChanged);
}

void SourceAndFiltersUi::setSourceUi(SourceUi *sourceUi)
{
    if (m_sourceUi)
        m_sourceUi->deleteLater();
    m_sourceUi = sourceUi;
    if (!sourceUi)
        return;
    connect(sourceUi, &SourceUi::changed, this, &SourceAndFiltersUi::structuredFilterChanged);
    connect(sourceUi, &SourceUi::apply, this, &SourceAndFiltersUi::applyFilterRequest);
    connect(sourceUi, &SourceUi::abortQuery, this, &SourceAndFiltersUi::abortQuery);
}

void SourceAndFiltersUi::setStructuredFilterUI(StructuredFilterUi *structuredFilterUi)
{
    if (m_structuredFilterUi)
        m_structuredFilterUi->deleteLater();
    m_structuredFilterUi = structuredFilterUi;
    if (!structuredFilterUi)
        return;
    connect(structuredFilterUi, &StructuredFilterUi::structuredFilterChanged, this,
            &SourceAndFiltersUi::structuredFilterChanged);
    connect(structuredFilterUi, &StructuredFilterUi::applyStructuredFilter, this,
            &SourceAndFiltersUi::requestToApplyStructuredFilter);
    connect(structuredFilterUi, &StructuredFilterUi::filterActionRequested, this,
            &SourceAndFiltersUi::filterActionRequested);
}

void SourceAndFiltersUi::applyFilterRequest()
{
    emit applyStructuredFilter(getFilter(), StructuredFilterUi::ApplyButtonFilter);
}

void SourceAndFiltersUi::requestToApplyStructuredFilter(const SourceAndFilter &filters, int type)
{
    if (!m_sourceUi) {
        emit applyStructuredFilter(filters, type);
        return;
    }
    // The selector's mode, time range and systems go with the editor's filter.
    SourceAndFilter merged(filters);
    m_sourceUi->addToFilter(merged);
    emit applyStructuredFilter(merged, type);
}
