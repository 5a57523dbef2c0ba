#include "AlarmScreenConfiguration.h"
#include "BasicSourceAndFiltersUi.h"
#include "LogCapture.h"
#include "QuickFilterEditor.h"
#include "Resources.h"
#include "SourceAndFiltersUiFactory.h"
#include "SourceAndFiltersUiFactoryPlugin.h"
#include "SourceUiLong.h"
#include "SysOracleArchive.h"
#include "SystemSelectionModel.h"
#include "SystemSelectionTable.h"

#include <QComboBox>
#include <QPushButton>
#include <QtTest>

namespace {

// A factory whose log the test reads, searching `paths` for plug-ins.
struct Factory {
    explicit Factory(const QStringList &paths, int logFunc = MsgLoggerEnums::ShortFuncName) : log(logFunc)
    {
        Resources::setProjectPaths(paths);
    }
    LogCapture log;
    SourceAndFiltersUiFactory factory{&log.producer};
};

} // namespace

// The plug-in map lives for the whole process, so every case uses names of its own.
class TestPanelFactory : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_root;

    // A fresh project directory (with a trailing separator, as project paths have).
    QString project(const QString &name)
    {
        const QString path = m_root.filePath(name) + QLatin1Char('/');
        QDir().mkpath(path + QStringLiteral("bin/plugins"));
        return path;
    }

    static bool install(const QString &projectPath, const QString &module, const QString &asName)
    {
        return QFile::copy(QStringLiteral(AS_TEST_PLUGIN_DIR "/") + module + QStringLiteral(".so"),
                           trying(projectPath, asName));
    }

    static AlarmScreenConfiguration configFor(const QString &pluginName, bool noPanel = false)
    {
        AlarmScreenConfiguration config;
        FilterWidgetConfiguration widgets;
        widgets.setPanelPluginName(pluginName);
        widgets.setNoPanel(noPanel);
        config.setFilterWidgetConfig(widgets);
        return config;
    }

    static QString trying(const QString &projectPath, const QString &name)
    {
        return projectPath + QStringLiteral("bin/plugins/") + name + QStringLiteral(".so");
    }

    static QPushButton *button(const QWidget *source, const char *name)
    {
        return source->findChild<QPushButton *>(QLatin1String(name));
    }

