#pragma once

#include "FilterRuleSet.h"
#include "MsgLoggingProducer.h"
#include "WFilter.h"
#include "widgets_export.h"

#include <QMap>
#include <QScopedPointer>
#include <QSharedPointer>
#include <QStringList>
#include <QWidget>

class AlarmScreenConfiguration;
class CompletionSource;
class FilterCompletions;
class QRadioButton;
class Ui_SingleFilterTab;

// One rule set of the tabbed structured filter: include or exclude, and a page
// of rule editors (one per filterable alarm property) built by the panel
// factory, so that the panel plug-in decides which editor edits what.
class WIDGETS_EXPORT SingleFilterTab : public QWidget, public MsgLoggingProducer
{
    Q_OBJECT
public:
    SingleFilterTab(const MsgLoggingProducer *logger, quint32 number, QWidget *parent);
    ~SingleFilterTab() override;

    // Builds the page of editors; `names` receives the properties whose editors
    // take completion values. Without a page the tab stays empty and gives an
    // empty rule set.
    void configure(const AlarmScreenConfiguration &config,
                   const QSharedPointer<CompletionSource> &completionSource, QStringList &names);

    quint32 getNumber() const { return m_number; }
    // "Filter #<number>: Include" or "... Exclude".
    QString getName() const;
    bool isInclude() const;
    QWidget *getPage() const { return m_page; }

    FilterRuleSet getFilterSet(bool matchCase) const;
    // Shows `ruleSet` in the editors: every value filter goes to the first
    // editor of its property and kind; those without one are logged and left
    // out. An editor's refusal stops the display with `error` set.
    WFilter::FilterDisplayResult displayRuleSet(const FilterRuleSet &ruleSet, bool matchCase,
                                                QString &error);
    // Hands the values of one property to its editors and, from then on,
    // reports their text to the completion service so that dependent
    // completions can follow.
    void completionsReady(const QSharedPointer<FilterCompletions> &completions,
                          const QStringList &systems);

    QRadioButton *getIncludeButton() const;
    QRadioButton *getExcludeButton() const;

signals:
    void newName(SingleFilterTab *widget, QString tabName);
    void filterChanged();

public slots:
    void exclusivityChanged();
    void filterTextChanged(const QString &propName, const QString &filterValue);

private:
    QList<WFilter *> editors() const;

    quint32 m_number;
    QScopedPointer<Ui_SingleFilterTab> m_ui;
    QSharedPointer<CompletionSource> m_completionSource;
    QMap<QString, QString> m_filterValues;
    QWidget *m_page = nullptr;
};
