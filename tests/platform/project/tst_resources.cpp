#include "FileSysSlim.h"
#include "Resources.h"
#include "TestProject.h"

#include <QtTest>

class TestResources : public QObject
{
    Q_OBJECT
private slots:
    void commandLineAndSearchOrder()
    {
        TestProject sub;
        TestProject main;
        sub.write(QStringLiteral("colorDB/colors"), "sub");
        sub.write(QStringLiteral("config/only-sub"), "sub");
        main.write(QStringLiteral("colorDB/colors"), "main");

        Resources::setFromArguments({"app", "-proj", sub.path(), "-x", "-proj", main.path() + "/",
                                     "-base", "/opt/base"});
        QCOMPARE(Resources::pathes_,
                 (QStringList{sub.path() + FileSysSlim::PATH_CHAR, main.path() + FileSysSlim::PATH_CHAR}));
        QCOMPARE(Resources::getBasePath(), QStringLiteral("/opt/base/"));
        // The last configured path is searched first.
        QCOMPARE(Resources::findFile(QStringLiteral("colorDB/colors")),
                 QDir(main.path()).absoluteFilePath(QStringLiteral("colorDB/colors")));
        QCOMPARE(Resources::findFile(QStringLiteral("config/only-sub")),
                 QDir(sub.path()).absoluteFilePath(QStringLiteral("config/only-sub")));
        QVERIFY(Resources::findFile(QStringLiteral("config")).isEmpty()); // directories are not files
        QVERIFY(Resources::findFile(QStringLiteral("missing")).isEmpty());

        // Without -proj the configured paths stay.
        Resources::setFromArguments({"app", "-proj"});
        QCOMPARE(Resources::pathes_.size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestResources)
#include "tst_resources.moc"
