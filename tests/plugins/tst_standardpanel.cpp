#include "AlarmScreenConfiguration.h"
#include "FilterRuleContainer.h"
#include "QuickFilterEditor.h"
#include "SingleFilterTab.h"
#include "SourceAndFiltersUi.h"
#include "SourceAndFiltersUiFactory.h"
#include "SourceUi.h"
#include "SingleLineTextEdit.h"
#include "StringPatternEditor.h"
#include "StructuredFilterPageBuilder.h"
#include "TabbedStructuredFilterUi.h"
#include "TestProject.h"
#include "ValueFilterFixed.h"
#include "ValueFilterStringPattern.h"
#include "WEditFilterRuleDate.h"
#include "WEditFilterRuleNumbers.h"
#include "WEditFilterRuleSingleValue.h"
#include "WEditFilterRuleText.h"
#include "WFixedFilterToggleButton.h"

#include <QLabel>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

namespace {

// A stand-in editor kind, to show that a table entry is all a type needs.
class PlainEditor : public WFilter
{
public:
    PlainEditor(const WildcardConfig &config, const QString &column, Constants::ValueSource source)
        : WFilter(config, column, source, nullptr)
    {
    }
    QSharedPointer<ValueFilter> getFilter(bool) override { return {}; }
    bool setFilter(const QSharedPointer<ValueFilter> &, bool, QString &) override { return false; }
    void setMatchCase(bool) override {}
};

AlarmScreenConfiguration configuration(const QList<ColumnDefinition> &columns)
{
    AlarmScreenConfiguration config;
    FilterWidgetConfiguration widgets;
    widgets.setPanelPluginName(QStringLiteral("standardpanel"));
    config.setFilterWidgetConfig(widgets);
    config.setColumns(columns);
    return config;
}

ColumnDefinition column(const QString &id, int source = Constants::ValueSourceAlarm)
{
    return ColumnDefinition(source, id, id.toUpper());
}

QStringList editorColumns(const QWidget *page)
{
    QStringList ids;
    for (WFilter *editor : page->findChildren<WFilter *>())
        ids << editor->getColumnId();
    return ids;
}

} // namespace

class TestStandardPanel : public QObject
{
    Q_OBJECT
private slots:
    void pageHasOneEditorPerFilterableProperty()
    {
        const AlarmScreenConfiguration config =
            configuration({column(QStringLiteral("acknowledged")), column(QStringLiteral("text")),
                           column(QStringLiteral("dpe"), Constants::ValueSourceDpConfig), column(QStringLiteral("nosuch")),
                           column(QStringLiteral("text")), column(QStringLiteral("time")), column(QStringLiteral("ackable"))});
        StructuredFilterPageBuilder builder(&config);
        StructuredFilterPageBuilder::EditorKinds kinds = builder.getEditorKinds();
        kinds.insert(AlarmProp::Text,
                     {[](const WildcardConfig &wildcards, const QString &id, Constants::ValueSource source, const QString &) {
                          return new PlainEditor(wildcards, id, source);
                      },
                      true});
        builder.setEditorKinds(kinds);
        builder.setPropertyEditorKinds({});

        QStringList names;
        QScopedPointer<QWidget> page(builder.build(config, names));
        QVERIFY(!page->parent());
        QCOMPARE(editorColumns(page.data()),
                 QStringList({QStringLiteral("acknowledged"), QStringLiteral("text"), QStringLiteral("time"),
                              QStringLiteral("ackable")}));
        QCOMPARE(names, QStringList({QStringLiteral("text")}));
        // Each editor is labelled with its column's title.
        QStringList labels;
        for (QLabel *label : page->findChildren<QLabel *>())
            labels << label->text() + QLatin1Char('>') + label->buddy()->objectName();
        QCOMPARE(labels, QStringList({QStringLiteral("ACKNOWLEDGED>acknowledgedFilter"), QStringLiteral("TEXT>textFilter"),
                                      QStringLiteral("TIME>timeFilter"),
                                      QStringLiteral("ACKABLE>ackableFilter")}));
    }

