#pragma once

#include "WFilter.h"
#include "widgets_export.h"

#include <QColor>
#include <QScopedPointer>

class ValueFilterFixed;
namespace Ui {
class WFilterToggleButton;
}

// One toggle button that switches a fixed condition on and off. The condition is
// shared with the creator and changed in place when the operator clicks.
class WIDGETS_EXPORT WFixedFilterToggleButton : public WFilter
{
    Q_OBJECT
public:
    WFixedFilterToggleButton(const WildcardConfig &config,
                             const QSharedPointer<ValueFilterFixed> &filter, QWidget *parent);
    ~WFixedFilterToggleButton() override;

    QSharedPointer<ValueFilter> getFilter(bool matchCase) override;
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                   QString &errorText) override;
    void setMatchCase(bool matchCase) override;
    QString getColumnId() const override;
    Constants::ValueSource getSource() const override;

    void setText(const QString &text);
    void setToolTip(const QString &toolTip);
    void setTextColor(const QColor &color);

private slots:
    void buttonClicked(bool checked);

private:
    QSharedPointer<ValueFilterFixed> m_filter;
    QScopedPointer<Ui::WFilterToggleButton> m_ui;
};
