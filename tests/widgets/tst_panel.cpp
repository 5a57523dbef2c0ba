#include "AlarmScreenConfiguration.h"
#include "AlarmTestFactory.h"
#include "FilterRuleContainer.h"
#include "LogCapture.h"
#include "QuickFilterEditor.h"
#include "SourceAndFiltersUi.h"
#include "SourceUi.h"
#include "StructuredFilterUi.h"
#include "WFixedFilterToggleButton.h"

#include <QtTest>

namespace {

// One record of the calls that reach the parts, shared by all parts of a panel
// so that their order shows.
using CallLog = QSharedPointer<QStringList>;

using namespace AlarmTestFactory;

SourceAndFilter filterWith(const QString &kind)
{
    return sourceFilter({ruleSet(true, {fixedFilter(QStringLiteral("state"), kind, QVariant(), true)})});
}

// Writes each call that reaches a part into the log shared by the panel's parts.
class CallRecorder
{
public:
    explicit CallRecorder(const CallLog &calls) : m_calls(calls) {}
    template <typename... Args> void note(const char *format, const Args &...args) const
    {
        QString line = QString::fromLatin1(format);
        ((line = line.arg(args)), ...);
        *m_calls << line;
    }

private:
    CallLog m_calls;
};

class TestSourceUi : public SourceUi, private CallRecorder
{
    Q_OBJECT
public:
    TestSourceUi(const AlarmScreenConfiguration &config, const CallLog &calls)
        : SourceUi(config, nullptr), CallRecorder(calls)
    {
    }
    // Written as a panel plug-in writes it: the record comes as const and is
    // updated in place.
    void addToFilter(const SourceAndFilter &filter) const override
    {
        SourceUi::addToFilter(filter);
        SourceAndFilter &record = writableRecord(filter);
        record.setSelectionKind(SourceAndFilter::SelectBySystems);
        record.setSystems(systems);
    }
    void compareWithFilter(const SourceAndFilter &f, bool flag) override
    {
        note("source compare %1 %2", f.getSystems().join(','), flag);
    }
    QString prepareArchiveMode(const QDateTime &start, const QDateTime &end, const QStringList &names) override
    {
        note("source archive %1 %2 %3", start.toSecsSinceEpoch(), end.toSecsSinceEpoch(), names.join(','));
        return archiveAnswer;
    }
    void prepareOnlineMode() override { note("source online"); }
    void displayFilterModified(bool equal) override { note("source modified %1", equal); }
    void displaySourceState(Constants::SourceState state) override { note("source state %1", state); }
    void displaySourceCounts(unsigned int a, unsigned int b) override { note("source counts %1 %2", a, b); }
    void connectedSystemsChanged(const QStringList &names) override { note("source systems %1", names.join(',')); }
    void setTimeSpec(Qt::TimeSpec timeSpec) override
    {
        SourceUi::setTimeSpec(timeSpec);
        note("source timespec %1", timeSpec);
    }

    QStringList systems;
    QString archiveAnswer;
};

class TestStructuredFilterUi : public StructuredFilterUi, private CallRecorder
{
    Q_OBJECT
public:
    TestStructuredFilterUi(const AlarmScreenConfiguration &config, const CallLog &calls)
        : StructuredFilterUi(config, nullptr), CallRecorder(calls), current(&config)
    {
    }
    QList<QWidget *> getTabGroups() const override { return {const_cast<TestStructuredFilterUi *>(this)}; }
    void connectedSystemsChanged(const QStringList &names) override { note("editor systems %1", names.join(',')); }
    SourceAndFilter getFilter() const override { return current; }
    WFilter::FilterDisplayResult displayFilter(const SourceAndFilter &filter, FilterType type,
                                               QString &error) override
    {
        note("editor display %1 %2", filter.isEmpty() ? "empty" : "filter", type);
        displayed = filter;
        error = displayError;
        return displayResult;
    }
    void compareWithFilter(const SourceAndFilter &f, bool flag) override
    {
        note("editor compare %1 %2", f.isEmpty(), flag);
    }
    void displayFilterModified(bool equal) override { note("editor modified %1", equal); }
    void processNewCompletions(void *consumer, const QSharedPointer<FilterCompletions> &completions) override
    {
        note("editor completions %1 %2", consumer == this, completions.isNull());
    }

