#pragma once

#include "Constants.h"
#include "MsgLoggingProducer.h"
#include "WildcardConfig.h"
#include "widgets_export.h"

#include <QSharedPointer>
#include <QStringList>
#include <QWidget>

class ValueFilter;

// The editor of the filter of one alarm property in a structured filter tab. The
// pair column id + value source identifies the editor; the tabs find editors
// among their descendants and pick one for each value filter by that pair.
class WIDGETS_EXPORT WFilter : public QWidget, public MsgLoggingProducer
{
    Q_OBJECT
public:
    // How much of a rule set could be shown in a tab's editors.
    enum FilterDisplayResult : qint32 {
        AllDisplayed = 0,
        PartlyDisplayed = 1,
        NoneDisplayed = 2,
        DisplayFailed = 3
    };
    Q_ENUM(FilterDisplayResult)

    WFilter(const WildcardConfig &config, const QString &columnId, Constants::ValueSource source,
            QWidget *parent);
    ~WFilter() override;

    // A new filter from what the operator entered, or null when it restricts nothing.
    virtual QSharedPointer<ValueFilter> getFilter(bool matchCase) = 0;
    // Shows `filter`; false when it is not this editor's (with `errorText` saying why
    // where the property does not match). Never emits filterChanged().
    virtual bool setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                           QString &errorText) = 0;
    virtual void setMatchCase(bool matchCase) = 0;
    virtual void setCompletionStrings(const QStringList &strings);
    virtual QString getColumnId() const;
    // An editor that is also a value filter has a second getSource(), the filter
    // part's, with the same answer; `using WFilter::getSource;` in that editor
    // lets its own code call it unqualified.
    virtual Constants::ValueSource getSource() const;

    // Whether `filter` is for this editor's property and source; if not,
    // `errorText` says why.
    bool isPropertyMatch(const QSharedPointer<ValueFilter> &filter, QString &errorText) const;

signals:
    void filterTextChanged(const QString &propName, const QString &filterText);
    void filterChanged();

protected:
    // Editors build their filters with it and may replace it. An editor that is
    // also a value filter (it derives from a ValueFilter kind) reads the filter
    // part's copy through getWildcardConfig(), the only accessor of that name.
    WildcardConfig m_wildcardConfig;

private:
    QString m_columnId;
    Constants::ValueSource m_source;
};
