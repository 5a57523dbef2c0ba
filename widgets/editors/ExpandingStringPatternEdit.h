#pragma once

#include "WFilter.h"

class QVBoxLayout;
class StringPatternTextEdit;

// A pattern editor of a structured filter tab that takes one line in the tab but
// opens a larger copy of itself in a pop-up as soon as the text needs more
// height. Both editors edit one document, so what the operator types in the
// pop-up is the inline editor's text when the pop-up closes.
class WIDGETS_EXPORT ExpandingStringPatternEdit : public WFilter
{
    Q_OBJECT
public:
    ExpandingStringPatternEdit(const WildcardConfig &config, const QString &columnId,
                               Constants::ValueSource source, QWidget *parent = nullptr);
    ~ExpandingStringPatternEdit() override;

    QSharedPointer<ValueFilter> getFilter(bool matchCase) override;
    // Loading a filter never opens the pop-up.
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase, QString &errorText) override;
    void setMatchCase(bool matchCase) override;
    void setCompletionStrings(const QStringList &strings) override;

    // The only limit on the pop-up's growth.
    void setMaximumExpandedSize(const QSize &size);
    StringPatternTextEdit *getPatternTextEdit() const { return m_edit; }
    // The editor inside the pop-up and the pop-up itself.
    StringPatternTextEdit *getPopupTextEdit() const { return m_popupEdit; }
    QWidget *getPopup() const { return m_popup; }

protected:
    void resizeEvent(QResizeEvent *e) override;

private slots:
    void showPopupIfNotVisible();
    void filterDocChanged();

private:
    StringPatternTextEdit *m_edit;
    QVBoxLayout *m_layout;
    QWidget *m_popup;
    StringPatternTextEdit *m_popupEdit;
    QVBoxLayout *m_popupLayout;
    bool m_matchCase = false;
    bool m_ignoreNextChange = false;
};
