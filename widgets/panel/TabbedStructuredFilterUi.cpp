#include "TabbedStructuredFilterUi.h"

#include "AlarmScreenConfiguration.h"
#include "CompletionSource.h"
#include "EwoActions.h"
#include "FilterRuleContainer.h"
#include "SingleFilterTab.h"
#include "ui_TabbedStructuredFilterUi.h"

#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QStyle>
#include <QTabBar>

namespace {

const QString MatchCaseAction = QStringLiteral("Match case");
const QString ClearAction = QStringLiteral("Clear");

} // namespace

TabbedStructuredFilterUi::TabbedStructuredFilterUi(const AlarmScreenConfiguration &config, QWidget *parent)
    : StructuredFilterUi(config, parent), m_filterWidgetConfig(config.getFilterWidgetConfig()),
      m_ui(new Ui_TabbedStructuredFilterUi)
{
    m_ui->setupUi(this);
    m_ui->applyButton->setIcon(style()->standardIcon(QStyle::SP_DialogApplyButton));
    connect(m_ui->applyButton, &QToolButton::clicked, this, &TabbedStructuredFilterUi::applyButtonClicked);
    connect(m_ui->filterButton, &QToolButton::clicked, this, &TabbedStructuredFilterUi::filterButtonClicked);
    // The hint keeps its room while hidden: the column must not grow when it
    // appears (the editor may sit in a section of fixed height).
    QSizePolicy hintPolicy = m_ui->notAppliedLabel->sizePolicy();
    hintPolicy.setRetainSizeWhenHidden(true);
    m_ui->notAppliedLabel->setSizePolicy(hintPolicy);
    m_ui->notAppliedLabel->hide();
    addPlusTab();
    connect(m_ui->filterTabs, &QTabWidget::tabBarClicked, this, &TabbedStructuredFilterUi::tabButtonClicked);
    connect(m_ui->filterTabs, &QTabWidget::tabCloseRequested, this, &TabbedStructuredFilterUi::delFilterTab);
    // The click on "+" reaches the tab bar after the new tab is in place: the
    // bar must not then show the empty "+" page instead of the new tab.
    connect(m_ui->filterTabs, &QTabWidget::currentChanged, this, [this](int index) {
        if (index == m_ui->filterTabs->count() - 1 && filterTabCount() > 0)
            m_ui->filterTabs->setCurrentIndex(index - 1);
    });
}

TabbedStructuredFilterUi::~TabbedStructuredFilterUi() = default;

void TabbedStructuredFilterUi::addPlusTab()
{
    QTabWidget *tabs = m_ui->filterTabs;
    const int index = tabs->addTab(new QLabel(tabs), QIcon(QStringLiteral(":/vesk/icons/plus.png")), QString());
    tabs->setTabToolTip(index, tr("Add filter set"));
    // The "+" tab is not a filter: nothing to close there.
    for (QTabBar::ButtonPosition side : {QTabBar::LeftSide, QTabBar::RightSide}) {
        if (QWidget *button = tabs->tabBar()->tabButton(index, side))
            button->resize(0, 0);
    }
}

QTabWidget *TabbedStructuredFilterUi::getTabWidget() const
{
    return m_ui->filterTabs;
}

QToolButton *TabbedStructuredFilterUi::getApplyButton() const
{
    return m_ui->applyButton;
}

QToolButton *TabbedStructuredFilterUi::getFilterButton() const
{
    return m_ui->filterButton;
}

QLabel *TabbedStructuredFilterUi::getNotAppliedLabel() const
{
    return m_ui->notAppliedLabel;
}

int TabbedStructuredFilterUi::filterTabCount() const
{
    return m_ui->filterTabs->count() - 1;
}

SingleFilterTab *TabbedStructuredFilterUi::filterTabAt(int index) const
{
    if (index < 0 || index >= filterTabCount())
        return nullptr;
    return qobject_cast<SingleFilterTab *>(m_ui->filterTabs->widget(index));
}

QList<SingleFilterTab *> TabbedStructuredFilterUi::getFilterTabs() const
{
    QList<SingleFilterTab *> result;
    for (int i = 0; i < filterTabCount(); ++i) {
        if (SingleFilterTab *tab = filterTabAt(i))
            result.append(tab);
    }
    return result;
}