    SourceAndFilter current;
    SourceAndFilter displayed;
    WFilter::FilterDisplayResult displayResult = WFilter::AllDisplayed;
    QString displayError;
};

class TestPanel : public SourceAndFiltersUi
{
    Q_OBJECT
public:
    explicit TestPanel(const AlarmScreenConfiguration &config) : SourceAndFiltersUi(config, nullptr) {}
    QList<QWidget *> getTabGroups() const override { return {}; }
};

// The owner side of the string connections.
class Owner : public QObject
{
    Q_OBJECT
public:
    QStringList events;
    SourceAndFilter lastFilter;
    // The events since the last call.
    QStringList take() { return std::exchange(events, {}); }

signals:
    void requestApply(const SourceAndFilter &filters, int type);
    void requestApplyButton();

public slots:
    void changed() { events << QStringLiteral("changed"); }
    void apply(const SourceAndFilter &filter, int type)
    {
        lastFilter = filter;
        events << QStringLiteral("apply %1 %2").arg(filter.getSystems().join(',')).arg(type);
    }
    void abort() { events << QStringLiteral("abort"); }
    void action(const QString &name) { events << QStringLiteral("action ") + name; }
    void quick(const QuickCellFilter &filter) { events << QStringLiteral("quick ") + filter.getString(); }
    void oldData(bool visible) { events << QStringLiteral("old %1").arg(visible); }
};

} // namespace

