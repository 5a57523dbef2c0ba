#pragma once

#include "ValueFilterNumbers.h"
#include "WFilter.h"
#include "widgets_export.h"

#include <QRegularExpression>
#include <QScopedPointer>

namespace Ui {
class WEditFilterRuleNumbers;
}

// A line of number rules ("5; >10; 10-20; !1-2"). The editor is itself the
// number filter it edits: the operator's text is parsed on every keystroke, and
// the line's tool tip tells what was understood and what was not.
class WIDGETS_EXPORT WEditFilterRuleNumbers : public WFilter, public ValueFilterNumbers
{
    Q_OBJECT
public:
    // The syntax of one rule (the filter part's own): groups 1 negation,
    // 2 comparison, 3 first number, 4 the range's second number.
    static const QRegularExpression re;
    static const QString toolTipBlank;

    using WFilter::getSource;

    WEditFilterRuleNumbers(const WildcardConfig &config, const QString &columnId,
                           Constants::ValueSource source, QWidget *parent);
    ~WEditFilterRuleNumbers() override;

    // Null while no rule is understood; otherwise a copy of the parsed rules.
    QSharedPointer<ValueFilter> getFilter(bool matchCase) override;
    // Shows the filter's text and reparses it; announces the change, but keeps
    // the tool tip closed.
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                   QString &errorText) override;
    // Numbers know no case.
    void setMatchCase(bool matchCase) override;

    void parseFilterString(const QString &text, bool showFeedback);
    void setFeedback(bool show);

public slots:
    void parseInput(const QString &text);

private:
    QScopedPointer<Ui::WEditFilterRuleNumbers> m_ui;
};
