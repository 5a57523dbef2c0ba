#include "ExpandingStringPatternEdit.h"

#include "PatternCompleter.h"
#include "StringPatternTextEdit.h"

#include <QAbstractTextDocumentLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

ExpandingStringPatternEdit::ExpandingStringPatternEdit(const WildcardConfig &config, const QString &columnId,
                                                       Constants::ValueSource source, QWidget *parent)
    : WFilter(config, columnId, source, parent),
      m_edit(new StringPatternTextEdit(config, columnId, source, this)), m_layout(new QVBoxLayout(this)),
      m_popup(new QWidget(this, Qt::Popup)),
      m_popupEdit(new StringPatternTextEdit(config, columnId, source, m_popup)),
      m_popupLayout(new QVBoxLayout(m_popup))
{
    m_edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_edit);
    m_popupLayout->setContentsMargins(0, 0, 0, 0);
    m_popupLayout->addWidget(m_popupEdit);

    connect(m_edit->document(), &QTextDocument::contentsChanged, this,
            &ExpandingStringPatternEdit::showPopupIfNotVisible);
    connect(m_edit, &StringPatternTextEdit::lostFocus, this, &ExpandingStringPatternEdit::filterDocChanged);
    connect(m_edit, &StringPatternTextEdit::gotFocus, this, &ExpandingStringPatternEdit::showPopupIfNotVisible);
    connect(m_edit, &QTextEdit::textChanged, this, &WFilter::filterChanged);
    // The edit may end in the pop-up: its text is reported when the pop-up closes too.
    connect(m_popupEdit, &StringPatternTextEdit::lostFocus, this, &ExpandingStringPatternEdit::filterDocChanged);
}

ExpandingStringPatternEdit::~ExpandingStringPatternEdit() = default;

void ExpandingStringPatternEdit::resizeEvent(QResizeEvent *e)
{
    WFilter::resizeEvent(e);
    if (m_popupEdit->document() == m_edit->document())
        return;
    m_popup->resize(m_edit->size());
    m_popupEdit->resize(m_edit->size());
    m_popupEdit->setDocument(m_edit->document());
}

void ExpandingStringPatternEdit::showPopupIfNotVisible()
{
    const QTextDocument *doc = m_edit->document();
    const QSizeF docSize = doc->documentLayout()->documentSize();
    ASLOG(this, MsgLoggerEnums::Trace,
          QStringLiteral(" column %1: document '%2' size is %3 x %4, ignore: %5")
              .arg(getColumnId(), doc->toRawText())
              .arg(qRound(docSize.width()))
              .arg(qRound(docSize.height()))
              .arg(m_ignoreNextChange ? 1 : 0));
    if (m_ignoreNextChange) {
        m_ignoreNextChange = false;
        return;
    }
    const int h = qRound(docSize.height());
    if (m_edit->height() >= h)
        return;
    m_popup->resize(m_edit->width(), h);
    if (!m_popup->isVisible()) {
        m_popup->move(m_edit->mapToGlobal(QPoint(0, 0)));
        m_popup->show();
        m_popupEdit->setFocus(Qt::OtherFocusReason);
    }
}

void ExpandingStringPatternEdit::setMaximumExpandedSize(const QSize &size)
{
    m_popup->setMaximumSize(size);
}

bool ExpandingStringPatternEdit::setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                                           QString &errorText)
{
    if (!isPropertyMatch(filter, errorText))
        return false;
    m_ignoreNextChange = true;
    setMatchCase(matchCase);
    bool done = false;
    {
        // Loading is not an edit of the operator's: the tab must not see a change.
        const QSignalBlocker blocker(m_edit);
        done = m_edit->setFilter(filter, matchCase, errorText);
    }
    // Whether or not the document announced the load, the next change is the
    // operator's again.
    m_ignoreNextChange = false;
    return done;
}

void ExpandingStringPatternEdit::setMatchCase(bool matchCase)
{
    if (matchCase == m_matchCase)
        return;
    m_matchCase = matchCase;
    m_edit->setCompleterMatchCase(matchCase);
    m_popupEdit->setCompleterMatchCase(matchCase);
}

void ExpandingStringPatternEdit::setCompletionStrings(const QStringList &strings)
{
    const QStringList sorted = PatternCompleter::sortedValues(strings, m_matchCase);
    m_edit->setCompletionStrings(sorted);
    m_popupEdit->setCompletionStrings(sorted);
}

QSharedPointer<ValueFilter> ExpandingStringPatternEdit::getFilter(bool matchCase)
{
    return m_edit->getFilter(matchCase);
}

void ExpandingStringPatternEdit::filterDocChanged()
{
    emit filterTextChanged(getColumnId(), m_edit->toPlainText());
}
