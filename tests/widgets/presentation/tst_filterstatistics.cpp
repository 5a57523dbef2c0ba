#include "AlarmBurst.h"
#include "AlarmTestFactory.h"
#include "AlarmsModel.h"
#include "ColorEngine.h"
#include "DpHLGroup.h"
#include "DynVar.h"
#include "FilterStatisticsView.h"
#include "FilterStatisticsWidget.h"
#include "LogCapture.h"
#include "Manager.h"
#include "Spoiler.h"
#include "TestProject.h"
#include "TextVar.h"

#include <QLabel>
#include <QtTest>

using namespace AlarmTestFactory;

namespace {

const qint64 baseTime = 1700000000000;
const char *const ConfigDp = "StatsTest";

SourceAndFilter systemFilter(const QString &system)
{
    return sourceFilter({ruleSet(true, {patternFilter(QStringLiteral("system"), system)})});
}

// Item "a" counts SysA; its state colour blinks while alarms are unacknowledged.
QString itemA()
{
    return QString::fromUtf8(json(R"({'id': 'a', 'row': 0, 'column': 0, 'filterDp': 'FilterA', 'filter': FILTER,
        'text': '%id%: %matching%/%total% %state%', 'toolTip': '%unacknowledged% unack',
        'colors': {'%state%': {'rules': [{'when': 'unacknowledged', 'color': 'blinkRed'},
                                         {'when': 'matching', 'color': 'okGreen'}],
                               'default': '{0,0,255}'}},
        'backColor': '%state%', 'foreColor': '{255,255,0}'})"))
        .replace(QStringLiteral("FILTER"), QString::fromUtf8(systemFilter(QStringLiteral("SysA")).toJsonText()));
}

QString filterSet(const QStringList &items, const QString &backColor = QStringLiteral("none"))
{
    return QStringLiteral(R"({"grid": {"title": "Areas", "backColor": "%1", "items": [%2]}})")
        .arg(backColor, items.join(QLatin1Char(',')));
}

QSharedPointer<AlarmsModel> makeModel()
{
    auto model = QSharedPointer<AlarmsModel>::create();
    model->setAlarms({makeAlarm(QStringLiteral("SysA"), 1, 100, QStringLiteral("t"), baseTime),
                      makeAlarm(QStringLiteral("SysA"), 2, 100, QStringLiteral("t"), baseTime),
                      makeAlarm(QStringLiteral("SysB"), 3, 10, QStringLiteral("t"), baseTime,
                                AlarmInstance::CameAcknowledged)});
    return model;
}

void setSet(const QString &name, const QString &configDp, const QString &json)
{
    DynVar values;
    values.append(TextVar(name));
    values.append(TextVar(configDp));
    values.append(TextVar(json));
    const QString dp = QLatin1String(ConfigDp);
    QString error;
    QVERIFY2(Manager::dpSet({dp + ".SetName", dp + ".ConfigDp", dp + ".SetJSON"}, values, error), qPrintable(error));
}

QColor background(const QLabel *label)
{
    return label->palette().color(label->backgroundRole());
}

// Counts the paint events of a widget.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget) { widget->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            ++count;
        return false;
    }
};

} // namespace