QList<QWidget *> TabbedStructuredFilterUi::getTabGroups() const
{
    return {m_ui->filterTabs, m_ui->buttonColumn};
}

void TabbedStructuredFilterUi::tabButtonClicked(int currentIndex)
{
    if (currentIndex == m_ui->filterTabs->count() - 1)
        addFilterTab();
}

SingleFilterTab *TabbedStructuredFilterUi::addFilterTab()
{
    ++m_tabCounter;
    auto *tab = new SingleFilterTab(this, m_tabCounter, this);
    QStringList names;
    tab->configure(m_config, m_completionSource, names);
    connect(tab, &SingleFilterTab::newName, this, &TabbedStructuredFilterUi::updateTabName);
    connect(tab, &SingleFilterTab::filterChanged, this, &StructuredFilterUi::structuredFilterChanged);
    QTabWidget *tabs = m_ui->filterTabs;
    const int index = tabs->insertTab(tabs->count() - 1, tab, tab->getName());
    tabs->setCurrentIndex(index);
    if (m_completionSource) {
        for (const QString &name : qAsConst(names))
            m_completionSource->requestCompletions(tab, name, m_connectedSystems);
    }
    emit structuredFilterChanged();
    return tab;
}

void TabbedStructuredFilterUi::delFilterTab(int index)
{
    if (!filterTabAt(index))
        return;
    const QMessageBox::StandardButton answer = QMessageBox::question(
        this, tr("Delete Filter?"),
        tr("Are you sure you want to delete '%1'?\n\nThis action cannot be undone.")
            .arg(m_ui->filterTabs->tabText(index)),
        QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::Yes)
        delFilterTabConfirmed(index);
}

void TabbedStructuredFilterUi::delFilterTabConfirmed(int index)
{
    SingleFilterTab *tab = filterTabAt(index);
    if (!tab)
        return;
    disconnect(tab, &SingleFilterTab::newName, this, &TabbedStructuredFilterUi::updateTabName);
    if (tab->getNumber() == m_tabCounter)
        --m_tabCounter;
    QTabWidget *tabs = m_ui->filterTabs;
    const bool wasLast = index == tabs->count() - 2;
    tabs->removeTab(index);
    // A removed page would otherwise stay behind, hidden, until the editor goes.
    tab->deleteLater();
    if (wasLast && filterTabCount() > 0)
        tabs->setCurrentIndex(filterTabCount() - 1);
    emit structuredFilterChanged();
}

void TabbedStructuredFilterUi::updateTabName(SingleFilterTab *widget, QString tabName)
{
    const int index = m_ui->filterTabs->indexOf(widget);
    if (index >= 0)
        m_ui->filterTabs->setTabText(index, tabName);
    emit structuredFilterChanged();
}

SourceAndFilter TabbedStructuredFilterUi::getFilter() const
{
    QList<FilterRuleSet> ruleSets;
    for (SingleFilterTab *tab : getFilterTabs())
        ruleSets.append(tab->getFilterSet(m_matchCase));
    SourceAndFilter result(this);
    result.setFilterContainer(
        QSharedPointer<FilterRuleContainer>::create(WildcardConfig(this), ruleSets, m_matchCase));
    return result;
}

void TabbedStructuredFilterUi::deleteAllFilterTabs()
{
    while (m_ui->filterTabs->count() > 1)
        delFilterTabConfirmed(m_ui->filterTabs->count() - 2);
}

WFilter::FilterDisplayResult TabbedStructuredFilterUi::displayFilter(const SourceAndFilter &filter,
                                                                     StructuredFilterUi::FilterType type,
                                                                     QString &error)
{
    deleteAllFilterTabs();
    m_tabCounter = 0;
    const QSharedPointer<FilterRuleContainer> container = filter.getFilterContainer();
    m_matchCase = container && container->isMatchCase();
    bool partly = false;
    if (container) {
        for (const FilterRuleSet &ruleSet : container->getRuleSets()) {
            SingleFilterTab *tab = addFilterTab();
            switch (tab->displayRuleSet(ruleSet, m_matchCase, error)) {
            case WFilter::DisplayFailed:
                return WFilter::DisplayFailed;
            case WFilter::NoneDisplayed:
                delFilterTabConfirmed(m_ui->filterTabs->indexOf(tab));
                partly = true;
                break;
            case WFilter::PartlyDisplayed:
                partly = true;
                break;
            case WFilter::AllDisplayed:
                break;
            }
        }
        if (filterTabCount() == 0) {
            addFilterTab();
            if (!container->getRuleSets().isEmpty())
                return WFilter::NoneDisplayed;
        }
    } else {
        addFilterTab();
    }
    emit applyStructuredFilter(getFilter(), type);
    return partly ? WFilter::PartlyDisplayed : WFilter::AllDisplayed;
}

