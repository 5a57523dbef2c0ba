#include "AlarmScreenConfiguration.h"
#include "CompletionSource.h"
#include "FilterCompletions.h"
#include "EwoActions.h"
#include "FilterRuleContainer.h"
#include "LogCapture.h"
#include "SingleFilterTab.h"
#include "SourceAndFiltersUiFactory.h"
#include "SourceAndFiltersUiFactoryPlugin.h"
#include "TabbedStructuredFilterUi.h"
#include "TestProject.h"
#include "ValueFilterFixed.h"
#include "ValueFilterStringPattern.h"
#include "WFixedFilterToggleButton.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QtTest>

#include <functional>

namespace {

// A pattern editor reduced to a line edit; it refuses patterns containing
// "bad" with an error, as an editor that cannot show a value would.
class LineFilter : public WFilter
{
public:
    LineFilter(const QString &column, QWidget *parent)
        : WFilter(WildcardConfig(), column, Constants::ValueSourceAlarm, parent), edit(new QLineEdit(this))
    {
        connect(edit, &QLineEdit::textEdited, this, [this](const QString &text) {
            emit filterTextChanged(getColumnId(), text);
            emit filterChanged();
        });
    }
    QSharedPointer<ValueFilter> getFilter(bool matchCase) override
    {
        if (edit->text().isEmpty())
            return {};
        auto filter = QSharedPointer<ValueFilterStringPattern>::create(m_wildcardConfig, getColumnId(),
                                                                       getSource(), matchCase);
        filter->setFilterText(edit->text());
        return filter;
    }
    bool setFilter(const QSharedPointer<ValueFilter> &filter, bool, QString &errorText) override
    {
        if (!isPropertyMatch(filter, errorText))
            return false;
        const auto pattern = filter.dynamicCast<ValueFilterStringPattern>();
        if (!pattern)
            return false;
        if (pattern->getFilterText().contains(QLatin1String("bad"))) {
            errorText = QStringLiteral("cannot show it");
            return false;
        }
        edit->setText(pattern->getFilterText());
        return true;
    }
    void setMatchCase(bool on) override { matchCase = on; }
    void setCompletionStrings(const QStringList &strings) override { completions = strings; }

    QLineEdit *edit;
    QStringList completions;
    bool matchCase = false;
};

// Pages with a "text" and a "dpe" pattern editor and an "acknowledged" toggle.
class PagePlugin : public SourceAndFiltersUiFactoryPlugin
{
public:
    SourceAndFiltersUi *create(const AlarmScreenConfiguration &, QWidget *) override { return nullptr; }
    QWidget *buildStructuredFilterPageUi(const AlarmScreenConfiguration &, QStringList &list) override
    {
        auto *page = new QWidget;
        auto *layout = new QGridLayout(page);
        layout->addWidget(new LineFilter(QStringLiteral("text"), page), 0, 0);
        layout->addWidget(new LineFilter(QStringLiteral("dpe"), page), 0, 1);
        auto flag = QSharedPointer<ValueFilterFixed>::create(WildcardConfig(), QStringLiteral("acknowledged"),
                                                             Constants::ValueSourceAlarm, false,
                                                             QStringLiteral("acknowledged"), true, false);
        layout->addWidget(new WFixedFilterToggleButton(WildcardConfig(), flag, page), 1, 0);
        list << QStringLiteral("text") << QStringLiteral("dpe");
        return page;
    }
};

const char PluginName[] = "tabtestpages";

// "dpe" completions depend on the "text" filter.
const char Library[] = R"(
function master(property, systems) {
    if (property === "dpe")
        return {type: 2, list: ["text"]};
    return {type: 0};
}
function slave(property, values) {
    return {list: [property + " of " + values.text]};
}
)";

AlarmScreenConfiguration configuration(const QString &library = QString())
{
    AlarmScreenConfiguration config;
    FilterWidgetConfiguration widgets;
    widgets.setPanelPluginName(QLatin1String(PluginName));
    widgets.setCtrlLibrary(library);
    widgets.setMasterFunction(QStringLiteral("master"));
    widgets.setSlaveFunction(QStringLiteral("slave"));
    widgets.setFixedCompletions({{QStringLiteral("text"), {QStringLiteral("Pump"), QStringLiteral("Valve")}}});
    config.setFilterWidgetConfig(widgets);
    return config;
}

