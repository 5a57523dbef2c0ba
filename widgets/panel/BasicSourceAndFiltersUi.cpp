#include "BasicSourceAndFiltersUi.h"

#include "AlarmScreenConfiguration.h"
#include "QuickFilterEditor.h"
#include "SourceUiLong.h"

#include <QVBoxLayout>

BasicSourceAndFiltersUi::BasicSourceAndFiltersUi(const AlarmScreenConfiguration &config,
                                                 QWidget *parent)
    : SourceAndFiltersUi(config, parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 0, 2, 0);
    layout->setSpacing(2);

    auto *sourceUi = new SourceUiLong(config, nullptr);
    sourceUi->setMayApplySettings(true);
    layout->addWidget(sourceUi);
    setSourceUi(sourceUi);

    auto *quickFilter = new QuickFilterEditor(nullptr);
    quickFilter->setWildcardConfig(config.getWildcardConfig());
    layout->addWidget(quickFilter);
    setQuickFilterEditor(quickFilter);
}

BasicSourceAndFiltersUi::~BasicSourceAndFiltersUi() = default;

QList<QWidget *> BasicSourceAndFiltersUi::getTabGroups() const
{
    return {};
}
