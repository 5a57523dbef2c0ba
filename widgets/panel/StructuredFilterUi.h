#pragma once

#include "ActionAccessUser.h"
#include "AlarmScreenConfiguration.h"
#include "MsgLoggingProducer.h"
#include "SourceAndFilter.h"
#include "UserSettings.h"
#include "WFilter.h"
#include "widgets_export.h"

#include <QList>
#include <QSharedPointer>
#include <QStringList>
#include <QWidget>

class CompletionSource;
class FilterCompletions;

// The editor of a structured filter: rule sets that include or exclude alarms.
// This base holds the default and basic filters and the flags every variant
// shares; variants show and edit the rule sets.
class WIDGETS_EXPORT StructuredFilterUi : public QWidget,
                                          public MsgLoggingProducer,
                                          public ActionAccessUser
{
    Q_OBJECT
public:
    // Why a filter is shown in the editor (carried by applyStructuredFilter).
    enum FilterType : qint32 {
        ApplyButtonFilter = 0, // the operator pressed Apply
        DefaultFilter = 1,     // the default filter was shown
        BasicFilter = 2        // the editor was cleared
    };
    Q_ENUM(FilterType)

    StructuredFilterUi(const AlarmScreenConfiguration &config, QWidget *parent);
    ~StructuredFilterUi() override;

    // The widgets that form keyboard-focus groups.
    virtual QList<QWidget *> getTabGroups() const = 0;
    virtual void connectedSystemsChanged(const QStringList &systems) = 0;
    virtual SourceAndFilter getFilter() const = 0;
    virtual WFilter::FilterDisplayResult displayFilter(const SourceAndFilter &filter,
                                                       StructuredFilterUi::FilterType type,
                                                       QString &error) = 0;
    virtual void compareWithFilter(const SourceAndFilter &filter, bool flag) = 0;
    virtual void displayFilterModified(bool equal) = 0;
    virtual bool isUseDefaultFilter() const;
    virtual void setUseDefaultFilter(bool use);
    virtual SourceAndFilter getDefaultFilter() const;
    virtual void setDefaultFilter(const SourceAndFilter &filter,
                                  UserSettings::DefaultFilterAction action);
    virtual bool mayApplySettings() const;
    virtual void setMayApplySettings(bool on);
    virtual void setMatchCase(bool on);
    virtual void clearFilterToBasic();
    virtual void clearFilterToDefault();
    virtual void processNewCompletions(void *consumer,
                                       const QSharedPointer<FilterCompletions> &completions) = 0;

    bool isMatchCase() const { return m_matchCase; }
    // The completion service shared with the other editors of the same
    // configuration; null when there is none.
    QSharedPointer<CompletionSource> getCompletionSource() const { return m_completionSource; }

signals:
    void structuredFilterChanged();
    void applyStructuredFilter(const SourceAndFilter &filters, int type);
    void filterActionRequested(const QString &action);

public slots:
    void completionsReady(void *consumer, const QSharedPointer<FilterCompletions> &completions);

protected:
    // Shows the default filter, logging when it cannot be shown in full.
    void displayDefaultFilter();

    AlarmScreenConfiguration m_config;
    QSharedPointer<CompletionSource> m_completionSource;
    QStringList m_connectedSystems;
    SourceAndFilter m_basicFilter;
    SourceAndFilter m_defaultFilter;
    bool m_useDefaultFilter = false;
    bool m_matchCase = false;
    bool m_mayApplySettings = false;
};
