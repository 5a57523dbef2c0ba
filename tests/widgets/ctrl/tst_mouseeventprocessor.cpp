#include "ActionAccessOwner.h"
#include "AlarmsGroupRule.h"
#include "AlarmsModel.h"
#include "AlarmsProxyModel.h"
#include "Constants.h"
#include "Controller.h"
#include "EwoActions.h"
#include "LogCapture.h"
#include "MouseEventProcessor.h"
#include "MouseProcessorConfiguration.h"
#include "PlatformLogCapture.h"
#include "PopupAnswers.h"
#include "TestProject.h"

#include <QMenu>
#include <QStandardItemModel>
#include <QTreeView>
#include <QtTest>

namespace {

const char Library[] = R"(
function onEvent(event, alarm, related) {
    if (alarm.text === "throws")
        throw new Error("broken");
    if (alarm.text === "wrong")
        return [1, 2];
    if (alarm.text === "spins")
        while (true) { }
    if (alarm.text === "badJson")
        return {menuX: 1, menuY: 2, menu: '[{"type": "push"'};
    return {menuX: event.screenX, menuY: event.screenY,
            menu: JSON.stringify([{type: "push", label: "Ack " + alarm.dpe, value: event.type}])};
}
)";

AlarmInstancePtr makeAlarm(const QString &system, qint64 serial, const QString &text, qint64 related,
                           AlarmInstance::Direction direction = AlarmInstance::Came)
{
    AlarmInstance::Data data;
    data.ident = AlarmIdent(system, serial);
    if (related >= 0)
        data.related = AlarmIdent(system, related);
    data.dpe = QStringLiteral("%1:dp%2.alarm").arg(system).arg(serial);
    data.alarmText = text;
    data.timeMs = 1700000000000 + serial;
    data.priority = int(serial);
    data.direction = direction;
    return QSharedPointer<AlarmInstance>::create(data);
}

MouseProcessorConfiguration byCtrl(const QString &library, const QString &function)
{
    MouseProcessorConfiguration config;
    config.setProcessByWidget(false);
    config.setCtrlLibrary(library);
    config.setCtrlFunction(function);
    return config;
}

} // namespace

class TestMouseEventProcessor : public QObject
{
    Q_OBJECT

    // Presses (and releases) `buttons` in turn on the cell, through the
    // window, so that the application knows which buttons are held.
    void press(const QModelIndex &index, const QList<Qt::MouseButton> &buttons)
    {
        QWindow *window = m_view->windowHandle();
        const QPoint pos = m_view->viewport()->mapTo(m_view.get(), m_view->visualRect(index).center());
        for (Qt::MouseButton button : buttons)
            QTest::mousePress(window, button, {}, pos);
        for (Qt::MouseButton button : buttons)
            QTest::mouseRelease(window, button, {}, pos);
    }

private slots:
    void initTestCase()
    {
        m_project.write(QStringLiteral("scripts/libs/mouse.js"), Library);
        m_model = QSharedPointer<AlarmsModel>::create(&m_log.producer);
        m_model->setAlarms({makeAlarm("S1", 1, "menu", 2), makeAlarm("S1", 2, "menu", 1, AlarmInstance::Went),
                            makeAlarm("S2", 3, "throws", -1), makeAlarm("S2", 4, "wrong", -1),
                            makeAlarm("S2", 5, "spins", -1), makeAlarm("S2", 6, "badJson", -1)});
        m_proxy = std::make_unique<AlarmsProxyModel>(&m_log.producer);
        m_proxy->setColumns({ColumnDefinition(Constants::ValueSourceAlarm, "system", "System"),
                             ColumnDefinition(Constants::ValueSourceAlarm, "text", "Text")});
        m_proxy->setAlarmsModel(m_model);
        m_proxy->sort(0, Qt::AscendingOrder);
        m_view = std::make_unique<QTreeView>();
        m_view->setModel(m_proxy.get());
        m_view->resize(600, 400);
        m_view->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    }

    void cleanupTestCase()
    {
        m_view.reset();
        m_proxy.reset();
    }

