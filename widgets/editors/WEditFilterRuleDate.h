#pragma once

#include "WFilter.h"
#include "widgets_export.h"

#include <QDateTime>
#include <QScopedPointer>

namespace Ui {
class WEditFilterRuleDate;
}

// A time property compared with one date (before, after) or two (between). The
// combo box index is the comparison method of ValueFilterDate; index 0 filters
// nothing.
class WIDGETS_EXPORT WEditFilterRuleDate : public WFilter
{
    Q_OBJECT
public:
    WEditFilterRuleDate(const WildcardConfig &config, const QString &columnId,
                        Constants::ValueSource source, const QString &dateTimeFormat, QWidget *parent);
    ~WEditFilterRuleDate() override;

    QSharedPointer<ValueFilter> getFilter(bool matchCase) override;
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                   QString &errorText) override;
    // Dates know no case.
    void setMatchCase(bool matchCase) override;

public slots:
    void compMethodChanged(int index);
    void dateTimeChanged(const QDateTime &dateTime);

private:
    // A range whose end lies before its start still filters (the ends are taken
    // in either order), but is hardly what the operator meant: the end says so.
    void updateRangeMark();

    QScopedPointer<Ui::WEditFilterRuleDate> m_ui;
};
