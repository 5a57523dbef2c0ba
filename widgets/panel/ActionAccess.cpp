#include "ActionAccess.h"

#include <QAction>
#include <QWidget>

ActionAccess::ActionState ActionAccess::getActionState(const QString &name) const
{
    if (name.isEmpty())
        return Enabled;
    ActionState state = Enabled;
    const auto fixed = m_fixedStates.constFind(name);
    if (fixed != m_fixedStates.constEnd()) {
        state = fixed.value();
    } else {
        const auto set = m_states.constFind(name);
        if (set != m_states.constEnd())
            state = set.value();
    }
    if (state == Enabled && !getActionPossibility(name))
        return Disabled;
    return state;
}

bool ActionAccess::getActionPossibility(const QString &name) const
{
    return m_possible.value(name, true);
}

void ActionAccess::setActionState(const QString &name, ActionState state)
{
    if (name.isEmpty())
        return;
    m_states[name] = state;
    // The state as set, not the effective one: controls catch up with a fixed
    // state at its next push.
    setControlState(name, state);
}

void ActionAccess::setFixedActionState(const QString &name, ActionState state)
{
    if (name.isEmpty())
        return;
    m_fixedStates[name] = state;
    setControlState(name, state);
}

void ActionAccess::resetFixedActionState(const QString &name)
{
    if (m_fixedStates.remove(name) == 0)
        return;
    setControlState(name, getActionState(name));
}

void ActionAccess::setActionPossibility(const QString &name, bool possible)
{
    if (name.isEmpty())
        return;
    m_possible[name] = possible;
    setControlState(name, getActionState(name));
}

void ActionAccess::registerActionControl(const QString &name, QObject *control)
{
    if (name.isEmpty() || !control)
        return;
    for (auto it = m_controls.constFind(name); it != m_controls.constEnd() && it.key() == name;
         ++it) {
        if (it.value() == control)
            return;
    }
    m_controls.insert(name, QPointer<QObject>(control));
    setControlState(control, getActionState(name));
}

void ActionAccess::setControlState(const QString &name, ActionState state) const
{
    if (!m_controls.contains(name))
        return;
    auto it = m_controls.find(name);
    while (it != m_controls.end() && it.key() == name) {
        if (it.value().isNull())
            it = m_controls.erase(it);
        else
            ++it;
    }
    if (!m_controls.contains(name))
        return;
    if (state == Enabled && !getActionPossibility(name))
        state = Disabled;
    const QList<QPointer<QObject>> controls = m_controls.values(name);
    for (const QPointer<QObject> &control : controls)
        setControlState(control.data(), state);
}

void ActionAccess::setControlState(QObject *control, ActionState state) const
{
    if (!control)
        return;
    if (!setQWidgetState(control, state))
        setQActionState(control, state);
}

bool ActionAccess::setQWidgetState(QObject *control, ActionState state) const
{
    if (!control || !control->isWidgetType())
        return false;
    auto *widget = static_cast<QWidget *>(control);
    switch (state) {
    case Enabled:
        widget->setEnabled(true);
        widget->show();
        break;
    case Disabled:
        widget->setEnabled(false);
        widget->show();
        break;
    case Hidden:
        widget->hide();
        break;
    }
    return true;
}

bool ActionAccess::setQActionState(QObject *control, ActionState state) const
{
    auto *action = qobject_cast<QAction *>(control);
    if (!action)
        return false;
    switch (state) {
    case Enabled:
        action->setEnabled(true);
        action->setVisible(true);
        break;
    case Disabled:
        action->setEnabled(false);
        action->setVisible(true);
        break;
    case Hidden:
        action->setVisible(false);
        break;
    }
    return true;
}

void ActionAccess::copyFromOther(const ActionAccess *other)
{
    if (!other || other == this)
        return;
    for (auto it = other->m_states.constBegin(); it != other->m_states.constEnd(); ++it)
        m_states.insert(it.key(), it.value());
    for (auto it = other->m_possible.constBegin(); it != other->m_possible.constEnd(); ++it)
        m_possible.insert(it.key(), it.value());
    // A copy, so that registering never walks the map it changes.
    const QMultiMap<QString, QPointer<QObject>> controls = other->m_controls;
    for (auto it = controls.constBegin(); it != controls.constEnd(); ++it)
        registerActionControl(it.key(), it.value().data());
}

QStringList ActionAccess::getControlledActions() const
{
    return m_controls.uniqueKeys();
}