    void argumentsForTheWidget()
    {
        LogCapture log;
        MouseEventProcessor processor(&log.producer, nullptr);
        processor.connectToTable(m_view.get());
        QSignalSpy events(&processor, &MouseEventProcessor::tableMouseEvent);
        const int before = Controller::thisPtr->checkInCount();
        const QModelIndex came = m_proxy->findAlarm(AlarmIdent("S1", 1), 1);
        QVERIFY(came.isValid());

        press(came, {Qt::LeftButton});
        press(came, {Qt::LeftButton, Qt::RightButton});
        QStringList typeAndButton;
        for (const QList<QVariant> &event : qAsConst(events)) {
            const QVariantMap source = event.at(0).toList().at(0).toMap();
            typeAndButton << source.value("type").toString() + '/' + source.value("button").toString();
        }
        // A click is always the left button's; the second press holds both.
        QCOMPARE(typeAndButton, QStringList({"0/1", "1/1", "0/1", "0/3", "1/1"}));
        const QVariantList args = events.at(0).at(0).toList();
        QCOMPARE(args.size(), 3);
        const QVariantMap source = args.at(0).toMap();
        QCOMPARE(source.value("type").toInt(), 0);
        QCOMPARE(source.value("button").toInt(), 1);
        QCOMPARE(source.value("row").toList(), QVariantList{came.row()});
        QCOMPARE(source.value("columnSource").toInt(), int(Constants::ValueSourceAlarm));
        QCOMPARE(source.value("columnId").toString(), QStringLiteral("text"));
        QVERIFY(source.contains("screenX") && source.contains("screenY"));
        const QVariantMap alarm = args.at(1).toMap();
        QCOMPARE(alarm.size(), AlarmProp::all().size());
        QCOMPARE(alarm.value("dpe").toString(), QStringLiteral("S1:dp1.alarm"));
        QCOMPARE(alarm.value("priority").userType(), int(QMetaType::Int)); // the edit value
        // A time that is not set has no edit value: its display text stands in.
        QCOMPARE(alarm.value("ackTime"), QVariant(QString()));
        QCOMPARE(args.at(2).toMap().value("dpe").toString(), QStringLiteral("S1:dp2.alarm"));

        // Without a related alarm the third map holds nulls; display role
        // passes texts.
        processor.setAlarmDataRole(Qt::ItemDataRole(5));
        processor.setAlarmDataRole(Qt::DisplayRole);
        processor.tableCellDoubleClicked(m_proxy->findAlarm(AlarmIdent("S2", 3), 0));
        const QVariantList alone = events.last().at(0).toList();
        QCOMPARE(alone.at(0).toMap().value("type").toInt(), 2);
        QCOMPARE(alone.at(1).toMap().value("priority"), QVariant(QStringLiteral("3")));
        QVERIFY(!alone.at(2).toMap().value("dpe").isValid());

        QStandardItemModel other(1, 1);
        processor.tableCellClicked(other.index(0, 0));
        QCOMPARE(events.count(), 6);
        QCOMPARE(log.lines(), QStringList({"3|unexpected data role 5 for MouseEventProcessor",
                                           "3|Table model is not AlarmsProxyModel"}));
        QCOMPARE(Controller::thisPtr->checkInCount(), before); // no library for the widget's events
    }

    void groupNodeMenu()
    {
        GroupingConfiguration grouping(&m_log.producer, QStringLiteral("by system"));
        grouping.addRule(QSharedPointer<AlarmsGroupRule>::create(Constants::ValueSourceAlarm, QStringLiteral("system")));
        m_proxy->setGrouping(grouping);
        m_view->expandAll();
        ActionAccessOwner owner;
        MouseEventProcessor processor(&m_log.producer, &owner);
        processor.setConfig(byCtrl(QStringLiteral("mouse"), QStringLiteral("onEvent")));
        processor.connectToTable(m_view.get());
        QSignalSpy menus(&processor, &MouseEventProcessor::contextMenuRequested);
        const QModelIndex group = m_proxy->index(0, 0);
        QVERIFY(!m_proxy->getAlarmAtRow(group));

        QStringList offered;
        answerNextMenu(this, QStringLiteral("Collapse all nodes"), &offered);
        press(group, {Qt::RightButton});
        QCOMPARE(offered, QStringList({"Expand all nodes", "Collapse all nodes"}));
        QVERIFY(!m_view->isExpanded(group));

        owner.setActionState(EwoActions::CollapseAllNodes, ActionAccess::Hidden);
        answerNextMenu(this, QStringLiteral("Expand all nodes"), &offered);
        press(group, {Qt::RightButton});
        QCOMPARE(offered, QStringList{"Expand all nodes"});
        QVERIFY(m_view->isExpanded(group));

        // Another column, or another button held too: nothing at all.
        offered.clear();
        const int pending = Controller::thisPtr->pendingCallCount();
        press(m_proxy->index(0, 1), {Qt::RightButton});
        press(group, {Qt::LeftButton, Qt::RightButton});
        QCoreApplication::processEvents();
        QVERIFY(offered.isEmpty());
        QCOMPARE(Controller::thisPtr->pendingCallCount(), pending);

        // A row below a group node: its row path starts with the group's row.
        QSignalSpy events(&processor, &MouseEventProcessor::tableMouseEvent);
        processor.setConfig(MouseProcessorConfiguration());
        const QModelIndex child = m_proxy->findAlarm(AlarmIdent("S2", 4), 0);
        processor.tableCellClicked(child);
        QCOMPARE(events.last().at(0).toList().at(0).toMap().value("row").toList(),
                 QVariantList({child.parent().row(), child.row()}));
        m_proxy->setGrouping(GroupingConfiguration());
        QCOMPARE(menus.count(), 0);
    }

