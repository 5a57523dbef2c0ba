#include "StandardSourceAndFiltersUi.h"

#include "AlarmScreenConfiguration.h"
#include "QuickFilterEditor.h"
#include "SourceUiLong.h"
#include "TabbedStructuredFilterUi.h"

#include <QVBoxLayout>

StandardSourceAndFiltersUi::StandardSourceAndFiltersUi(const AlarmScreenConfiguration &config, QWidget *parent)
    : SourceAndFiltersUi(config, parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 0, 2, 0);
    layout->setSpacing(2);

    auto *sourceUi = new SourceUiLong(config, nullptr);
    sourceUi->setMayApplySettings(true);
    layout->addWidget(sourceUi);
    setSourceUi(sourceUi);

    auto *structured = new TabbedStructuredFilterUi(config, nullptr);
    structured->setObjectName(QStringLiteral("structuredFilter"));
    structured->setMayApplySettings(true);
    layout->addWidget(structured, 1);
    setStructuredFilterUI(structured);
    // An operator starts with one empty rule set to type into.
    structured->addFilterTab();

    auto *quickFilter = new QuickFilterEditor(nullptr);
    quickFilter->setWildcardConfig(config.getWildcardConfig());
    layout->addWidget(quickFilter);
    setQuickFilterEditor(quickFilter);
}

StandardSourceAndFiltersUi::~StandardSourceAndFiltersUi() = default;

QList<QWidget *> StandardSourceAndFiltersUi::getTabGroups() const
{
    QList<QWidget *> groups;
    if (getSourceUi())
        groups.append(getSourceUi());
    if (getStructuredFilterUi())
        groups.append(getStructuredFilterUi()->getTabGroups());
    if (getQuickFilterEditor())
        groups.append(getQuickFilterEditor());
    return groups;
}

TabbedStructuredFilterUi *StandardSourceAndFiltersUi::getTabbedFilter() const
{
    return qobject_cast<TabbedStructuredFilterUi *>(getStructuredFilterUi());
}
