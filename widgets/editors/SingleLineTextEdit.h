#pragma once

#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QTextEdit>

class QCompleter;
class WildcardConfig;

// A one-line editor of a pattern list ("a*;b?;!c"). Completion replaces the
// ";"-separated part under the cursor and opens as soon as the editor has focus:
// an empty part lists every value. Return moves on to the next widget, and pasted
// lines become parts of the list.
class WIDGETS_EXPORT SingleLineTextEdit : public QTextEdit, public MsgLoggingProducer
{
    Q_OBJECT
public:
    SingleLineTextEdit(const WildcardConfig &config, QWidget *parent = nullptr);
    ~SingleLineTextEdit() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Shows `text` without opening the value list.
    void setText(const QString &text);
    // The separator-delimited part around the cursor, selected.
    QTextCursor getPartSelection() const;
    QString getTextUnderCursor() const;

    // An empty list removes completion.
    void setCompletionStrings(const QStringList &strings);
    QCompleter *getCompleter() const { return m_completer; }
    void setMatchCase(bool matchCase);
    bool isMatchCase() const { return m_matchCase; }

    // Closes the value list; the focus navigation calls it before moving on.
    Q_INVOKABLE void hidePopup();

signals:
    void lostFocus();

private slots:
    void insertCompletion(const QString &completion);
    void cursorMoved();

protected:
    QSize viewportSizeHint() const override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
    void changeEvent(QEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;
    void focusInEvent(QFocusEvent *e) override;
    void focusOutEvent(QFocusEvent *e) override;

private:
    void displayCompleter();
    bool isKeyFromCompleter(QKeyEvent *e) const;

    QString m_separator;
    QCompleter *m_completer = nullptr;
    bool m_matchCase = false;
    bool m_settingText = false;
};
