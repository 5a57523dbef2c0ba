#pragma once

#include "SourceAndFiltersUi.h"
#include "widgets_export.h"

// The built-in panel: source selector and quick filter, no structured filter.
class WIDGETS_EXPORT BasicSourceAndFiltersUi : public SourceAndFiltersUi
{
    Q_OBJECT
public:
    BasicSourceAndFiltersUi(const AlarmScreenConfiguration &config, QWidget *parent);
    ~BasicSourceAndFiltersUi() override;

    QList<QWidget *> getTabGroups() const override;
};
