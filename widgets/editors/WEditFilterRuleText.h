#pragma once

#include "WFilter.h"
#include "widgets_export.h"

#include <QScopedPointer>
#include <QStringList>

class QToolButton;
class ValueFilterText;
class ValueFilterTextItem;
namespace Ui {
class WEditFilterRuleText;
}

// The text filter of one alarm property as a table of rules, one per row: the
// pattern (column 0), how it is matched (column 1, a tool button whose property
// "selectedIndex" holds the method: 0 exact, 1 wildcard, 2 regular expression)
// and whether the rule excludes (column 2, a checkable button). The rows are the
// editor's whole state; the matching itself is ValueFilterText's.
//
// setMatchCase() is left to the subclass that a page instantiates: the case
// rule reaches the filter through getFilter()'s argument.
class WIDGETS_EXPORT WEditFilterRuleText : public WFilter
{
    Q_OBJECT
public:
    WEditFilterRuleText(const WildcardConfig &config, const QString &columnId,
                        Constants::ValueSource source, QWidget *parent);
    ~WEditFilterRuleText() override;

    // Null for an empty table, and null as soon as one row is not a valid rule
    // (that row is marked so that the operator sees which one).
    QSharedPointer<ValueFilter> getFilter(bool matchCase) override;
    // Rebuilds the rows from a ValueFilterText, announcing each loaded rule.
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                   QString &errorText) override;

    // A new match-method button showing the default method; the table takes it.
    QToolButton *createToolButton();

public slots:
    void addRule(bool checked);
    void deleteRules(bool checked);
    // Move the selected rule one row up or down. The order of the rules does not
    // change what passes, but it is the order the operator reads and saves.
    void moveRuleUp(bool checked);
    void moveRuleDown(bool checked);
    void selectionChanged();
    void cellDataChanged(int row, int column);
    void ruleMatchMethodChanged(bool checked);
    bool addFilterOfRow(int row, ValueFilterText *filter);
    bool addRowOfFilter(const ValueFilterTextItem &item);

private:
    // Checks one row against the filter's own rules and shows the outcome on its
    // pattern cell: an empty error clears the mark.
    void validateRow(int row);
    void markRow(int row, const QString &error);
    void moveRule(int offset);
    void swapRows(int first, int second);

    QScopedPointer<Ui::WEditFilterRuleText> m_ui;
    QStringList m_methodShortNames;
    int m_defaultMethod;
};