QSharedPointer<ValueFilter> pattern(const QString &column, const QString &text)
{
    auto filter = QSharedPointer<ValueFilterStringPattern>::create(WildcardConfig(), column,
                                                                   Constants::ValueSourceAlarm, false);
    filter->setFilterText(text);
    return filter;
}

SourceAndFilter filterOf(const QList<FilterRuleSet> &sets, bool matchCase = false)
{
    SourceAndFilter filter;
    filter.setFilterContainer(QSharedPointer<FilterRuleContainer>::create(WildcardConfig(), sets, matchCase));
    return filter;
}

// What the page's "acknowledged" toggle contributes to every rule set.
QSharedPointer<ValueFilter> acknowledged(bool checked)
{
    return QSharedPointer<ValueFilterFixed>::create(WildcardConfig(), QStringLiteral("acknowledged"),
                                                    Constants::ValueSourceAlarm, false, QStringLiteral("acknowledged"),
                                                    true, checked);
}

FilterRuleSet ruleSet(bool include, const QList<QSharedPointer<ValueFilter>> &filters)
{
    FilterRuleSet set(WildcardConfig(), include, false);
    for (const auto &f : filters)
        set.addFilter(f);
    return set;
}

LineFilter *lineFilter(SingleFilterTab *tab, const QString &column)
{
    for (WFilter *editor : tab->findChildren<WFilter *>()) {
        if (editor->getColumnId() == column)
            return dynamic_cast<LineFilter *>(editor);
    }
    return nullptr;
}

QStringList tabTitles(const TabbedStructuredFilterUi &ui)
{
    QStringList titles;
    for (int i = 0; i < ui.getTabWidget()->count(); ++i)
        titles << ui.getTabWidget()->tabText(i);
    return titles;
}

// Runs `work` on the menu that `open` pops up, then closes it (or lets
// `work` choose an entry).
void onMenu(const std::function<void(QMenu *)> &work, const std::function<void()> &open)
{
    QTimer::singleShot(0, [work] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        work(menu);
        if (menu->isVisible())
            menu->close();
    });
    open();
}

QAction *entry(QMenu *menu, const QString &text)
{
    for (QAction *action : menu->actions()) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

// Chooses `action` as the operator would, so that the menu's exec() returns it.
void choose(QMenu *menu, QAction *action)
{
    QVERIFY(action);
    menu->setActiveAction(action);
    QTest::keyClick(menu, Qt::Key_Return);
}

QStringList entries(QMenu *menu)
{
    QStringList texts;
    for (QAction *action : menu->actions())
        texts << (action->isSeparator() ? QStringLiteral("-") : action->text());
    return texts;
}

} // namespace

