#pragma once

#include "widgets_export.h"

#include <QRegularExpression>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>
#include <QVector>

class QTextDocument;

// Shows the separators of a pattern list (";" and ",") bold and red, so that the
// operator sees where one pattern ends. A separator escaped with a backslash is
// part of a pattern and stays plain.
class WIDGETS_EXPORT StringPatternHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT
public:
    explicit StringPatternHighlighter(QTextDocument *parent);

protected:
    void highlightBlock(const QString &text) override;

private:
    struct HighlightingRule
    {
        QRegularExpression pattern;
        QTextCharFormat format;
    };
    QVector<HighlightingRule> m_highlightingRules;
};
