#include "AlarmScreenConfiguration.h"
#include "BasicSourceAndFiltersUi.h"
#include "QuickFilterEditor.h"
#include "SourceAndFilter.h"
#include "SourceAndFiltersUiFactory.h"
#include "SourceUiLong.h"
#include "SysOracleArchive.h"
#include "SystemSelectionModel.h"
#include "SystemSelectionTable.h"
#include "TimeRangeEditor.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {

struct Fixture {
    AlarmScreenConfiguration config;
    QWidget owner;
    SourceAndFiltersUi *panel = nullptr;
    SourceUiLong *source = nullptr;
    Fixture()
    {
        SysOracleArchive::getInstance()->setSystems({"North", "South", "West"});
        config.setLogThreshold(4);
        SourceAndFiltersUiFactory factory(&config);
        panel = factory.create(config, &owner);
        if (panel)
            source = qobject_cast<SourceUiLong *>(panel->getSourceUi());
        owner.show();
    }
    template <typename T> T *child(const char *name) const
    {
        return source->findChild<T *>(QLatin1String(name));
    }
    void chooseHistory() const
    {
        auto *combo = child<QComboBox>("comboBoxMode");
        combo->setCurrentIndex(1);
        emit combo->activated(1);
    }
    void checkSystem(int row) const
    {
        SystemSelectionModel *model = source->getSystemSelectionTable()->getModel();
        QVERIFY(model->setData(model->index(row, 0), Qt::Checked, Qt::CheckStateRole));
    }
};

} // namespace

class TestBasicPanel : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { qRegisterMetaType<SourceAndFilter>(); }
    void factoryBuildsSelectorAndQuickFilter();
    void applyCarriesTheOperatorsChoice();
    void modifiedMarkFollowsAppliedFilter();
    void sourceCallsReachTheSelector();
};

void TestBasicPanel::factoryBuildsSelectorAndQuickFilter()
{
    Fixture f;
    QVERIFY(qobject_cast<BasicSourceAndFiltersUi *>(f.panel));
    QVERIFY(f.source);
    QCOMPARE(f.source->parentWidget(), f.panel);
    QVERIFY(f.panel->getQuickFilterEditor());
    QVERIFY(!f.panel->getStructuredFilterUi());
    QVERIFY(f.source->mayApplySettings());
    QVERIFY(f.child<QPushButton>("pushButtonApply")->isVisible());
    // The selector sits above the quick filter.
    QVERIFY(f.source->geometry().bottom() <= f.panel->getQuickFilterEditor()->geometry().top());
}

void TestBasicPanel::applyCarriesTheOperatorsChoice()
{
    Fixture f;
    QVERIFY(f.source);
    QSignalSpy changed(f.panel, &SourceAndFiltersUi::structuredFilterChanged);
    QSignalSpy applied(f.panel, &SourceAndFiltersUi::applyStructuredFilter);

    f.chooseHistory();
    f.checkSystem(2);
    f.checkSystem(0);
    TimeRangeEditor *editor = f.source->getTimeRangeEditor();
    editor->show();
    editor->typeSelected(QStringLiteral("LastDays"));
    editor->spinValueChanged(4);
    QVERIFY(changed.count() >= 4);
    QCOMPARE(applied.count(), 0);

    QTest::mouseClick(f.child<QPushButton>("pushButtonApply"), Qt::LeftButton);
    QCOMPARE(applied.count(), 1);
    const SourceAndFilter filter = applied.at(0).at(0).value<SourceAndFilter>();
    QCOMPARE(applied.at(0).at(1).toInt(), 0);
    QCOMPARE(filter.getSourceMode(), Constants::SourceModeHistory);
    QCOMPARE(filter.getSystems(), (QStringList{"West", "North"}));
    QCOMPARE(filter.getSelectionKind(), int(SourceAndFilter::SelectBySystems));
    QCOMPARE(filter.getTimeRange().getRangeType(), TimeRange::LastDays);
    QCOMPARE(filter.getTimeRange().getValueCount(), 4);
}

void TestBasicPanel::modifiedMarkFollowsAppliedFilter()
{
    Fixture f;
    QVERIFY(f.source);
    auto *mark = f.child<QLabel>("labelModified");
    const SourceAndFilter applied = f.panel->getFilter();
    f.panel->compareWithFilter(applied, true);
    QVERIFY(mark->isHidden());

    f.chooseHistory();
    f.panel->compareWithFilter(applied, false);
    QVERIFY(!mark->isHidden());

    f.source->prepareOnlineMode();
    f.panel->compareWithFilter(applied, false);
    QVERIFY(mark->isHidden());
}

void TestBasicPanel::sourceCallsReachTheSelector()
{
    Fixture f;
    QVERIFY(f.source);
    const QDateTime end = QDateTime::currentDateTime();
    QCOMPARE(f.panel->prepareArchiveMode(end.addSecs(-600), end, {"East"}),
             QStringLiteral("Unknwon system name: East"));
    QCOMPARE(f.panel->getFilter().getSourceMode(), Constants::SourceModeLive);
    QCOMPARE(f.panel->prepareArchiveMode(end.addSecs(-600), end, {"South"}), QString());
    const SourceAndFilter filter = f.panel->getFilter();
    QCOMPARE(filter.getSourceMode(), Constants::SourceModeHistory);
    QCOMPARE(filter.getSystems(), QStringList{"South"});
    QCOMPARE(filter.getTimeRange().getEndTime().toSecsSinceEpoch(), end.toSecsSinceEpoch());

    QSignalSpy abort(f.panel, &SourceAndFiltersUi::abortQuery);
    f.panel->displaySourceState(Constants::QueryRunning);
    QTest::mouseClick(f.child<QPushButton>("pushButtonAbort"), Qt::LeftButton);
    QCOMPARE(abort.count(), 1);
}

QTEST_MAIN(TestBasicPanel)
#include "tst_basicpanel.moc"