class TestFilterStatistics : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        m_project.write("colorDB/colors", "\"okGreen\" N {0,255,0}\n"
                                          "\"blinkRed\" N <{255,0,0} 1 {255,255,255} 1>\n"
                                          "\"chainA\" \"chainB\"\n\"chainB\" \"chainC\"\n\"chainC\" N {1,2,3}\n");
        m_engine = ColorEngine::getInstance(&m_log.producer);
        for (const char *element : {".SetName", ".ConfigDp", ".SetJSON"}) {
            QString error;
            QVERIFY2(Manager::dpCreateElement(QLatin1String(ConfigDp) + QLatin1String(element), TextVar(""), error),
                     qPrintable(error));
        }
    }

    void cellRendersTemplatesAndColours()
    {
        FilterViewConfiguration config;
        QVERIFY2(config.parse(filterSet({itemA()})), qPrintable(config.getErrorText()));
        auto model = makeModel();
        LogCapture log;
        FilterStatisticsWidget cell(&log.producer);
        QSignalSpy content(&cell, &FilterStatisticsWidget::statsContentChanged);
        cell.configure(config.getGridConfig().getItems().first());
        cell.setModel(model);
        cell.show();
        QLabel *label = cell.getLabel();
        // The colour placeholder shows the current phase of the blinking
        // colour (the engine's timer runs, so whichever phase it is in).
        const QSharedPointer<Color> blinkRed = m_engine->getColor("blinkRed");
        const QColor before = blinkRed->getCurrentColor();
        QCOMPARE(label->text(), "a: 2/3 " + before.name());
        QCOMPARE(label->toolTip(), QStringLiteral("2 unack"));
        QCOMPARE(background(label), before);
        QVERIFY(label->autoFillBackground());
        QCOMPARE(label->palette().color(label->foregroundRole()), QColor(255, 255, 0));
        QVERIFY(!content.isEmpty());
        QCOMPARE(content.last().at(0).toString(), QStringLiteral("FilterA"));
        const auto stats = content.last().at(1).value<QMap<QString, QVariant>>();
        QCOMPARE(stats.value("%matching%"), QVariant(2));
        QCOMPARE(stats.value("itemTextFormat").toString(), QStringLiteral("%id%: %matching%/%total% %state%"));
        QVERIFY(!stats.contains("error"));

        // The blinking colour's next phase reaches background and text.
        QMetaObject::invokeMethod(m_engine.data(), "blinkingTimeout");
        const QColor after = blinkRed->getCurrentColor();
        QVERIFY(after != before);
        QCOMPARE(label->text(), "a: 2/3 " + after.name());
        QCOMPARE(background(label), after);

        // Counts follow the model; acknowledged alarms leave the blinking colour.
        AlarmBurst burst;
        burst.upsert(makeAlarm(QStringLiteral("SysA"), 1, 100, "t", baseTime, AlarmInstance::CameAcknowledged));
        burst.upsert(makeAlarm(QStringLiteral("SysA"), 2, 100, "t", baseTime, AlarmInstance::CameAcknowledged));
        burst.upsert(makeAlarm(QStringLiteral("SysA"), 4, 100, "t", baseTime, AlarmInstance::CameAcknowledged));
        model->applyBurst(burst);
        QCOMPARE(label->text(), QStringLiteral("a: 3/4 #00ff00"));
        QCOMPARE(background(label), QColor(0, 255, 0));

        // Mouse actions, with the position inside the cell.
        QSignalSpy pressed(&cell, &FilterStatisticsWidget::mousePressed);
        QSignalSpy clicked(&cell, &FilterStatisticsWidget::mouseClicked);
        QTest::mousePress(label, Qt::RightButton, Qt::NoModifier, QPoint(3, 4));
        QTest::mouseRelease(label, Qt::RightButton, Qt::NoModifier, QPoint(3, 4));
        QCOMPARE(pressed.size(), 1);
        QCOMPARE(pressed.at(0).at(1).toInt(), 3);
        QCOMPARE(pressed.at(0).at(2).toInt(), label->x() + 3);
        QCOMPARE(pressed.at(0).at(3).toInt(), label->y() + 4);
        QCOMPARE(clicked.size(), 1);
        QCOMPARE(clicked.at(0).at(0).value<FilterStatisticsWidget *>(), &cell);
        QVERIFY(log.lines().filter(QRegularExpression("^[23]\\|")).isEmpty());
    }

    void cellReportsWhatItLacks()
    {
        FilterViewConfiguration config;
        QVERIFY(config.parse(filterSet({R"({"id": "plain", "text": "no placeholders", "colors":
                                           {"%c%": {"default": "chainA"}}, "toolTip": "%c%"})"})));
        LogCapture log;
        FilterStatisticsWidget cell(&log.producer);
        cell.configure(config.getGridConfig().getItems().first());
        cell.setModel(makeModel());
        QCOMPARE(cell.getLabel()->text(), QStringLiteral("no placeholders"));
        // An alias of an alias has no colour: reported, the name stays.
        QCOMPARE(cell.getLabel()->toolTip(), QStringLiteral("chainA"));
        QVERIFY(log.lines().contains("2|invalid color chainA for placeHolder %c%"));
        QCOMPARE(cell.getStatisticsAsMap().value("error").toString(),
                 QStringLiteral("filter is not connected to configuration DP 'plain' (missing DP?)"));

        // Blinks of colours the cell does not show cause no repaint.
        PaintCounter paints(cell.getLabel());
        cell.show();
        QTRY_VERIFY(paints.count > 0);
        paints.count = 0;
        emit m_engine->colorChanged(QStringLiteral("blinkRed"), Qt::red);
        emit m_engine->colorChanged(QStringLiteral("chainA"), Qt::red);
        QCoreApplication::processEvents();
        QCOMPARE(paints.count, 0);
    }

    void viewFollowsTheConfigurationDatapoint()
    {
        setSet(QString(), QString(), QString());
        auto model = makeModel();
        LogCapture log;
        FilterStatisticsView view((WildcardConfig(&log.producer)));
        view.setModel(model);
        view.setUseSpoiler(true);
        QSignalSpy stats(&view, &FilterStatisticsView::statsChanged);
        QSignalSpy clicked(&view, &FilterStatisticsView::filterMouseClicked);
        view.setConfigDp(ConfigDp);
        view.setConfigDp(ConfigDp);
        QVERIFY2(view.isConnected(), qPrintable(view.getErrorText()));
        const auto received = [&log] { return log.lines().filter("[FilterConfigHotLink] Receiving").size(); };
        QTRY_COMPARE(received(), 1);
        QVERIFY(!view.getContent());

        setSet("Areas", "FilterSetDp", filterSet({itemA(), R"({"id": "b", "row": 1, "text": "%matching%"})"}));
        QTRY_COMPARE(view.getAllIds(), (QStringList{"a", "b"}));
        QCOMPARE(received(), 2); // connected once
        QVERIFY(qobject_cast<Spoiler *>(view.getContent()));
        QCOMPARE(view.getFilterStatistics("a").value("%matching%"), QVariant(2));
        QCOMPARE(view.getFilterStatistics("b").value("%matching%"), QVariant(3));
        QCOMPARE(view.getFilterStatistics("zz"),
                 (QMap<QString, QVariant>{{"error", QStringLiteral("filter with ID 'zz' not found")}}));

        // The cells' signals reach the owner.
        stats.clear();
        AlarmBurst burst;
        burst.upsert(makeAlarm(QStringLiteral("SysA"), 7, 100, "t", baseTime));
        model->applyBurst(burst);
        QCOMPARE(stats.size(), 2);
        QCOMPARE(view.getFilterStatistics("a").value("%matching%"), QVariant(3));
        auto *cell = view.findChild<FilterStatisticsWidget *>();
        QTest::mouseClick(cell->getLabel(), Qt::LeftButton);
        QCOMPARE(clicked.size(), 1);

        // Another set replaces the grid; bad JSON leaves the view empty, with
        // the reason in the log.
        setSet("Areas", "FilterSetDp", filterSet({R"({"id": "c"})"}));
        QTRY_COMPARE(view.getAllIds(), QStringList{"c"});
        log.clear();
        setSet("Broken", "FilterSetDp", "{\"grid\": ");
        QTRY_VERIFY(view.getAllIds().isEmpty());
        QVERIFY(!view.getContent());
        QCOMPARE(log.lines().filter(QRegularExpression("^[23]\\|")).size(), 2);
        QVERIFY(log.lines().filter(QRegularExpression("^3\\|Filter set JSON is not valid: ")).size() == 1);
        QVERIFY(log.lines().contains("2|input JSON text is: {\"grid\": "));

        log.clear();
        const QString unknownKind = filterSet({itemA()}).replace("stringPattern", "bogusFilter");
        setSet("Odd", "FilterSetDp", unknownKind);
        QTRY_VERIFY(!log.lines().filter("3|Error parsing JSON for filter set Odd: grid.items[0].filter").isEmpty());
        QVERIFY(log.lines().filter("3|").first().contains("bogusFilter"));
        QVERIFY(view.getAllIds().isEmpty());

        // An empty JSON clears without a word; unknown grid colours and the
        // tree layout are reported.
        setSet("Areas", "FilterSetDp", filterSet({R"({"id": "c"})"}));
        QTRY_COMPARE(view.getAllIds(), QStringList{"c"});
        log.clear();
        setSet("Areas", "FilterSetDp", QString());
        QTRY_VERIFY(view.getAllIds().isEmpty());
        QVERIFY(log.lines().filter(QRegularExpression("^[23]\\|")).isEmpty());
        setSet("Areas", "FilterSetDp", filterSet({R"({"id": "c"})"}, "noSuchColour"));
        QTRY_COMPARE(view.getAllIds(), QStringList{"c"});
        QVERIFY(log.lines().contains("2|Invalid color name 'noSuchColour' for grid container of filter statistics"));
        setSet("Areas", "FilterSetDp", R"({"view": "tree"})");
        QTRY_VERIFY(log.lines().contains("2|Filter view organized as tree is not implemented yet"));

        // A message with the wrong number of values changes nothing.
        setSet("Areas", "FilterSetDp", filterSet({R"({"id": "c"})"}));
        QTRY_COMPARE(view.getAllIds(), QStringList{"c"});
        FilterStatisticsView::FilterConfigHotLink hotLink(&view);
        DpHLGroup twoValues;
        twoValues.append(DpIdentifier(), std::make_unique<TextVar>("x"));
        twoValues.append(DpIdentifier(), std::make_unique<TextVar>("y"));
        hotLink.hotLinkCallBack(twoValues);
        QVERIFY(log.lines().contains("3|[FilterConfigHotLink]: list of variables contains 2, while 3 items are expected"));
        QCOMPARE(view.getAllIds(), QStringList{"c"});

        view.setConfigDp("NoSuchDp");
        QVERIFY(!view.isConnected());
        QVERIFY(!view.getErrorText().isEmpty());
    }

private:
    TestProject m_project;
    LogCapture m_log;
    QSharedPointer<ColorEngine> m_engine;
};

QTEST_MAIN(TestFilterStatistics)
#include "tst_filterstatistics.moc"
