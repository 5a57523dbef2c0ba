#include "TextRuleTableEditor.h"

TextRuleTableEditor::TextRuleTableEditor(const WildcardConfig &config, const QString &columnId,
                                         Constants::ValueSource source, QWidget *parent)
    : WEditFilterRuleText(config, columnId, source, parent)
{
}

TextRuleTableEditor::~TextRuleTableEditor() = default;

void TextRuleTableEditor::setMatchCase(bool matchCase)
{
    Q_UNUSED(matchCase)
}
