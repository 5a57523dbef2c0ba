#include "StringPatternEditor.h"

#include "SingleLineTextEdit.h"
#include "ValueFilterStringPattern.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

StringPatternEditor::StringPatternEditor(const WildcardConfig &config, const QString &columnId,
                                         Constants::ValueSource source, QWidget *parent)
    : WFilter(config, columnId, source, parent), m_edit(new SingleLineTextEdit(config, this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_edit->setObjectName(QStringLiteral("text_%1").arg(columnId));
    layout->addWidget(m_edit);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(m_edit, &SingleLineTextEdit::lostFocus, this, &StringPatternEditor::filterDocChanged);
    connect(m_edit, &QTextEdit::textChanged, this, &WFilter::filterChanged);
}

StringPatternEditor::~StringPatternEditor() = default;

QSize StringPatternEditor::sizeHint() const
{
    return m_edit->sizeHint();
}

QSize StringPatternEditor::minimumSizeHint() const
{
    return m_edit->minimumSizeHint();
}

void StringPatternEditor::setCompletionStrings(const QStringList &strings)
{
    m_edit->setCompletionStrings(strings);
}

void StringPatternEditor::setMatchCase(bool matchCase)
{
    if (m_edit->isMatchCase() != matchCase)
        m_edit->setMatchCase(matchCase);
}

bool StringPatternEditor::setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                                    QString &errorText)
{
    if (!isPropertyMatch(filter, errorText))
        return false;
    const auto *pattern = dynamic_cast<const ValueFilterStringPattern *>(filter.data());
    if (!pattern)
        return false;
    {
        // Loading is not an edit of the operator's: the tab must not see a change.
        const QSignalBlocker blocker(m_edit);
        m_edit->setText(pattern->getFilterText());
    }
    setMatchCase(matchCase);
    return true;
}

QSharedPointer<ValueFilter> StringPatternEditor::getFilter(bool matchCase)
{
    setMatchCase(matchCase);
    QSharedPointer<ValueFilterStringPattern> filter(
        new ValueFilterStringPattern(m_wildcardConfig, getColumnId(), getSource(), matchCase));
    filter->setFilterText(m_edit->toPlainText());
    if (filter->isEmpty())
        return QSharedPointer<ValueFilter>();
    return filter;
}

void StringPatternEditor::filterDocChanged()
{
    emit filterTextChanged(getColumnId(), m_edit->toPlainText());
}
