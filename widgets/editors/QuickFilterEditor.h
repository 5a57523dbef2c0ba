#pragma once

#include "MsgLoggingProducer.h"
#include "QuickCellFilter.h"
#include "widgets_export.h"

#include <QColor>
#include <QLineEdit>

class QuickFilterOptions;
class WildcardConfig;

// The one-line filter above the alarm table. The background tells the operator
// the state of the edit: normal when it is the filter in force, light yellow when
// it differs from it, light red when the pattern does not parse. A finished edit
// (Return, focus loss or the clear button) reports the filter; an invalid
// pattern is never reported.
//
// Closing or destroying the window takes the focus away and so finishes the
// edit too: an owner whose slot receives the report destroys the panel (or
// disconnects it) in its own destructor, before its members go.
class WIDGETS_EXPORT QuickFilterEditor : public QLineEdit, public MsgLoggingProducer
{
    Q_OBJECT
public:
    explicit QuickFilterEditor(QWidget *parent = nullptr);
    ~QuickFilterEditor() override;

    // The filter now in force: shown as not modified, the cursor after the text.
    void setAppliedFilter(const QuickCellFilter &filter);
    // Empties the editor and takes the empty filter as the one in force.
    void clear();
    void setWildcardConfig(const WildcardConfig &config);

    const QuickCellFilter &getEditedFilter() const { return m_editedFilter; }
    const QuickCellFilter &getAppliedFilter() const { return m_appliedFilter; }
    QuickFilterOptions *getOptions() const { return m_options; }

signals:
    void filterModified(const QuickCellFilter &filter);

public slots:
    void newText(const QString &text);
    void openSetup();
    void matchCaseChanged(int checkState);
    void matchFullColumnChanged(int checkState);
    void modeChanged(int mode);
    void textEditingFinished();

private slots:
    void clearButtonTriggered();

private:
    bool validateString(const QString &text);
    void compareFilters();
    void setBackground(const QColor &color);
    void restorePalette();

    QuickCellFilter m_editedFilter;
    QuickCellFilter m_appliedFilter;
    QuickFilterOptions *m_options = nullptr;
    QColor m_errorColor;
};
