#pragma once

#include "FilterWidgetConfiguration.h"
#include "StructuredFilterUi.h"
#include "widgets_export.h"

#include <QScopedPointer>

class QAction;
class QLabel;
class QMenu;
class QTabWidget;
class QToolButton;
class SingleFilterTab;
class Ui_TabbedStructuredFilterUi;

// The structured filter as tabs, one rule set each, with a last "+" tab that
// adds a set. Beside the tabs: Apply, the "not applied" hint and the Filter
// menu (match case, clear or reset, save and load).
class WIDGETS_EXPORT TabbedStructuredFilterUi : public StructuredFilterUi
{
    Q_OBJECT
public:
    TabbedStructuredFilterUi(const AlarmScreenConfiguration &config, QWidget *parent);
    ~TabbedStructuredFilterUi() override;

    QList<QWidget *> getTabGroups() const override;
    void connectedSystemsChanged(const QStringList &systems) override;
    SourceAndFilter getFilter() const override;
    WFilter::FilterDisplayResult displayFilter(const SourceAndFilter &filter,
                                               StructuredFilterUi::FilterType type,
                                               QString &error) override;
    void compareWithFilter(const SourceAndFilter &filter, bool flag) override;
    void displayFilterModified(bool equal) override;
    void processNewCompletions(void *consumer,
                               const QSharedPointer<FilterCompletions> &completions) override;

    // Adds an empty include tab before the "+" tab and makes it current.
    SingleFilterTab *addFilterTab();
    // The filter tabs in tab order (the "+" tab is not one).
    QList<SingleFilterTab *> getFilterTabs() const;
    int filterTabCount() const;
    quint32 getTabCounter() const { return m_tabCounter; }

    QTabWidget *getTabWidget() const;
    QToolButton *getApplyButton() const;
    QToolButton *getFilterButton() const;
    QLabel *getNotAppliedLabel() const;

public slots:
    void tabButtonClicked(int currentIndex);
    void delFilterTab(int index);
    void delFilterTabConfirmed(int index);
    void updateTabName(SingleFilterTab *widget, QString tabName);
    void applyButtonClicked();
    void filterButtonClicked();

private:
    void addPlusTab();
    SingleFilterTab *filterTabAt(int index) const;
    void deleteAllFilterTabs();

    FilterWidgetConfiguration m_filterWidgetConfig;
    quint32 m_tabCounter = 0;
    QScopedPointer<Ui_TabbedStructuredFilterUi> m_ui;
};
