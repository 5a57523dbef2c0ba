#include "ActionAccessOwner.h"
#include "EwoActions.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QtTest>

namespace {
const QString kName = QStringLiteral("someAction");
}

class TestActionAccess : public QObject
{
    Q_OBJECT
private slots:
    void effectiveState()
    {
        ActionAccess access;
        QCOMPARE(access.getActionState(kName), ActionAccess::Enabled);
        QCOMPARE(access.getActionState(QString()), ActionAccess::Enabled);

        access.setActionPossibility(kName, false);
        QCOMPARE(access.getActionState(kName), ActionAccess::Disabled);
        access.setActionState(kName, ActionAccess::Hidden);
        QCOMPARE(access.getActionState(kName), ActionAccess::Hidden);

        access.setFixedActionState(kName, ActionAccess::Enabled);
        QCOMPARE(access.getActionState(kName), ActionAccess::Disabled); // still impossible
        access.setActionPossibility(kName, true);
        QCOMPARE(access.getActionState(kName), ActionAccess::Enabled); // fixed wins over Hidden
        access.resetFixedActionState(kName);
        QCOMPARE(access.getActionState(kName), ActionAccess::Hidden);

        // Names are case-sensitive keys; empty names are never stored.
        QCOMPARE(access.getActionState(kName.toUpper()), ActionAccess::Enabled);
        access.setActionState(QString(), ActionAccess::Hidden);
        access.setActionPossibility(QString(), false);
        QVERIFY(access.getActionPossibility(QString()));
    }

    void pushesReachWidgetsAndActions()
    {
        ActionAccess access;
        QWidget window;
        auto *button = new QPushButton(&window);
        QAction action(nullptr);
        QObject plain;
        window.show();
        access.registerActionControl(kName, button);
        access.registerActionControl(kName, &action);
        access.registerActionControl(kName, &plain); // neither kind: left alone, no harm

        access.setActionState(kName, ActionAccess::Disabled);
        QVERIFY(!button->isEnabled() && button->isVisible());
        QVERIFY(!action.isEnabled() && action.isVisible());

        access.setActionState(kName, ActionAccess::Hidden);
        QVERIFY(button->isHidden());
        QVERIFY(!button->isEnabled()); // hiding does not touch the enabled state
        QVERIFY(!action.isVisible() && !action.isEnabled());

        access.setActionState(kName, ActionAccess::Enabled);
        QVERIFY(button->isEnabled() && button->isVisible());
        QVERIFY(action.isEnabled() && action.isVisible());

        // An impossible action is never pushed as enabled.
        access.setActionPossibility(kName, false);
        QVERIFY(!button->isEnabled());
        access.setControlState(kName, ActionAccess::Enabled);
        QVERIFY(!action.isEnabled());

        // A control registered late takes the effective state at once.
        QPushButton late;
        access.registerActionControl(kName, &late);
        QVERIFY(!late.isEnabled());

        QVERIFY(!access.setQWidgetState(&action, ActionAccess::Enabled));
        QVERIFY(!access.setQActionState(button, ActionAccess::Enabled));
        QVERIFY(!access.setQActionState(&plain, ActionAccess::Enabled));
    }

    void fixedStateIsPushedAsSetNotAsEffective()
    {
        ActionAccess access;
        QPushButton button;
        access.registerActionControl(kName, &button);
        access.setFixedActionState(kName, ActionAccess::Disabled);
        QVERIFY(!button.isEnabled());
        access.setActionState(kName, ActionAccess::Enabled);
        QCOMPARE(access.getActionState(kName), ActionAccess::Disabled);
        QVERIFY(button.isEnabled()); // catches up at the next push of the effective state
        access.setActionPossibility(kName, true);
        QVERIFY(!button.isEnabled());
        access.resetFixedActionState(kName);
        QVERIFY(button.isEnabled());
        // Resetting a state that is not fixed pushes nothing.
        button.setEnabled(false);
        access.resetFixedActionState(kName);
        QVERIFY(!button.isEnabled());
    }

    void duplicatesAndDestroyedControls()
    {
        ActionAccess access;
        access.setActionState(kName, ActionAccess::Disabled);
        QAction kept(nullptr);
        access.registerActionControl(kName, &kept);
        QVERIFY(!kept.isEnabled());
        // A second registration under the same name is ignored, so it pushes nothing;
        // under another name it is a registration of its own.
        kept.setEnabled(true);
        access.registerActionControl(kName, &kept);
        QVERIFY(kept.isEnabled());
        access.setActionState(QStringLiteral("other"), ActionAccess::Hidden);
        access.registerActionControl(QStringLiteral("other"), &kept);
        QVERIFY(!kept.isVisible());

        auto *gone = new QAction(nullptr);
        access.registerActionControl(kName, gone);
        access.registerActionControl(QStringLiteral("lonely"), gone);
        delete gone;
        access.setActionState(kName, ActionAccess::Enabled);
        QVERIFY(kept.isEnabled());
        QCOMPARE(access.getControlledActions(),
                 (QStringList{QStringLiteral("lonely"), QStringLiteral("other"), kName}));
        // A name whose controls are all destroyed is forgotten at its next push.
        access.setActionState(QStringLiteral("lonely"), ActionAccess::Enabled);
        QCOMPARE(access.getControlledActions(), (QStringList{QStringLiteral("other"), kName}));
    }

