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
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

// The factory's built-in panel, as an owner gets it: its parts are tested on
// their own, so this checks only how they are put together.
class TestBasicPanel : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        SysOracleArchive::getInstance()->setSystems({"North", "South", "West"});
        m_config.setLogThreshold(4);
        m_owner.reset(new QWidget);
        m_panel = SourceAndFiltersUiFactory(&m_config).create(m_config, m_owner.data());
        QVERIFY(qobject_cast<BasicSourceAndFiltersUi *>(m_panel));
        m_source = qobject_cast<SourceUiLong *>(m_panel->getSourceUi());
        QVERIFY(m_source);
        m_owner->show();
    }
    void cleanup() { m_owner.reset(); }

    void selectorAboveQuickFilterWithApplyButton()
    {
        QCOMPARE(m_source->parentWidget(), m_panel);
        QVERIFY(m_source->mayApplySettings());
        QVERIFY(button("pushButtonApply")->isVisible());
        QVERIFY(m_source->geometry().bottom() <= m_panel->getQuickFilterEditor()->geometry().top());
    }

    void applyCarriesTheOperatorsChoice()
    {
        QSignalSpy changed(m_panel, &SourceAndFiltersUi::structuredFilterChanged);
        QSignalSpy applied(m_panel, &SourceAndFiltersUi::applyStructuredFilter);
        auto *combo = m_source->findChild<QComboBox *>(QStringLiteral("comboBoxMode"));
        combo->setCurrentIndex(1);
        emit combo->activated(1);
        SystemSelectionModel *systems = m_source->getSystemSelectionTable()->getModel();
        QVERIFY(systems->setData(systems->index(2, 0), Qt::Checked, Qt::CheckStateRole));
        QVERIFY(systems->setData(systems->index(0, 0), Qt::Checked, Qt::CheckStateRole));
        TimeRangeEditor *editor = m_source->getTimeRangeEditor();
        editor->show();
        editor->typeSelected(QStringLiteral("LastDays"));
        editor->spinValueChanged(4);
        QVERIFY(changed.count() >= 4);
        QCOMPARE(applied.count(), 0);

        QTest::mouseClick(button("pushButtonApply"), Qt::LeftButton);
        QCOMPARE(applied.count(), 1);
        const SourceAndFilter filter = applied.at(0).at(0).value<SourceAndFilter>();
        QCOMPARE(applied.at(0).at(1).toInt(), 0);
        QCOMPARE(filter.getSourceMode(), Constants::SourceModeHistory);
        QCOMPARE(filter.getSystems(), (QStringList{"West", "North"}));
        QCOMPARE(filter.getSelectionKind(), int(SourceAndFilter::SelectBySystems));
        QCOMPARE(filter.getTimeRange().getRangeType(), TimeRange::LastDays);
        QCOMPARE(filter.getTimeRange().getValueCount(), 4);

        QSignalSpy abort(m_panel, &SourceAndFiltersUi::abortQuery);
        m_panel->displaySourceState(Constants::QueryRunning);
        QTest::mouseClick(button("pushButtonAbort"), Qt::LeftButton);
        QCOMPARE(abort.count(), 1);
    }

private:
    QPushButton *button(const char *name) const { return m_source->findChild<QPushButton *>(QLatin1String(name)); }

    AlarmScreenConfiguration m_config;
    QScopedPointer<QWidget> m_owner;
    SourceAndFiltersUi *m_panel = nullptr;
    SourceUiLong *m_source = nullptr;
};

QTEST_MAIN(TestBasicPanel)
#include "tst_basicpanel.moc"
