#pragma once

#include "WEditFilterRuleText.h"

// The text rule table as the standard panel's pages use it. The case rule
// reaches the rules through getFilter(), so there is nothing to keep here.
class TextRuleTableEditor : public WEditFilterRuleText
{
    Q_OBJECT
public:
    TextRuleTableEditor(const WildcardConfig &config, const QString &columnId, Constants::ValueSource source,
                        QWidget *parent);
    ~TextRuleTableEditor() override;

    void setMatchCase(bool matchCase) override;
};