    void copyFromOtherMergesAndRestyles()
    {
        ActionAccess source;
        QAction action(nullptr);
        source.setActionState(kName, ActionAccess::Disabled);
        source.setActionPossibility(QStringLiteral("impossible"), false);
        source.setFixedActionState(QStringLiteral("fixed"), ActionAccess::Hidden);
        source.registerActionControl(kName, &action);
        QVERIFY(!action.isEnabled());

        ActionAccess target;
        target.setActionState(QStringLiteral("own"), ActionAccess::Hidden);
        target.setFixedActionState(kName, ActionAccess::Enabled);
        target.copyFromOther(&source);
        target.copyFromOther(nullptr);

        QCOMPARE(target.getActionState(QStringLiteral("own")), ActionAccess::Hidden);
        QCOMPARE(target.getActionState(QStringLiteral("impossible")), ActionAccess::Disabled);
        QCOMPARE(target.getActionState(QStringLiteral("fixed")), ActionAccess::Enabled);
        // The control takes the target's effective state, where its fixed state rules.
        QVERIFY(action.isEnabled());
        target.resetFixedActionState(kName);
        QVERIFY(!action.isEnabled());
    }

    void userMovesItsGatheringToANewAccess()
    {
        ActionAccessOwner owner;
        ActionAccessUser component(new ActionAccess());
        QPushButton button;
        component.registerActionControl(QStringLiteral("custom"), &button);
        component.setActionState(QStringLiteral("custom"), ActionAccess::Disabled);

        component.setActionAccess(owner.getActionAccess());
        QCOMPARE(owner.getActionState(QStringLiteral("custom")), ActionAccess::Disabled);
        owner.setActionState(QStringLiteral("custom"), ActionAccess::Enabled);
        QVERIFY(button.isEnabled());

        const QStringList all = owner.getAllActions();
        QCOMPARE(all.size(), 26);
        QCOMPARE(all.last(), QStringLiteral("custom"));
        // The standard names keep the rights table's order, not their declaration order.
        QCOMPARE(all.indexOf(EwoActions::EditUserSettings), all.indexOf(EwoActions::UserSettings) + 1);
        // A standard name with controls is not listed twice.
        owner.registerActionControl(EwoActions::AckAll, &button);
        QCOMPARE(owner.getAllActions().size(), 26);

        ActionAccessUser sharing(&component);
        QCOMPARE(sharing.getActionAccess(), owner.getActionAccess());
        ActionAccessUser empty(static_cast<ActionAccess *>(nullptr));
        QVERIFY(empty.getActionAccess().isNull());
        QCOMPARE(empty.getAllActions(), EwoActions::getAllActions());
    }

    void menuHelpersFollowTheState()
    {
        ActionAccessOwner owner;
        QMenu menu;
        owner.setActionState(QStringLiteral("hidden"), ActionAccess::Hidden);
        owner.setActionPossibility(QStringLiteral("impossible"), false);

        QVERIFY(!owner.addMenuAction(&menu, QStringLiteral("hidden"), QStringLiteral("Hidden"), QString()));
        QVERIFY(menu.actions().isEmpty());

        QAction *disabled = owner.addMenuAction(&menu, QStringLiteral("impossible"),
                                                QStringLiteral("Impossible"), QString());
        QVERIFY(disabled);
        QVERIFY(!disabled->isEnabled());
        QCOMPARE(disabled->data().toString(), QStringLiteral("impossible"));
        QCOMPARE(disabled->text(), QStringLiteral("Impossible"));
        QVERIFY(disabled->icon().isNull());

        QAction *withIcon = owner.addMenuAction(&menu, kName, QStringLiteral("Text"),
                                                QStringLiteral(":vesk/icons/settingsEdit.png"));
        QVERIFY(withIcon->isEnabled());
        QVERIFY(!withIcon->icon().isNull());
        QCOMPARE(withIcon->parent(), &menu);
        QCOMPARE(menu.actions(), (QList<QAction *>{disabled, withIcon}));
        // Not a registered control: later changes do not reach it.
        owner.setActionState(kName, ActionAccess::Disabled);
        QVERIFY(withIcon->isEnabled());

        QMenu hiddenSub(QStringLiteral("hidden"));
        QMenu disabledSub(QStringLiteral("disabled"));
        owner.addSubMenu(&menu, QStringLiteral("hidden"), &hiddenSub);
        owner.addSubMenu(&menu, QStringLiteral("impossible"), &disabledSub);
        QCOMPARE(menu.actions().size(), 3);
        QCOMPARE(menu.actions().last()->menu(), &disabledSub);
        QVERIFY(!disabledSub.isEnabled());
    }
};

QTEST_MAIN(TestActionAccess)
#include "tst_actionaccess.moc"