    void rulesEditorsFollowTheProperty()
    {
        const AlarmScreenConfiguration config =
            configuration({column(QStringLiteral("priority")), column(QStringLiteral("time")),
                           column(QStringLiteral("alarmClass")), column(QStringLiteral("text")),
                           column(QStringLiteral("value"))});
        StructuredFilterPageBuilder builder(&config);
        QStringList names;
        QScopedPointer<QWidget> page(builder.build(config, names));
        const auto editor = [&page](const char *name) {
            return page->findChild<WFilter *>(QLatin1String(name) + QStringLiteral("Filter"));
        };
        QVERIFY(qobject_cast<WEditFilterRuleNumbers *>(editor("priority")));
        QVERIFY(qobject_cast<WEditFilterRuleNumbers *>(editor("value")));
        QVERIFY(qobject_cast<WEditFilterRuleDate *>(editor("time")));
        QVERIFY(qobject_cast<WEditFilterRuleSingleValue *>(editor("alarmClass")));
        QVERIFY(qobject_cast<WEditFilterRuleText *>(editor("text")));
        // Only the class list is filled by the completion service.
        QCOMPARE(names, QStringList{QStringLiteral("alarmClass")});
    }

    void panelComesFromTheModuleInBinPlugins()
    {
        TestProject project;
        QDir().mkpath(project.path() + QStringLiteral("/bin/plugins"));
        QVERIFY(QFile::copy(QStringLiteral(AS_STANDARD_PANEL_MODULE),
                            project.path() + QStringLiteral("/bin/plugins/standardpanel.so")));
        Resources::setProjectPaths({project.path() + QLatin1Char('/')});
        const AlarmScreenConfiguration config =
            configuration({column(QStringLiteral("acknowledged")), column(QStringLiteral("description"))});

        SourceAndFiltersUiFactory factory(&config);
        QScopedPointer<SourceAndFiltersUi> panel(factory.create(config, nullptr));
        QVERIFY(panel);
        QVERIFY(panel->getSourceUi());
        QVERIFY(panel->getQuickFilterEditor());
        auto *tabs = qobject_cast<TabbedStructuredFilterUi *>(panel->getStructuredFilterUi());
        QVERIFY(tabs);
        QCOMPARE(panel->getTabGroups().size(), 4);

        // The panel opens with one tab whose page the same module built.
        QCOMPARE(tabs->filterTabCount(), 1);
        auto *toggle = tabs->getFilterTabs().first()->findChild<WFixedFilterToggleButton *>();
        QVERIFY(toggle);
        QCOMPARE(toggle->getColumnId(), QStringLiteral("acknowledged"));
        auto *text = tabs->getFilterTabs().first()->findChild<StringPatternEditor *>();
        QVERIFY(text);
        QCOMPARE(text->getColumnId(), QStringLiteral("description"));

        // An edit in the tab reaches the owner through the panel, merged with the source.
        QSignalSpy changed(panel.data(), &SourceAndFiltersUi::structuredFilterChanged);
        QSignalSpy applied(panel.data(), &SourceAndFiltersUi::applyStructuredFilter);
        toggle->findChild<QToolButton *>()->click();
        QCOMPARE(changed.count(), 1);
        QTest::keyClicks(text->getTextEdit(), QStringLiteral("Pump*"));
        tabs->getApplyButton()->click();
        QCOMPARE(applied.count(), 1);
        const SourceAndFilter filter = applied.first().at(0).value<SourceAndFilter>();
        QVERIFY(filter.isEqual(panel->getFilter()));
        const FilterRuleSet &set = filter.getFilterContainer()->getRuleSets().value(0);
        QCOMPARE(set.getFilters().size(), 2);
        QVERIFY(!set.getFilters().first()->isEmpty());
        QCOMPARE(set.getFilters().last().dynamicCast<ValueFilterStringPattern>()->getFilterText(), QStringLiteral("Pump*"));

        // The panel forwards display and comparison to the tabs.
        QString error;
        QCOMPARE(panel->displayFilter(SourceAndFilter(), StructuredFilterUi::BasicFilter, error), WFilter::AllDisplayed);
        QVERIFY(panel->getFilter().getFilterContainer()->isEmpty());
        panel->compareWithFilter(filter, false);
        QVERIFY(!tabs->getNotAppliedLabel()->isHidden());
    }
};

QTEST_MAIN(TestStandardPanel)
#include "tst_standardpanel.moc"
