#include "SingleLineTextEdit.h"

#include "PatternCompleter.h"
#include "StringPatternHighlighter.h"
#include "WildcardConfig.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QStringListModel>
#include <QTextBlock>

namespace {

QString address(const void *p)
{
    return QStringLiteral("0x%1").arg(quintptr(p), 0, 16);
}

} // namespace

SingleLineTextEdit::SingleLineTextEdit(const WildcardConfig &config, QWidget *parent)
    : QTextEdit(parent), MsgLoggingProducer(&config), m_separator(QStringLiteral(";"))
{
    new StringPatternHighlighter(document());
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setLineWrapMode(QTextEdit::NoWrap);
    setAcceptRichText(false);
    setAutoFormatting(QTextEdit::AutoNone);
    setTabChangesFocus(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMaximumHeight(minimumSizeHint().height());
    if (config.isEmptyPatternCharSet())
        setPlaceholderText(config.getMatchAllString());
    connect(this, &QTextEdit::cursorPositionChanged, this, &SingleLineTextEdit::cursorMoved);
}

SingleLineTextEdit::~SingleLineTextEdit() = default;

QSize SingleLineTextEdit::sizeHint() const
{
    ensurePolished();
    const QFontMetrics fm(font());
    const int m = 2 * int(document()->documentMargin());
    const int f = frameWidth();
    return QSize(17 * fm.horizontalAdvance(QLatin1Char('x')) + m + f, qMax(fm.height(), 14) + m + f);
}

QSize SingleLineTextEdit::minimumSizeHint() const
{
    ensurePolished();
    const QFontMetrics fm(font());
    const int m = 2 * int(document()->documentMargin());
    const int f = frameWidth();
    return QSize(m + fm.maxWidth() + f, fm.height() + qMax(fm.leading(), m) + f);
}

QSize SingleLineTextEdit::viewportSizeHint() const
{
    return sizeHint();
}

void SingleLineTextEdit::changeEvent(QEvent *e)
{
    QTextEdit::changeEvent(e);
    if (e->type() == QEvent::StyleChange || e->type() == QEvent::FontChange) {
        setMaximumHeight(minimumSizeHint().height());
        updateGeometry();
    }
}

bool SingleLineTextEdit::canInsertFromMimeData(const QMimeData *source) const
{
    return source->hasText();
}

void SingleLineTextEdit::insertFromMimeData(const QMimeData *source)
{
    // A pasted column of values becomes a list of patterns.
    QString text = source->text();
    text.replace(QLatin1Char('\n'), m_separator);
    insertPlainText(text);
}

void SingleLineTextEdit::setText(const QString &text)
{
    m_settingText = true;
    setPlainText(text);
    m_settingText = false;
}

QTextCursor SingleLineTextEdit::getPartSelection() const
{
    QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    const QString text = block.text();
    const int p = cursor.positionInBlock();
    const int start = p < 1 ? -1 : text.lastIndexOf(m_separator, p < text.length() ? p - 1 : -1);
    int end = text.indexOf(m_separator, p);
    if (end < 0)
        end = text.length();
    cursor.setPosition(block.position() + start + 1);
    cursor.setPosition(block.position() + end, QTextCursor::KeepAnchor);
    return cursor;
}

QString SingleLineTextEdit::getTextUnderCursor() const
{
    return getPartSelection().selectedText();
}

void SingleLineTextEdit::insertCompletion(const QString &completion)
{
    if (!m_completer || m_completer->widget() != this)
        return;
    QTextCursor cursor = getPartSelection();
    cursor.insertText(completion + m_separator);
    setTextCursor(cursor);
}

void SingleLineTextEdit::displayCompleter()
{
    if (!m_completer)
        return;
    const QString prefix = getTextUnderCursor();
    ASLOG(this, MsgLoggerEnums::Trace, QStringLiteral("part under cursor: ") + prefix);
    QAbstractItemView *popup = m_completer->popup();
    if (prefix != m_completer->completionPrefix()) {
        m_completer->setCompletionPrefix(prefix);
        popup->setCurrentIndex(m_completer->completionModel()->index(0, 0));
    }
    QRect rect = cursorRect();
    rect.setWidth(popup->sizeHintForColumn(0) + popup->verticalScrollBar()->sizeHint().width());
    m_completer->complete(rect);
}

void SingleLineTextEdit::cursorMoved()
{
    if (m_completer && !m_settingText)
        displayCompleter();
}

bool SingleLineTextEdit::isKeyFromCompleter(QKeyEvent *e) const
{
    if (!m_completer || !m_completer->popup()->isVisible())
        return false;
    switch (e->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        e->ignore();
        return true;
    default:
        return false;
    }
}

void SingleLineTextEdit::keyPressEvent(QKeyEvent *e)
{
    if (isKeyFromCompleter(e))
        return;
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
        e->accept();
        const bool moved = focusNextPrevChild(true);
        ASLOG(this, MsgLoggerEnums::Trace,
              QStringLiteral("focusNextPrevChild() returned ") + (moved ? QStringLiteral("true") : QStringLiteral("false")));
        return;
    }
    QTextEdit::keyPressEvent(e);
    if (m_completer)
        displayCompleter();
}

void SingleLineTextEdit::focusInEvent(QFocusEvent *e)
{
    ASLOG(this, MsgLoggerEnums::Trace, address(this));
    QTextEdit::focusInEvent(e);
    if (m_completer) {
        m_completer->setWidget(this);
        // An operator walking the form with Tab passes through: an opened list
        // would take the next Tab to complete instead of moving on.
        const bool walking = e->reason() == Qt::TabFocusReason || e->reason() == Qt::BacktabFocusReason;
        if (!walking)
            displayCompleter();
    }
}

void SingleLineTextEdit::focusOutEvent(QFocusEvent *e)
{
    ASLOG(this, MsgLoggerEnums::Trace, address(this));
    if (e->reason() != Qt::PopupFocusReason)
        emit lostFocus();
    hidePopup();
    QTextEdit::focusOutEvent(e);
}

void SingleLineTextEdit::setCompletionStrings(const QStringList &strings)
{
    if (strings.isEmpty()) {
        if (m_completer) {
            m_completer->setWidget(nullptr);
            m_completer->deleteLater();
            m_completer = nullptr;
        }
        return;
    }
    auto *completer = qobject_cast<PatternCompleter *>(m_completer);
    if (!completer) {
        completer = new PatternCompleter(this);
        completer->setWidget(this);
        connect(completer, QOverload<const QString &>::of(&QCompleter::activated), this,
                &SingleLineTextEdit::insertCompletion);
        m_completer = completer;
    }
    completer->setValues(strings, m_matchCase);
}

void SingleLineTextEdit::setMatchCase(bool matchCase)
{
    m_matchCase = matchCase;
    if (!m_completer)
        return;
    if (const auto *model = qobject_cast<QStringListModel *>(m_completer->model()))
        setCompletionStrings(model->stringList());
}

void SingleLineTextEdit::hidePopup()
{
    if (m_completer)
        m_completer->popup()->hide();
}
