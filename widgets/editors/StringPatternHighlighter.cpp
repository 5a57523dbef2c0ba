#include "StringPatternHighlighter.h"

StringPatternHighlighter::StringPatternHighlighter(QTextDocument *parent) : QSyntaxHighlighter(parent)
{
    HighlightingRule separator;
    separator.pattern = QRegularExpression(QStringLiteral("(?<!\\\\)[;,]"));
    separator.format.setFontPointSize(11.0);
    separator.format.setForeground(QBrush(Qt::red));
    separator.format.setFontWeight(75);
    m_highlightingRules.append(separator);
}

void StringPatternHighlighter::highlightBlock(const QString &text)
{
    for (const HighlightingRule &rule : qAsConst(m_highlightingRules)) {
        QRegularExpressionMatchIterator it = rule.pattern.globalMatch(text);
        while (it.hasNext()) {
            const QRegularExpressionMatch match = it.next();
            setFormat(match.capturedStart(), match.capturedLength(), rule.format);
        }
    }
}
