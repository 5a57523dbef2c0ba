#pragma once

#include "SourceAndFiltersUi.h"

class TabbedStructuredFilterUi;

// The standard panel: source selector, tabbed structured filter and quick
// filter, one above the other.
class StandardSourceAndFiltersUi : public SourceAndFiltersUi
{
    Q_OBJECT
public:
    StandardSourceAndFiltersUi(const AlarmScreenConfiguration &config, QWidget *parent);
    ~StandardSourceAndFiltersUi() override;

    QList<QWidget *> getTabGroups() const override;
    TabbedStructuredFilterUi *getTabbedFilter() const;
};