class TestPanelParts : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        m_calls = CallLog::create();
        m_panel.reset(new TestPanel(m_config));
    }
    void cleanup() { m_panel.reset(); }

    void panelWithoutParts()
    {
        const SourceAndFilter filter = m_panel->getFilter();
        QVERIFY(filter.getFilterContainer());
        QVERIFY(filter.getFilterContainer()->getRuleSets().isEmpty());
        QVERIFY(filter.isEmpty());

        QCOMPARE(m_panel->prepareArchiveMode(QDateTime::currentDateTime(), QDateTime::currentDateTime(), {}),
                 QStringLiteral("as EWO doesn't contains source control, archive mode can't be set"));
        QString error = QStringLiteral("untouched");
        QCOMPARE(m_panel->displayFilter(SourceAndFilter(), StructuredFilterUi::ApplyButtonFilter, error),
                 WFilter::NoneDisplayed);
        QCOMPARE(error, QStringLiteral("untouched"));
        QCOMPARE(m_panel->displayFilter(filterWith(QStringLiteral("x")), StructuredFilterUi::ApplyButtonFilter,
                                        error),
                 WFilter::DisplayFailed);
        QCOMPARE(error, QStringLiteral("there is no editor to display content of structured filter"));

        QVERIFY(!m_panel->isUseDefaultFilter());
        QVERIFY(!m_panel->getDefaultFilter().getFilterContainer());

        // Calls for absent parts are harmless.
        m_panel->prepareOnlineMode();
        m_panel->displaySourceState(Constants::QueryRunning);
        m_panel->displaySourceCounts(1, 2);
        m_panel->connectedSystemsChanged({QStringLiteral("System1")});
        m_panel->setUseDefaultFilter(true);
        m_panel->setDefaultFilter(filterWith(QStringLiteral("x")), UserSettings::DefaultFilterSetAndShow);
        m_panel->compareWithFilter(filter, true);
        m_panel->setAppliedQuickFilter(QuickCellFilter());
        m_panel->clearQuickFilter();

        QSignalSpy applied(m_panel.data(), SIGNAL(applyStructuredFilter(SourceAndFilter,int)));
        QVERIFY(QMetaObject::invokeMethod(m_panel.data(), "applyFilterRequest"));
        QCOMPARE(applied.count(), 1);
        QVERIFY(applied.at(0).at(0).value<SourceAndFilter>().isEqual(filter));
        QCOMPARE(applied.at(0).at(1).toInt(), 0);
    }

    void getFilterMergesTheParts()
    {
        auto *editor = new TestStructuredFilterUi(m_config, m_calls);
        editor->current.setFilterContainer(filterWith(QStringLiteral("unack")).getFilterContainer());
        editor->current.setDpNames({QStringLiteral("dp")});
        editor->current.setSelectionKind(1);
        editor->current.setSourceMode(Constants::SourceModeHistory);
        m_panel->setStructuredFilterUI(editor);
        SourceAndFilter filter = m_panel->getFilter();
        QCOMPARE(filter.getFilterContainer(), editor->current.getFilterContainer());
        QCOMPARE(filter.getDpNames(), QStringList{QStringLiteral("dp")});
        QCOMPARE(filter.getSelectionKind(), 1);
        QCOMPARE(filter.getSourceMode(), Constants::SourceModeHistory);

        // The selector writes its mode, time range and systems over the editor's.
        auto *source = new TestSourceUi(m_config, m_calls);
        source->systems = QStringList{QStringLiteral("System1")};
        m_panel->setSourceUi(source);
        const QStringList names{QStringLiteral("Pump1."), QStringLiteral("Pump2.")};
        m_panel->setFixedDpNames(names);
        filter = m_panel->getFilter();
        QCOMPARE(filter.getFilterContainer(), editor->current.getFilterContainer());
        QCOMPARE(filter.getSourceMode(), Constants::SourceModeLive);
        QCOMPARE(filter.getSelectionKind(), 0);
        QCOMPARE(filter.getSystems(), QStringList{QStringLiteral("System1")});
        QCOMPARE(filter.getDpNames(), QStringList{QStringLiteral("dp")});
        QVERIFY(filter.getTimeRange() == source->getTimeRange());

        // Fixed datapoint names select when no system is chosen...
        source->systems.clear();
        QCOMPARE(m_panel->getFilter().getSelectionKind(), 1);
        QCOMPARE(m_panel->getFilter().getDpNames(), names);
        // ...and without a selector the editor's systems decide.
        editor->current.setSystems({QStringLiteral("System9")});
        m_panel->setSourceUi(nullptr);
        QCOMPARE(m_panel->getFilter().getSystems(), QStringList{QStringLiteral("System9")});
        QCOMPARE(m_panel->getFilter().getDpNames(), QStringList{QStringLiteral("dp")});
    }

    void forwardingToTheParts()
    {
        addParts();
        m_source->archiveAnswer = QStringLiteral("unknown system");
        const QDateTime start = QDateTime::fromSecsSinceEpoch(1000);
        const QDateTime end = QDateTime::fromSecsSinceEpoch(2000);
        QCOMPARE(m_panel->prepareArchiveMode(start, end, {"S1", "S2"}), QStringLiteral("unknown system"));
        m_panel->prepareOnlineMode();
        m_panel->displaySourceState(Constants::QueryRunning);
        m_panel->displaySourceCounts(10, 3);
        m_panel->setTimeSpec(Qt::UTC);
        m_panel->connectedSystemsChanged({"S1"});
        QCOMPARE(*m_calls, (QStringList{"source archive 1000 2000 S1,S2", "source online", "source state 6",
                                        "source counts 10 3", "source timespec 1", "source systems S1",
                                        "editor systems S1"}));

        m_panel->setUseDefaultFilter(true);
        QVERIFY(m_editor->isUseDefaultFilter());
        QString error;
        m_editor->displayResult = WFilter::PartlyDisplayed;
        m_editor->displayError = QStringLiteral("some");
        QCOMPARE(m_panel->displayFilter(filterWith(QStringLiteral("a")), StructuredFilterUi::DefaultFilter, error),
                 WFilter::PartlyDisplayed);
        QCOMPARE(error, QStringLiteral("some"));
        QCOMPARE(m_calls->last(), QStringLiteral("editor display filter 1"));
    }

    void compareWithFilterAsksBothParts()
    {
        addParts({"S1"});
        m_panel->compareWithFilter(m_panel->getFilter(), true);
        QCOMPARE(*m_calls, (QStringList{"source compare S1 1", "editor compare 1 1", "source modified 1",
                                        "editor modified 1"}));
        m_calls->clear();
        m_panel->compareWithFilter(filterWith(QStringLiteral("other")), false);
        QCOMPARE(*m_calls, (QStringList{"source compare  0", "editor compare 0 0", "source modified 0",
                                        "editor modified 0"}));
    }

    // The owner connects by signature strings; every signal and slot it uses
    // must be found that way and carry what it should.
    void signalsAnOwnerConnectsTo()
    {
        addParts({"S1"});
        TestSourceUi *source = m_source;
        TestStructuredFilterUi *editor = m_editor;
        auto *quick = new QuickFilterEditor(m_panel.data());
        m_panel->setQuickFilterEditor(quick);

        Owner owner;
        TestPanel *panel = m_panel.data();
        QVERIFY(connect(panel, SIGNAL(structuredFilterChanged()), &owner, SLOT(changed())));
        QVERIFY(connect(panel, SIGNAL(applyStructuredFilter(const SourceAndFilter &, int)), &owner,
                        SLOT(apply(const SourceAndFilter &, int))));
        QVERIFY(connect(panel, SIGNAL(abortQuery()), &owner, SLOT(abort())));
        QVERIFY(connect(panel, SIGNAL(filterActionRequested(const QString &)), &owner,
                        SLOT(action(const QString &))));
        QVERIFY(connect(panel, SIGNAL(quickFilterChanged(const QuickCellFilter &)), &owner,
                        SLOT(quick(const QuickCellFilter &))));
        QVERIFY(connect(panel, SIGNAL(oldDataVisibilityChanged(bool)), &owner, SLOT(oldData(bool))));
        QVERIFY(connect(&owner, SIGNAL(requestApply(const SourceAndFilter &, int)), panel,
                        SLOT(requestToApplyStructuredFilter(const SourceAndFilter &, int))));
        QVERIFY(connect(&owner, SIGNAL(requestApplyButton()), panel, SLOT(applyFilterRequest())));

        emit source->changed();
        emit editor->structuredFilterChanged();
        QCOMPARE(owner.take(), (QStringList{"changed", "changed"}));
        emit source->apply();
        QCOMPARE(owner.take(), QStringList{QStringLiteral("apply S1 0")});

        SourceAndFilter fromEditor = filterWith(QStringLiteral("x"));
        fromEditor.setSystems({QStringLiteral("ignored")});
        emit editor->applyStructuredFilter(fromEditor, StructuredFilterUi::DefaultFilter);
        QCOMPARE(owner.take(), QStringList{QStringLiteral("apply S1 1")});
        QVERIFY(owner.lastFilter.isFilterEqual(fromEditor));

        emit owner.requestApply(fromEditor, 2);
        emit owner.requestApplyButton();
        QCOMPARE(owner.take(), (QStringList{"apply S1 2", "apply S1 0"}));

        emit source->abortQuery();
        emit editor->filterActionRequested(QStringLiteral("saveFilter"));
        quick->setText(QStringLiteral("pump"));
        QTest::keyClick(quick, Qt::Key_Return);
        QCOMPARE(owner.take(), (QStringList{"abort", "action saveFilter", "quick pump"}));

        // Without a selector the editor's record passes unchanged.
        m_panel->setSourceUi(nullptr);
        emit editor->applyStructuredFilter(fromEditor, 1);
        QCOMPARE(owner.take(), QStringList{QStringLiteral("apply ignored 1")});
    }

    void replacingParts()
    {
        QPointer<TestSourceUi> first = new TestSourceUi(m_config, m_calls);
        QPointer<TestStructuredFilterUi> editor = new TestStructuredFilterUi(m_config, m_calls);
        m_panel->setSourceUi(first);
        m_panel->setStructuredFilterUI(editor);
        auto *second = new TestSourceUi(m_config, m_calls);
        m_panel->setSourceUi(second);
        m_panel->setStructuredFilterUI(nullptr);
        QVERIFY(!m_panel->getStructuredFilterUi());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(first.isNull());
        QVERIFY(editor.isNull());
        delete second;

        // A quick filter editor is only replaced, not released.
        QuickFilterEditor one;
        QuickFilterEditor two;
        m_panel->setQuickFilterEditor(&one);
        m_panel->setQuickFilterEditor(&two);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QuickCellFilter applied;
        applied.setString(QStringLiteral("abc"));
        m_panel->setAppliedQuickFilter(applied);
        QCOMPARE(two.text(), QStringLiteral("abc"));
        QVERIFY(one.text().isEmpty());
        m_panel->clearQuickFilter();
        QVERIFY(two.text().isEmpty());
        QVERIFY(two.getAppliedFilter().getString().isEmpty());
    }

    void structuredEditorDefaultFilter()
    {
        LogCapture log;
        const AlarmScreenConfiguration config(&log.producer);
        TestStructuredFilterUi editor(config, m_calls);
        QVERIFY(!editor.isUseDefaultFilter());
        // Nothing held: an empty container with the editor's case rule.
        QVERIFY(editor.getDefaultFilter().getFilterContainer());
        QVERIFY(editor.getDefaultFilter().isEmpty());

        const SourceAndFilter wanted = filterWith(QStringLiteral("unack"));
        editor.setDefaultFilter(wanted, UserSettings::DefaultFilterSetAndShow);
        QVERIFY(editor.isUseDefaultFilter());
        QCOMPARE(*m_calls, QStringList{QStringLiteral("editor display filter 1")});
        QVERIFY(editor.displayed.isFilterEqual(wanted));
        // The default is a copy, not the caller's container.
        QVERIFY(editor.getDefaultFilter().getFilterContainer() != wanted.getFilterContainer());
        QVERIFY(log.lines().isEmpty());

        // Shown already: nothing to display.
        m_calls->clear();
        editor.current = wanted;
        editor.setDefaultFilter(wanted, UserSettings::DefaultFilterSetAndShow);
        QVERIFY(m_calls->isEmpty());

        // Clearing the default shows the empty one, as the shown filter is not empty;
        // a partial display is logged.
        editor.displayResult = WFilter::PartlyDisplayed;
        editor.displayError = QStringLiteral("no editor for state");
        editor.setDefaultFilter(SourceAndFilter(), UserSettings::DefaultFilterClearAndShow);
        QCOMPARE(*m_calls, QStringList{QStringLiteral("editor display empty 1")});
        QCOMPARE(log.lines(), QStringList{QStringLiteral("2|error applying default filter: no editor for state")});
        editor.current = SourceAndFilter();
        m_calls->clear();
        editor.setDefaultFilter(SourceAndFilter(), UserSettings::DefaultFilterClearAndShow);
        QVERIFY(m_calls->isEmpty());

        editor.setDefaultFilter(wanted, UserSettings::DefaultFilterSetAndShow);
        editor.setDefaultFilter(SourceAndFilter(), UserSettings::DefaultFilterDisable);
        QVERIFY(!editor.isUseDefaultFilter());
        QVERIFY(editor.getDefaultFilter().isEmpty());
        editor.setDefaultFilter(SourceAndFilter(), UserSettings::DefaultFilterEnable);
        QVERIFY(editor.isUseDefaultFilter());
        QVERIFY(editor.getDefaultFilter().isEmpty()); // dropped before, not restored
        editor.setDefaultFilter(wanted, static_cast<UserSettings::DefaultFilterAction>(7));
        QVERIFY(editor.getDefaultFilter().isEmpty());

        m_calls->clear();
        editor.displayResult = WFilter::AllDisplayed;
        editor.clearFilterToBasic();
        editor.clearFilterToDefault();
        QCOMPARE(*m_calls, (QStringList{QStringLiteral("editor display empty 2"),
                                        QStringLiteral("editor display empty 2")}));
    }

    void structuredEditorMatchCaseReachesTheEditors()
    {
        TestStructuredFilterUi editor(m_config, m_calls);
        auto fixed = fixedFilter(QStringLiteral("state"), QStringLiteral("x"));
        auto *page = new QWidget(&editor);
        new WFixedFilterToggleButton(WildcardConfig(), fixed, page);
        QSignalSpy changed(&editor, SIGNAL(structuredFilterChanged()));
        editor.setMatchCase(true);
        editor.setMatchCase(true);
        QVERIFY(fixed->isMatchCase());
        QCOMPARE(changed.count(), 1);

        QVERIFY(QMetaObject::invokeMethod(&editor, "completionsReady", Q_ARG(void *, &editor),
                                          Q_ARG(QSharedPointer<FilterCompletions>, {})));
        QCOMPARE(m_calls->last(), QStringLiteral("editor completions 1 1"));
    }

private:
    // Gives the panel a selector with `systems` chosen and a structured editor.
    void addParts(const QStringList &systems = {})
    {
        m_source = new TestSourceUi(m_config, m_calls);
        m_source->systems = systems;
        m_editor = new TestStructuredFilterUi(m_config, m_calls);
        m_panel->setSourceUi(m_source);
        m_panel->setStructuredFilterUI(m_editor);
    }

    AlarmScreenConfiguration m_config;
    CallLog m_calls;
    QScopedPointer<TestPanel> m_panel;
    TestSourceUi *m_source = nullptr;
    TestStructuredFilterUi *m_editor = nullptr;
};

QTEST_MAIN(TestPanelParts)
#include "tst_panel.moc"