void TabbedStructuredFilterUi::compareWithFilter(const SourceAndFilter &filter, bool flag)
{
    Q_UNUSED(flag)
    displayFilterModified(getFilter().isEqual(filter));
}

void TabbedStructuredFilterUi::displayFilterModified(bool equal)
{
    if (mayApplySettings())
        m_ui->notAppliedLabel->setVisible(!equal);
}

void TabbedStructuredFilterUi::applyButtonClicked()
{
    emit applyStructuredFilter(getFilter(), ApplyButtonFilter);
}

void TabbedStructuredFilterUi::filterButtonClicked()
{
    QMenu menu(this);
    QAction *matchCase = addMenuAction(&menu, MatchCaseAction, tr("Match case"), QString());
    if (matchCase) {
        matchCase->setCheckable(true);
        matchCase->setChecked(m_matchCase);
    }
    menu.addSeparator();

    QAction *empty = nullptr;
    QAction *defaultFilter = nullptr;
    QAction *clear = nullptr;
    if (m_useDefaultFilter && !getDefaultFilter().isFilterEqual(m_basicFilter)) {
        QMenu *resetTo = menu.addMenu(tr("Reset to"));
        empty = resetTo->addAction(style()->standardIcon(QStyle::SP_DialogDiscardButton), tr("Empty"));
        defaultFilter = resetTo->addAction(style()->standardIcon(QStyle::SP_DialogResetButton), tr("Default"));
    } else {
        clear = addMenuAction(&menu, ClearAction, tr("Clear"), QString());
        if (clear)
            clear->setIcon(style()->standardIcon(QStyle::SP_DialogCancelButton));
    }

    QAction *save = nullptr;
    QAction *load = nullptr;
    // Only the save right decides whether the pair is offered at all.
    if (getActionState(EwoActions::SaveFilter) != ActionAccess::Hidden) {
        menu.addSeparator();
        save = addMenuAction(&menu, EwoActions::SaveFilter, tr("Save Filter..."), QString());
        if (save)
            save->setIcon(style()->standardIcon(QStyle::SP_DialogSaveButton));
        load = addMenuAction(&menu, EwoActions::LoadFilter, tr("Load Filter..."), QString());
        if (load)
            load->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
    }

    QToolButton *button = m_ui->filterButton;
    QAction *chosen = menu.exec(button->mapToGlobal(button->rect().center()));
    if (!chosen)
        return;
    if (chosen == matchCase)
        setMatchCase(chosen->isChecked());
    else if (chosen == empty || chosen == clear)
        clearFilterToBasic();
    else if (chosen == defaultFilter)
        clearFilterToDefault();
    else if (chosen == save)
        emit filterActionRequested(EwoActions::SaveFilter);
    else if (chosen == load)
        emit filterActionRequested(EwoActions::LoadFilter);
}

void TabbedStructuredFilterUi::connectedSystemsChanged(const QStringList &systems)
{
    if (systems != m_connectedSystems)
        m_connectedSystems = systems;
    if (m_completionSource)
        m_completionSource->systemConnectionChanged(this, m_connectedSystems);
}

void TabbedStructuredFilterUi::processNewCompletions(void *consumer,
                                                     const QSharedPointer<FilterCompletions> &completions)
{
    const bool toAll = !consumer || consumer == this;
    for (SingleFilterTab *tab : getFilterTabs()) {
        if (toAll) {
            tab->completionsReady(completions, m_connectedSystems);
        } else if (tab == consumer) {
            tab->completionsReady(completions, m_connectedSystems);
            break;
        }
    }
}
