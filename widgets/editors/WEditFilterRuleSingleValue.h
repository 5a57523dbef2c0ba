#pragma once

#include "WFilter.h"
#include "widgets_export.h"

#include <QList>
#include <QPair>
#include <QScopedPointer>
#include <QVariant>

namespace Ui {
class WEditFilterRuleSelectText;
}

// One value chosen from a list. Item 0 stands for no filter; the other items
// carry their filter value in Qt::UserRole where they have one. The completion
// service may replace the list at any time.
class WIDGETS_EXPORT WEditFilterRuleSingleValue : public WFilter
{
    Q_OBJECT
public:
    WEditFilterRuleSingleValue(const WildcardConfig &config, const QString &columnId,
                               Constants::ValueSource source, QWidget *parent);
    // Items with a text only: choosing one gives no value to filter by.
    WEditFilterRuleSingleValue(const WildcardConfig &config, const QString &columnId,
                               Constants::ValueSource source, const QStringList &values,
                               QWidget *parent);
    // One item per pair: the text shown and the value filtered by.
    WEditFilterRuleSingleValue(const WildcardConfig &config, const QString &columnId,
                               Constants::ValueSource source,
                               const QList<QPair<QString, QVariant>> &values, QWidget *parent);
    ~WEditFilterRuleSingleValue() override;

    QSharedPointer<ValueFilter> getFilter(bool matchCase) override;
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                   QString &errorText) override;
    void setMatchCase(bool matchCase) override;
    // Rebuilds the list from the strings; the chosen value stays chosen while it
    // is still offered.
    void setCompletionStrings(const QStringList &strings) override;

    // The text of item 0: the match-all character in "never empty" mode,
    // otherwise nothing.
    QString labelForFirsListItem() const;

public slots:
    void filterItemSelected(int index);

private:
    void setUpForm();
    void startList();

    QScopedPointer<Ui::WEditFilterRuleSelectText> m_ui;
};
