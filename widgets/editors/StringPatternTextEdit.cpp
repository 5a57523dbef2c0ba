#include "StringPatternTextEdit.h"

#include "PatternCompleter.h"
#include "StringPatternHighlighter.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QScrollBar>

namespace {

// Typing one of these ends the word being completed.
const QString kEndOfWord = QStringLiteral("~!@#$%^&*()_+{}|:\"<>?,./;'[]\\-=");

Qt::CaseSensitivity caseRule(bool matchCase)
{
    return matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

} // namespace

StringPatternTextEdit::StringPatternTextEdit(const WildcardConfig &config, const QString &columnId,
                                             Constants::ValueSource source, QWidget *parent)
    : QTextEdit(parent), ValueFilterStringPattern(config, columnId, source, false),
      m_highlighter(new StringPatternHighlighter(document()))
{
    if (config.isEmptyPatternCharSet()) {
        setPlainText(config.getMatchAllString());
        connect(document(), &QTextDocument::contentsChanged, this,
                &StringPatternTextEdit::keepDocumentNonEmpty);
    }
}

StringPatternTextEdit::~StringPatternTextEdit() = default;

void StringPatternTextEdit::keepDocumentNonEmpty()
{
    const WildcardConfig &config = getWildcardConfig();
    if (config.isEmptyPatternCharSet() && document()->isEmpty())
        setPlainText(config.getMatchAllString());
}

bool StringPatternTextEdit::setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                                      QString &errorText)
{
    Q_UNUSED(errorText)
    const auto *pattern = dynamic_cast<const ValueFilterStringPattern *>(filter.data());
    if (!pattern)
        return false;
    const QString text = pattern->getFilterText();
    setPlainText(text);
    setMatchCase(matchCase);
    setFilterText(text);
    return true;
}

QSharedPointer<ValueFilter> StringPatternTextEdit::getFilter(bool matchCase)
{
    setMatchCase(matchCase);
    setFilterText(toPlainText());
    if (isEmpty())
        return QSharedPointer<ValueFilter>();
    // A plain value, not another widget.
    return QSharedPointer<ValueFilter>(new ValueFilterStringPattern(*this));
}

void StringPatternTextEdit::setCompleter(QCompleter *completer)
{
    if (m_completer) {
        m_completer->disconnect(this);
        m_completer->setWidget(nullptr);
        m_completer->deleteLater();
    }
    m_completer = completer;
    if (!m_completer)
        return;
    m_completer->setWidget(this);
    m_completer->setCompletionMode(QCompleter::PopupCompletion);
    m_completer->setCaseSensitivity(caseRule(isMatchCase()));
    connect(m_completer, QOverload<const QString &>::of(&QCompleter::activated), this,
            &StringPatternTextEdit::insertCompletion);
}

void StringPatternTextEdit::setCompletionStrings(const QStringList &strings)
{
    m_completionStrings = PatternCompleter::sortedValues(strings, isMatchCase());
    auto *completer = new PatternCompleter(this);
    // The model gets the sorted copy: a completer told that its model is sorted
    // looks prefixes up by bisection and misses values of an unsorted one.
    completer->setSortedValues(m_completionStrings, isMatchCase());
    setCompleter(completer);
}

void StringPatternTextEdit::setCompleterMatchCase(bool matchCase)
{
    setMatchCase(matchCase);
    if (m_completer)
        setCompletionStrings(m_completionStrings);
}

QString StringPatternTextEdit::textUnderCursor() const
{
    QTextCursor cursor = textCursor();
    cursor.select(QTextCursor::WordUnderCursor);
    return cursor.selectedText();
}

void StringPatternTextEdit::insertCompletion(const QString &completion)
{
    if (!m_completer || m_completer->widget() != this)
        return;
    QTextCursor cursor = textCursor();
    const int extra = completion.length() - m_completer->completionPrefix().length();
    cursor.movePosition(QTextCursor::Left);
    cursor.movePosition(QTextCursor::EndOfWord);
    cursor.insertText(completion.right(extra));
    setTextCursor(cursor);
}

void StringPatternTextEdit::focusInEvent(QFocusEvent *e)
{
    if (m_completer)
        m_completer->setWidget(this);
    QTextEdit::focusInEvent(e);
    emit gotFocus();
}

void StringPatternTextEdit::focusOutEvent(QFocusEvent *e)
{
    QTextEdit::focusOutEvent(e);
    emit lostFocus();
}

void StringPatternTextEdit::keyPressEvent(QKeyEvent *e)
{
    if (m_completer && m_completer->popup()->isVisible()) {
        switch (e->key()) {
        case Qt::Key_Enter:
        case Qt::Key_Return:
        case Qt::Key_Escape:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            // The completer acts on these itself.
            e->ignore();
            return;
        default:
            break;
        }
    }

    const bool isShortcut = (e->modifiers() & Qt::ControlModifier) && e->key() == Qt::Key_E;
    if (!m_completer || !isShortcut)
        QTextEdit::keyPressEvent(e);
    if (!m_completer)
        return;
    const bool ctrlOrShift = e->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    if (ctrlOrShift && e->text().isEmpty())
        return;

    const QString prefix = textUnderCursor();
    const bool hasModifier = (e->modifiers() != Qt::NoModifier) && !ctrlOrShift;
    if (!isShortcut
        && (hasModifier || e->text().isEmpty() || prefix.length() < 1 || kEndOfWord.contains(e->text().right(1)))) {
        m_completer->popup()->hide();
        return;
    }

    QAbstractItemView *popup = m_completer->popup();
    if (prefix != m_completer->completionPrefix()) {
        m_completer->setCompletionPrefix(prefix);
        popup->setCurrentIndex(m_completer->completionModel()->index(0, 0));
    }
    QRect rect = cursorRect();
    rect.setWidth(popup->sizeHintForColumn(0) + popup->verticalScrollBar()->sizeHint().width());
    m_completer->complete(rect);
}
