#pragma once

#include "ValueFilterStringPattern.h"
#include "widgets_export.h"

#include <QStringList>
#include <QTextEdit>

class QCompleter;
class StringPatternHighlighter;

// A multi-line editor of a pattern list that is itself the pattern filter it
// edits. Completion works on the word under the cursor: it opens while the
// operator types a word, or on Ctrl+E even on an empty word, and closes at
// punctuation.
//
// With the configuration's empty-pattern character set, the editor can never be
// emptied: it falls back to the match-all character.
class WIDGETS_EXPORT StringPatternTextEdit : public QTextEdit, public ValueFilterStringPattern
{
    Q_OBJECT
public:
    StringPatternTextEdit(const WildcardConfig &config, const QString &columnId,
                          Constants::ValueSource source, QWidget *parent = nullptr);
    ~StringPatternTextEdit() override;

    // Shows the pattern of `filter`; false for a null filter or another kind.
    // The column is not checked: the owner does that.
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase, QString &errorText);
    // A new pattern filter with the text shown, or null when it restricts nothing.
    QSharedPointer<ValueFilter> getFilter(bool matchCase);

    // Replaces the completer (the old one is deleted later); null removes it.
    void setCompleter(QCompleter *completer);
    QCompleter *getCompleter() const { return m_completer; }
    void setCompletionStrings(const QStringList &strings);
    // Changes the case rule of the pattern and rebuilds the completer with it.
    void setCompleterMatchCase(bool matchCase);

signals:
    void gotFocus();
    void lostFocus();

private slots:
    void insertCompletion(const QString &completion);
    void keepDocumentNonEmpty();

protected:
    void keyPressEvent(QKeyEvent *e) override;
    void focusInEvent(QFocusEvent *e) override;
    void focusOutEvent(QFocusEvent *e) override;

private:
    QString textUnderCursor() const;

    QStringList m_completionStrings;
    QCompleter *m_completer = nullptr;
    StringPatternHighlighter *m_highlighter = nullptr;
};