    void ctrlAnswers()
    {
        LogCapture log(MsgLoggerEnums::ShortFuncName);
        log.producer.setLogUserLogThreshold(2);
        PlatformLogCapture platformLog;
        Controller::thisPtr->setScriptTimeout(300);
        const int before = Controller::thisPtr->checkInCount();
        auto processor = std::make_unique<MouseEventProcessor>(&log.producer, nullptr);
        processor->setConfig(byCtrl(QStringLiteral("mouse"), QStringLiteral("onEvent")));
        QSignalSpy menus(processor.get(), &MouseEventProcessor::contextMenuRequested);
        const auto click = [&](qint64 serial) {
            processor->tableCellClicked(m_proxy->findAlarm(AlarmIdent(serial < 3 ? "S1" : "S2", serial), 0));
        };

        click(1);
        QTRY_COMPARE(menus.count(), 1);
        const auto menu = menus.first().at(0).value<QSharedPointer<MenuDescription>>();
        QCOMPARE(menu->getItems().first()->getLabel(), QStringLiteral("Ack S1:dp1.alarm"));
        QCOMPARE(menu->getItems().first()->getValue(), 1);
        QCOMPARE(menus.first().at(1).toList().at(1).toMap().value("dpe").toString(), QStringLiteral("S1:dp1.alarm"));

        // Faulty answers give their line and nothing else; the library goes on.
        for (qint64 serial : {3, 4, 5, 6})
            click(serial);
        click(2);
        QTRY_COMPARE(menus.count(), 2);
        QCOMPARE(log.lines(),
                 QStringList({"3|MenuDescription: No return value from CTRL function onEvent",
                              "3|MenuDescription: The value returned by CTRL function onEvent is DYN_VAR, expected "
                              "type is MAPPING_VAR",
                              "3|MenuDescription: No return value from CTRL function onEvent",
                              "3|parseMenu: Failed to parse menu description returned by onEvent: "
                              "unterminated string"}));
        Controller::thisPtr->setScriptTimeout(5000);

        // Start results: 1 is a failure, anything else a running call.
        log.clear();
        Controller::thisPtr->forceNextStartResult(1);
        click(1);
        Controller::thisPtr->forceNextStartResult(-2);
        click(1);
        QTRY_COMPARE(menus.count(), 3);
        QCOMPARE(log.lines(), QStringList{"3|processTableEventByCtrl: call of function onEvent in library mouse failed"});

        // The library is shared, released with the last processor, then
        // checked in again.
        MouseEventProcessor second(&log.producer, nullptr);
        second.setConfig(byCtrl(QStringLiteral("mouse"), QStringLiteral("onEvent")));
        second.tableCellClicked(m_proxy->findAlarm(AlarmIdent("S1", 1), 0));
        QCOMPARE(MouseEventProcessor::getCtrlLibCount(), 1);
        QCOMPARE(Controller::thisPtr->checkInCount(), before + 1);

        // An answer for a processor that is gone is dropped.
        Controller::thisPtr->setAnswerDelay(QStringLiteral("mouse"), 50);
        click(1);
        processor.reset();
        QTRY_COMPARE(Controller::thisPtr->pendingCallCount(), 0);
        Controller::thisPtr->setAnswerDelay(QStringLiteral("mouse"), 0);
        QCOMPARE(menus.count(), 3);
        QCOMPARE(MouseEventProcessor::getCtrlLibCount(), 1);
    }

    void libraryCheckedInAgainAfterTheLastProcessor()
    {
        LogCapture log;
        PlatformLogCapture platformLog;
        QCOMPARE(MouseEventProcessor::getCtrlLibCount(), 0);
        const int before = Controller::thisPtr->checkInCount();
        MouseEventProcessor processor(&log.producer, nullptr);
        processor.setConfig(byCtrl(QStringLiteral("mouse"), QString()));
        const QModelIndex index = m_proxy->findAlarm(AlarmIdent("S1", 1), 0);
        processor.tableCellClicked(index);
        processor.setConfig(byCtrl(QStringLiteral("missing"), QStringLiteral("onEvent")));
        processor.tableCellClicked(index);
        processor.tableCellClicked(index);
        processor.setConfig(byCtrl(QStringLiteral("mouse"), QStringLiteral("onEvent")));
        processor.tableCellClicked(index);
        QCOMPARE(Controller::thisPtr->checkInCount(), before + 3);
        QCOMPARE(log.lines(),
                 QStringList({"3|Empty event CTRL function for MouseEventProcessor",
                              "3|call of function  in library mouse failed",
                              "3|Failed to check in script, returned value -1, script: #uses \"missing\"",
                              "3|Failed to check in script, returned value -1, script: #uses \"missing\""}));
        QTRY_COMPARE(Controller::thisPtr->pendingCallCount(), 0);
    }

private:
    TestProject m_project;
    LogCapture m_log;
    QSharedPointer<AlarmsModel> m_model;
    std::unique_ptr<AlarmsProxyModel> m_proxy;
    std::unique_ptr<QTreeView> m_view;
};

QTEST_MAIN(TestMouseEventProcessor)
#include "tst_mouseeventprocessor.moc"
