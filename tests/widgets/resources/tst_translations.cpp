#include "AlarmScreenConfiguration.h"
#include "AlarmScreenTranslations.h"
#include "Constants.h"
#include "LogCapture.h"
#include "SourceUiLong.h"
#include "SysOracleArchive.h"
#include "TimeRange.h"
#include "TimeRangeEditor.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// The texts an operator reads on a freshly built source selector and time
// range editor, in both layers (the model's time range and state texts too).
struct PanelTexts {
    QStringList modes;
    QString timeRangeButton;
    QStringList editorLabels;
    QString nowButton;
};

PanelTexts buildPanel(const AlarmScreenConfiguration &config)
{
    PanelTexts texts;
    SourceUiLong source(config);
    auto *modes = source.findChild<QComboBox *>(QStringLiteral("comboBoxMode"));
    for (int i = 0; modes && i < modes->count(); ++i)
        texts.modes << modes->itemText(i);
    if (auto *button = source.findChild<QPushButton *>(QStringLiteral("pushButtonTimeRange")))
        texts.timeRangeButton = button->text();

    TimeRangeEditor editor{TimeRange(&config)};
    for (const char *name : {"labelType", "labelFrom", "labelTo", "labelTimeZone"}) {
        auto *label = editor.findChild<QLabel *>(QLatin1String(name));
        texts.editorLabels << (label ? label->text() : QString());
    }
    if (auto *now = editor.findChild<QPushButton *>(QStringLiteral("pushButtonStartNow")))
        texts.nowButton = now->text();
    return texts;
}

void verifyEnglish(const PanelTexts &texts)
{
    QCOMPARE(texts.modes, QStringList({"Live", "History"}));
    QCOMPARE(texts.editorLabels, QStringList({"Type of time interval:", "From", "to", "Time zone  "}));
    QCOMPARE(texts.nowButton, QStringLiteral("Now"));
    QVERIFY2(texts.timeRangeButton.startsWith(QLatin1String("Last ")) ||
                 texts.timeRangeButton == QLatin1String("Today"),
             qPrintable(texts.timeRangeButton));
}

} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT
private slots:
    void init() { SysOracleArchive::getInstance()->setSystems({"Dist1", "Dist2"}); }
    void cleanup() { AlarmScreenTranslations::removeAll(); }

    void germanPanelAfterInstall()
    {
        LogCapture log;
        const AlarmScreenConfiguration config(&log.producer);
        verifyEnglish(buildPanel(config));

        QVERIFY(AlarmScreenTranslations::install(QLocale(QLocale::German), &log.producer));
        const PanelTexts german = buildPanel(config);
        QCOMPARE(german.modes, QStringList({"Aktuell", "Historisch"}));
        QCOMPARE(german.editorLabels, QStringList({"Art des Zeitbereichs:", "Von", "bis", "Zeitzone  "}));
        QCOMPARE(german.nowButton, QStringLiteral("Jetzt"));
        // The button's description comes from the model library's catalogue.
        QVERIFY2(german.timeRangeButton.startsWith(QLatin1String("Letzte ")) ||
                     german.timeRangeButton == QLatin1String("Heute"),
                 qPrintable(german.timeRangeButton));
        QCOMPARE(Constants::getSourceStateVisibleName(Constants::QueryRunning), QStringLiteral("Abfrage läuft"));

        // Log lines stay English whatever the operator reads.
        log.clear();
        SourceUiLong source(config);
        source.sourceButtonClicked(); // no sender: not one of its buttons
        QCOMPARE(log.lines(), QStringList({"3|click signal from unexpected button"}));

        // A region of the language finds the language's catalogue; English
        // needs none and takes the German texts away again.
        QVERIFY(AlarmScreenTranslations::install(QLocale(QLocale::German, QLocale::Austria), &log.producer));
        QCOMPARE(buildPanel(config).modes, QStringList({"Aktuell", "Historisch"}));
        log.clear();
        QVERIFY(AlarmScreenTranslations::install(QLocale(QLocale::English, QLocale::UnitedKingdom), &log.producer));
        QCOMPARE(log.lines(), QStringList());
        verifyEnglish(buildPanel(config));
    }

    void missingCatalogueFallsBackToEnglish_data()
    {
        QTest::addColumn<QString>("content"); // of the folder searched
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("missing");
        QTest::newRow("empty folder") << "" << QLocale(QLocale::German) << "alarmscreen_model";
        QTest::newRow("language without catalogue") << "real" << QLocale(QLocale::French) << "alarmscreen_model";
        QTest::newRow("corrupt file") << "corrupt" << QLocale(QLocale::German) << "alarmscreen_model";
        // Half a language is no language: the model's catalogue alone is not installed.
        QTest::newRow("widgets' catalogue missing") << "model only" << QLocale(QLocale::German)
                                                    << "alarmscreen_widgets";
    }

    void missingCatalogueFallsBackToEnglish()
    {
        QFETCH(QString, content);
        QFETCH(QLocale, locale);
        QFETCH(QString, missing);

        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QStringList builtIn = AlarmScreenTranslations::translationDirectories();
        QVERIFY(!builtIn.isEmpty());
        const auto builtFile = [&builtIn](const QString &name) {
            for (const QString &folder : builtIn) {
                if (QFile::exists(QDir(folder).filePath(name)))
                    return QDir(folder).filePath(name);
            }
            return QString();
        };
        for (const QString &catalogue : {QStringLiteral("alarmscreen_model"), QStringLiteral("alarmscreen_widgets")}) {
            const QString name = catalogue + QStringLiteral("_de.qm");
            const QString target = dir.filePath(name);
            if (content == QLatin1String("real") || (content == QLatin1String("model only") && catalogue == "alarmscreen_model")) {
                QVERIFY2(QFile::copy(builtFile(name), target), qPrintable(name));
            } else if (content == QLatin1String("corrupt")) {
                QFile file(target);
                QVERIFY(file.open(QIODevice::WriteOnly));
                file.write("not a catalogue");
            }
        }

        LogCapture log;
        const AlarmScreenConfiguration config(&log.producer);
        // German installed before: a failed switch must not leave it behind.
        QVERIFY(AlarmScreenTranslations::install(QLocale(QLocale::German), &log.producer));
        log.clear();

        QVERIFY(!AlarmScreenTranslations::install(locale, &log.producer, {dir.path()}));
        const QStringList lines = log.lines();
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.first().startsWith(QStringLiteral("2|no translation %1 for %2").arg(missing, locale.name())),
                 qPrintable(lines.first()));
        QVERIFY2(lines.first().contains(dir.path()), qPrintable(lines.first()));
        verifyEnglish(buildPanel(config));
        QCOMPARE(Constants::getSourceStateVisibleName(Constants::QueryRunning), QStringLiteral("Query running"));
    }

    void catalogueOfAProgram()
    {
        LogCapture log;
        QVERIFY(!AlarmScreenTranslations::installCatalogue(QStringLiteral("no_such_program"), QLocale(QLocale::German),
                                                           &log.producer));
        QCOMPARE(log.lines().size(), 1);
        QVERIFY(log.lines().first().startsWith(QLatin1String("2|no translation no_such_program for de_DE")));
        // English asks for nothing, not even an existing catalogue.
        log.clear();
        QVERIFY(AlarmScreenTranslations::installCatalogue(QStringLiteral("no_such_program"), QLocale::c(), &log.producer));
        QCOMPARE(log.lines(), QStringList());
    }
};

QTEST_MAIN(TestTranslations)
#include "tst_translations.moc"