class TestTabbedStructuredFilter : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        SourceAndFiltersUiFactory::getAllPlugins().insert(QLatin1String(PluginName),
                                                          QSharedPointer<PagePlugin>::create());
        m_project.write(QStringLiteral("scripts/libs/tabsCompletions.js"), Library);
    }

    void tabsAreNumberedNamedAndDeleted()
    {
        TabbedStructuredFilterUi ui(configuration(), nullptr);
        QCOMPARE(tabTitles(ui), QStringList({QString()}));
        QCOMPARE(ui.getTabWidget()->tabToolTip(0), QStringLiteral("Add filter set"));
        QSignalSpy changed(&ui, &StructuredFilterUi::structuredFilterChanged);

        ui.show();
        QTabBar *bar = ui.getTabWidget()->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(0).center());
        QCOMPARE(tabTitles(ui), QStringList({QStringLiteral("Filter #1: Include"), QString()}));
        QCOMPARE(ui.getTabWidget()->currentIndex(), 0);
        QCOMPARE(changed.count(), 1);

        ui.addFilterTab();
        ui.addFilterTab();
        ui.delFilterTabConfirmed(2); // the newest number comes back
        QCOMPARE(ui.getTabWidget()->currentIndex(), 1);
        QCOMPARE(ui.addFilterTab()->getNumber(), 3u);
        ui.delFilterTabConfirmed(1); // an older one does not
        QCOMPARE(ui.addFilterTab()->getNumber(), 4u);

        changed.clear();
        ui.getFilterTabs().first()->getExcludeButton()->click();
        QCOMPARE(tabTitles(ui), QStringList({QStringLiteral("Filter #1: Exclude"), QStringLiteral("Filter #3: Include"),
                                             QStringLiteral("Filter #4: Include"), QString()}));
        QCOMPARE(changed.count(), 1);

        // Closing asks first; only Yes deletes.
        for (auto button : {QMessageBox::No, QMessageBox::Yes}) {
            QString question;
            QTimer::singleShot(0, [&question, button] {
                auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
                QVERIFY(box);
                question = box->windowTitle() + QLatin1Char('|') + box->text();
                box->button(button)->click();
            });
            emit ui.getTabWidget()->tabCloseRequested(0);
            QCOMPARE(question, QStringLiteral("Delete Filter?|Are you sure you want to delete 'Filter #1: Exclude'?"
                                              "\n\nThis action cannot be undone."));
        }
        QCOMPARE(ui.filterTabCount(), 2);
        QCOMPARE(ui.getFilterTabs().first()->getNumber(), 3u);
        ui.delFilterTabConfirmed(ui.filterTabCount()); // the "+" tab is not a filter
        QCOMPARE(ui.filterTabCount(), 2);
    }

    void filterIsBuiltFromTabsAndDisplayedBack()
    {
        TabbedStructuredFilterUi editor(configuration(), nullptr);
        SingleFilterTab *first = editor.addFilterTab();
        lineFilter(first, QStringLiteral("text"))->edit->setText(QStringLiteral("Pump*"));
        SingleFilterTab *second = editor.addFilterTab();
        second->getExcludeButton()->setChecked(true);
        lineFilter(second, QStringLiteral("dpe"))->edit->setText(QStringLiteral("*test*"));
        second->findChild<QToolButton *>()->click(); // the acknowledged toggle
        editor.setMatchCase(true);

        const SourceAndFilter built = editor.getFilter();
        const SourceAndFilter expected =
            filterOf({ruleSet(true, {pattern(QStringLiteral("text"), QStringLiteral("Pump*")), acknowledged(false)}),
                      ruleSet(false, {pattern(QStringLiteral("dpe"), QStringLiteral("*test*")), acknowledged(true)})},
                     true);
        expected.getFilterContainer()->setMatchCase(true);
        QVERIFY(built.isFilterEqual(expected));

        // Shown in another editor, it comes back the same and is applied.
        TabbedStructuredFilterUi other(configuration(), nullptr);
        other.addFilterTab();
        other.addFilterTab();
        QSignalSpy applied(&other, &StructuredFilterUi::applyStructuredFilter);
        QString error;
        QCOMPARE(other.displayFilter(built, StructuredFilterUi::DefaultFilter, error), WFilter::AllDisplayed);
        QCOMPARE(other.filterTabCount(), 2);
        QCOMPARE(other.getFilterTabs().last()->getName(), QStringLiteral("Filter #2: Exclude"));
        QVERIFY(other.getFilter().isFilterEqual(built));
        QCOMPARE(applied.count(), 1);
        QCOMPARE(applied.first().at(1).toInt(), int(StructuredFilterUi::DefaultFilter));
        QVERIFY(applied.first().at(0).value<SourceAndFilter>().isFilterEqual(built));
    }

    void displayReportsWhatCouldNotBeShown()
    {
        LogCapture log;
        AlarmScreenConfiguration config = configuration();
        static_cast<MsgLoggingProducer &>(config) = log.producer;
        TabbedStructuredFilterUi editor(config, nullptr);
        QSignalSpy applied(&editor, &StructuredFilterUi::applyStructuredFilter);
        const auto unknown = pattern(QStringLiteral("alias"), QStringLiteral("x"));
        QString error;

        // One set shown in part, one not at all: the latter's tab goes.
        QCOMPARE(editor.displayFilter(filterOf({ruleSet(true, {pattern(QStringLiteral("text"), QStringLiteral("a")), unknown}),
                                               ruleSet(false, {unknown})}),
                                      StructuredFilterUi::ApplyButtonFilter, error),
                 WFilter::PartlyDisplayed);
        QCOMPARE(editor.filterTabCount(), 1);
        QCOMPARE(applied.count(), 1);
        QVERIFY(error.isEmpty());
        QVERIFY(log.lines().contains(QStringLiteral("2|No widget found to display filter [") + unknown->toString()
                                     + QLatin1Char(']')));

        // Nothing showable: one empty tab, nothing applied.
        applied.clear();
        QCOMPARE(editor.displayFilter(filterOf({ruleSet(true, {unknown})}), StructuredFilterUi::ApplyButtonFilter, error),
                 WFilter::NoneDisplayed);
        QCOMPARE(tabTitles(editor), QStringList({QStringLiteral("Filter #1: Include"), QString()}));
        QVERIFY(editor.getFilter().isEmpty());
        QCOMPARE(applied.count(), 0);

        // An editor's refusal stops the display with the reason.
        QCOMPARE(editor.displayFilter(filterOf({ruleSet(true, {pattern(QStringLiteral("dpe"), QStringLiteral("bad"))})}),
                                      StructuredFilterUi::ApplyButtonFilter, error),
                 WFilter::DisplayFailed);
        QCOMPARE(error, QStringLiteral("error displaying filter for 'dpe': cannot show it"));
        QCOMPARE(applied.count(), 0);
    }

    void applyAndTheNotAppliedHint()
    {
        TabbedStructuredFilterUi editor(configuration(), nullptr);
        editor.show();
        SingleFilterTab *tab = editor.addFilterTab();
        QSignalSpy applied(&editor, &StructuredFilterUi::applyStructuredFilter);
        QSignalSpy changed(&editor, &StructuredFilterUi::structuredFilterChanged);
        QTest::keyClicks(lineFilter(tab, QStringLiteral("text"))->edit, QStringLiteral("Valve"));
        QCOMPARE(changed.count(), 5);
        editor.getApplyButton()->click();
        QCOMPARE(applied.count(), 1);
        const SourceAndFilter appliedFilter = applied.first().at(0).value<SourceAndFilter>();
        QVERIFY(appliedFilter.isFilterEqual(filterOf({ruleSet(true, {pattern(QStringLiteral("text"), QStringLiteral("Valve")), acknowledged(false)})})));
        QCOMPARE(applied.first().at(1).toInt(), 0);

        // The hint follows the comparison only where settings may be applied.
        editor.compareWithFilter(SourceAndFilter(), false);
        QVERIFY(editor.getNotAppliedLabel()->isHidden());
        editor.setMayApplySettings(true);
        editor.compareWithFilter(SourceAndFilter(), false);
        QVERIFY(editor.getNotAppliedLabel()->isVisible());
        editor.compareWithFilter(editor.getFilter(), false);
        QVERIFY(editor.getNotAppliedLabel()->isHidden());
    }

    void filterMenuFollowsRightsAndDefaults()
    {
        TabbedStructuredFilterUi editor(configuration(), nullptr);
        editor.show();
        lineFilter(editor.addFilterTab(), QStringLiteral("text"))->edit->setText(QStringLiteral("x"));
        QToolButton *button = editor.getFilterButton();

        // Hiding saving hides loading too.
        editor.setActionState(EwoActions::SaveFilter, ActionAccess::Hidden);
        QStringList shown;
        onMenu([&shown](QMenu *menu) { shown = entries(menu); }, [button] { button->click(); });
        QCOMPARE(shown, QStringList({QStringLiteral("Match case"), QStringLiteral("-"), QStringLiteral("Clear")}));

        // Match case is chosen from the menu and reaches the editors.
        onMenu([](QMenu *menu) { choose(menu, entry(menu, QStringLiteral("Match case"))); }, [button] { button->click(); });
        QVERIFY(editor.isMatchCase());
        QVERIFY(lineFilter(editor.getFilterTabs().first(), QStringLiteral("text"))->matchCase);

        // A default filter that differs from the basic one offers the reset.
        editor.setActionState(EwoActions::SaveFilter, ActionAccess::Enabled);
        editor.setActionState(EwoActions::LoadFilter, ActionAccess::Disabled);
        const SourceAndFilter defaults =
            filterOf({ruleSet(true, {pattern(QStringLiteral("dpe"), QStringLiteral("d*")), acknowledged(false)})});
        editor.setDefaultFilter(defaults, UserSettings::DefaultFilterSetAndShow);
        QVERIFY(editor.getFilter().isFilterEqual(defaults));
        bool loadEnabled = true;
        QStringList reset;
        onMenu(
            [&](QMenu *menu) {
                shown = entries(menu);
                loadEnabled = entry(menu, QStringLiteral("Load Filter..."))->isEnabled();
                QAction *resetTo = entry(menu, QStringLiteral("Reset to"));
                reset = entries(resetTo->menu());
                menu->setActiveAction(resetTo); // opens the sub-menu
                choose(resetTo->menu(), entry(resetTo->menu(), QStringLiteral("Empty")));
            },
            [button] { button->click(); });
        QCOMPARE(shown, QStringList({QStringLiteral("Match case"), QStringLiteral("-"), QStringLiteral("Reset to"),
                                     QStringLiteral("-"), QStringLiteral("Save Filter..."),
                                     QStringLiteral("Load Filter...")}));
        QCOMPARE(reset, QStringList({QStringLiteral("Empty"), QStringLiteral("Default")}));
        QVERIFY(!loadEnabled);
        QVERIFY(editor.getFilter().isEmpty());

        QSignalSpy requested(&editor, &StructuredFilterUi::filterActionRequested);
        onMenu([](QMenu *menu) { choose(menu, entry(menu, QStringLiteral("Save Filter..."))); }, [button] { button->click(); });
        QCOMPARE(requested.count(), 1);
        QCOMPARE(requested.first().at(0).toString(), EwoActions::SaveFilter);
    }

    void defaultEqualToWhatIsShownChangesNothing()
    {
        TabbedStructuredFilterUi editor(configuration(), nullptr);
        lineFilter(editor.addFilterTab(), QStringLiteral("text"))->edit->setText(QStringLiteral("a"));
        const SourceAndFilter shown = editor.getFilter();
        SingleFilterTab *tab = editor.getFilterTabs().first();
        QSignalSpy applied(&editor, &StructuredFilterUi::applyStructuredFilter);
        editor.setDefaultFilter(shown, UserSettings::DefaultFilterSetAndShow);
        QCOMPARE(applied.count(), 0);
        QCOMPARE(editor.getFilterTabs().first(), tab);
        QVERIFY(editor.isUseDefaultFilter());
        QVERIFY(editor.getDefaultFilter().isFilterEqual(shown));
    }

    void completionsReachEditorsAndFollowTheFilterText()
    {
        TabbedStructuredFilterUi editor(configuration(QStringLiteral("tabsCompletions")), nullptr);
        SingleFilterTab *tab = editor.addFilterTab();
        LineFilter *text = lineFilter(tab, QStringLiteral("text"));
        LineFilter *dpe = lineFilter(tab, QStringLiteral("dpe"));
        // The fixed list arrives at once; another tab's editors do not get it.
        QCOMPARE(text->completions, QStringList({QStringLiteral("Pump"), QStringLiteral("Valve")}));
        SingleFilterTab *second = editor.addFilterTab();
        QCOMPARE(text->completions, QStringList({QStringLiteral("Pump"), QStringLiteral("Valve")}));
        QCOMPARE(lineFilter(second, QStringLiteral("text"))->completions.size(), 2);

        // "dpe" depends on the text filter: typing there asks for new values.
        QTRY_VERIFY(editor.getCompletionSource()->getCompletions(QStringLiteral("dpe")));
        QTRY_COMPARE(editor.getCompletionSource()->getCompletions(QStringLiteral("dpe"))->getType(), 2);
        QTest::keyClicks(text->edit, QStringLiteral("Pu"));
        QTRY_COMPARE(dpe->completions, QStringList({QStringLiteral("dpe of Pu")}));
    }

private:
    TestProject m_project;
};

QTEST_MAIN(TestTabbedStructuredFilter)
#include "tst_tabbedstructuredfilter.moc"