private slots:
    void initTestCase() { QVERIFY(m_root.isValid()); }

    void builtInPanelWithoutPluginName()
    {
        LogCapture log(MsgLoggerEnums::ShortFuncName);
        SourceAndFiltersUiFactory factory(&log.producer);
        QWidget parent;
        QScopedPointer<SourceAndFiltersUi> panel(factory.create(configFor(QString()), &parent));
        QVERIFY(qobject_cast<BasicSourceAndFiltersUi *>(panel.data()));
        QCOMPARE(panel->parentWidget(), &parent);
        QVERIFY(panel->getQuickFilterEditor());
        QVERIFY(!panel->getStructuredFilterUi());
        QVERIFY(panel->getTabGroups().isEmpty());
        // A source selector that may apply, above the quick filter.
        parent.show();
        auto *source = qobject_cast<SourceUiLong *>(panel->getSourceUi());
        QVERIFY(source);
        QCOMPARE(source->parentWidget(), panel.data());
        QVERIFY(source->mayApplySettings());
        QVERIFY(button(source, "pushButtonApply")->isVisible());
        QVERIFY(source->geometry().bottom() <= panel->getQuickFilterEditor()->geometry().top());

        QStringList list{"kept"};
        QScopedPointer<QWidget> page(factory.buildStructuredFilterPageUi(configFor(QString()), list));
        QVERIFY(qobject_cast<BasicSourceAndFiltersUi *>(page.data()));
        QVERIFY(!page->parent());
        QCOMPARE(list, QStringList{"kept"});

        QVERIFY(!factory.create(configFor(QStringLiteral("anything"), true), &parent));
        QVERIFY(!factory.buildStructuredFilterPageUi(configFor(QString(), true), list));
        QVERIFY(log.lines().isEmpty());
        QVERIFY(!SourceAndFiltersUiFactory::getAllPlugins().contains(QStringLiteral("anything")));
    }

    void builtInPanelAppliesTheOperatorsChoice()
    {
        SysOracleArchive::getInstance()->setSystems({"North", "South", "West"});
        LogCapture log;
        QWidget parent;
        SourceAndFiltersUi *panel = SourceAndFiltersUiFactory(&log.producer).create(configFor(QString()), &parent);
        auto *source = qobject_cast<SourceUiLong *>(panel->getSourceUi());
        QVERIFY(source);
        parent.show();
        QSignalSpy applied(panel, &SourceAndFiltersUi::applyStructuredFilter);
        auto *combo = source->findChild<QComboBox *>(QStringLiteral("comboBoxMode"));
        combo->setCurrentIndex(1);
        emit combo->activated(1);
        SystemSelectionModel *systems = source->getSystemSelectionTable()->getModel();
        QVERIFY(systems->setData(systems->index(2, 0), Qt::Checked, Qt::CheckStateRole));
        QVERIFY(systems->setData(systems->index(0, 0), Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(applied.count(), 0);

        QTest::mouseClick(button(source, "pushButtonApply"), Qt::LeftButton);
        QCOMPARE(applied.count(), 1);
        const SourceAndFilter filter = applied.at(0).at(0).value<SourceAndFilter>();
        QCOMPARE(applied.at(0).at(1).toInt(), 0);
        QCOMPARE(filter.getSourceMode(), Constants::SourceModeHistory);
        QCOMPARE(filter.getSystems(), (QStringList{"West", "North"}));

        QSignalSpy abort(panel, &SourceAndFiltersUi::abortQuery);
        panel->displaySourceState(Constants::QueryRunning);
        QTest::mouseClick(button(source, "pushButtonAbort"), Qt::LeftButton);
        QCOMPARE(abort.count(), 1);
    }

    void validPluginIsLoadedOnce()
    {
        const QString proj = project(QStringLiteral("valid"));
        QVERIFY(install(proj, QStringLiteral("goodpanel"), QStringLiteral("good1")));
        Factory f({proj});

        QWidget parent;
        SourceAndFiltersUi *panel = f.factory.create(configFor(QStringLiteral("good1")), &parent);
        QVERIFY(panel);
        QCOMPARE(panel->objectName(), QStringLiteral("pluginPanel"));
        QCOMPARE(panel->parentWidget(), &parent);
        const QString path = trying(proj, QStringLiteral("good1"));
        QCOMPARE(f.log.lines(), (QStringList{"0|loadPlugin: loading plugin good1",
                                           "0|loadPluginInBinDir: trying to load " + path,
                                           "0|loadPluginInBinDir: plugin loaded " + path,
                                           "0|loadPlugin: plugin good1 has been loaded from " + proj + "bin/"}));
        QVERIFY(SourceAndFiltersUiFactory::getAllPlugins().value(QStringLiteral("good1")));

        f.log.clear();
        QStringList list;
        QScopedPointer<QWidget> page(f.factory.buildStructuredFilterPageUi(configFor(QStringLiteral("good1")), list));
        QCOMPARE(list, QStringList{"fromPlugin"});
        // Another factory shares the process's plug-ins.
        SourceAndFiltersUiFactory other(&f.log.producer);
        QVERIFY(other.create(configFor(QStringLiteral("good1")), &parent));
        QVERIFY(f.log.lines().isEmpty());
    }

    void pluginOfAnotherInterface()
    {
        const QString proj = project(QStringLiteral("other"));
        QVERIFY(install(proj, QStringLiteral("otherinterface"), QStringLiteral("other1")));
        Factory f({proj});

        QVERIFY(!f.factory.create(configFor(QStringLiteral("other1")), nullptr));
        const QString path = trying(proj, QStringLiteral("other1"));
        QCOMPARE(f.log.lines(), (QStringList{"0|loadPlugin: loading plugin other1",
                                           "0|loadPluginInBinDir: trying to load " + path,
                                           "2|loadPluginInBinDir: loaded plugin is of wrong type " + path,
                                           "2|loadPlugin: Plugin for building source & filters UI (other1) is not loaded",
                                           "2|create: No plugin found/loaded: other1"}));
        QVERIFY(SourceAndFiltersUiFactory::getAllPlugins().contains(QStringLiteral("other1")));
        QVERIFY(!SourceAndFiltersUiFactory::getAllPlugins().value(QStringLiteral("other1")));
    }

    void fileThatIsNoPlugin()
    {
        const QString proj = project(QStringLiteral("bogus"));
        QFile file(trying(proj, QStringLiteral("bogus1")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("this is not a shared library\n") > 0);
        file.close();
        Factory f({proj}, MsgLoggerEnums::NoFuncName);

        QVERIFY(!f.factory.loadPlugin(QStringLiteral("bogus1")));
        const QStringList lines = f.log.lines();
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines.at(1), "0|trying to load " + file.fileName());
        const QString notLoaded = QStringLiteral("2|plugin is not loaded: ");
        QVERIFY2(lines.at(2).startsWith(notLoaded) && lines.at(2).size() > notLoaded.size(), qPrintable(lines.at(2)));
        QCOMPARE(lines.at(3), QStringLiteral("2|Plugin for building source & filters UI (bogus1) is not loaded"));
    }

    void missingPluginIsSearchedOnce()
    {
        const QString withPlugins = project(QStringLiteral("missingA"));
        const QString withoutBin = m_root.filePath(QStringLiteral("missingB")) + QLatin1Char('/');
        QDir().mkpath(withoutBin);
        Factory f({withPlugins, withoutBin});

        QVERIFY(!f.factory.create(configFor(QStringLiteral("missing1")), nullptr));
        QCOMPARE(f.log.lines(),
                 (QStringList{"0|loadPlugin: loading plugin missing1",
                              "0|loadPluginInBinDir: no plugins directory under " + withoutBin + "bin/",
                              "0|loadPluginInBinDir: file missing1.so does not exist in " + withPlugins + "bin/plugins",
                              "2|loadPlugin: Plugin for building source & filters UI (missing1) is not loaded",
                              "2|create: No plugin found/loaded: missing1"}));

        // Installing it later changes nothing: a failed name is not tried again.
        QVERIFY(install(withPlugins, QStringLiteral("goodpanel"), QStringLiteral("missing1")));
        f.log.clear();
        QStringList list;
        QVERIFY(!f.factory.create(configFor(QStringLiteral("missing1")), nullptr));
        QVERIFY(!f.factory.buildStructuredFilterPageUi(configFor(QStringLiteral("missing1")), list));
        QCOMPARE(f.log.lines(), (QStringList{"2|create: No plugin found/loaded: missing1",
                                           "2|buildStructuredFilterPageUi: No plugin found/loaded: missing1"}));
    }

    void projectPathsAreSearchedLastFirst()
    {
        const QString sub = project(QStringLiteral("orderSub"));
        const QString proj = project(QStringLiteral("orderProj"));
        QVERIFY(install(sub, QStringLiteral("goodpanel"), QStringLiteral("order1")));
        QVERIFY(install(proj, QStringLiteral("goodpanel"), QStringLiteral("order1")));
        QVERIFY(install(sub, QStringLiteral("goodpanel"), QStringLiteral("order2")));
        Factory f({sub, proj}, MsgLoggerEnums::NoFuncName);

        QVERIFY(f.factory.loadPlugin(QStringLiteral("order1")));
        QCOMPARE(f.log.lines().last(), "0|plugin order1 has been loaded from " + proj + "bin/");
        QVERIFY(!f.log.lines().join('\n').contains(sub));

        f.log.clear();
        QVERIFY(f.factory.loadPlugin(QStringLiteral("order2")));
        const QString path = trying(sub, QStringLiteral("order2"));
        QCOMPARE(f.log.lines(), (QStringList{"0|loading plugin order2",
                                           "0|file order2.so does not exist in " + proj + "bin/plugins",
                                           "0|trying to load " + path, "0|plugin loaded " + path,
                                           "0|plugin order2 has been loaded from " + sub + "bin/"}));
    }

    void namesLeadingOutOfThePluginsDirectoryAreRefused_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("parent") << QStringLiteral("../evil");
        QTest::newRow("sub-directory") << QStringLiteral("plugins/evil");
        QTest::newRow("backslash") << QStringLiteral("..\\evil");
        QTest::newRow("dots alone") << QStringLiteral("..");
    }
    void namesLeadingOutOfThePluginsDirectoryAreRefused()
    {
        QFETCH(QString, name);
        const QString proj = project(QStringLiteral("evil"));
        QDir().mkpath(proj + QStringLiteral("bin/plugins/plugins"));
        QFile::remove(proj + QStringLiteral("bin/evil.so"));
        QFile::remove(proj + QStringLiteral("bin/plugins/plugins/evil.so"));
        QVERIFY(install(proj, QStringLiteral("goodpanel"), QStringLiteral("../evil")));
        QVERIFY(install(proj, QStringLiteral("goodpanel"), QStringLiteral("plugins/evil")));
        Factory f({proj});

        QVERIFY(!f.factory.create(configFor(name), nullptr));
        const QString refused = "plugin name " + name + " is not a plain file name, refused";
        QCOMPARE(f.log.lines(), (QStringList{"0|loadPlugin: loading plugin " + name, "2|loadPlugin: " + refused,
                                           "2|create: No plugin found/loaded: " + name}));
        f.log.clear();
        QVERIFY(!f.factory.loadPluginInBinDir(proj + QStringLiteral("bin/"), name));
        QCOMPARE(f.log.lines(), QStringList{"2|loadPluginInBinDir: " + refused});
    }
};

QTEST_MAIN(TestPanelFactory)
#include "tst_panelfactory.moc"
