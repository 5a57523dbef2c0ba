#pragma once

#include "widgets_export.h"

#include <QMap>
#include <QPointer>
#include <QString>

class QObject;

// The rights model shared by all components that show user actions: a state per
// action, fixed states that override it, whether an action is possible at all, and
// the controls (widgets and menu actions) that represent each action and follow
// its state. Controls are not owned; destroyed ones are dropped lazily.
class WIDGETS_EXPORT ActionAccess
{
public:
    enum ActionState : qint32 { Enabled = 0, Disabled = 1, Hidden = 2 };

    ActionState getActionState(const QString &name) const;
    bool getActionPossibility(const QString &name) const;

    void setActionState(const QString &name, ActionState state);
    void setFixedActionState(const QString &name, ActionState state);
    void resetFixedActionState(const QString &name);
    void setActionPossibility(const QString &name, bool possible);
    void registerActionControl(const QString &name, QObject *control);

    // Pushes `state` to every live control of `name` (an impossible action is
    // never shown enabled) and forgets the destroyed ones.
    void setControlState(const QString &name, ActionState state) const;
    void setControlState(QObject *control, ActionState state) const;
    bool setQWidgetState(QObject *control, ActionState state) const;
    bool setQActionState(QObject *control, ActionState state) const;

    // Takes over the states, possibilities and controls of `other` (not its
    // fixed states); every control taken over gets this object's state.
    void copyFromOther(const ActionAccess *other);

    // The names that have controls registered, in key order.
    QStringList getControlledActions() const;

private:
    QMap<QString, ActionState> m_states;
    QMap<QString, ActionState> m_fixedStates;
    QMap<QString, bool> m_possible;
    // Pruning destroyed controls does not change what the object stands for,
    // hence mutable for the const push.
    mutable QMultiMap<QString, QPointer<QObject>> m_controls;
};
