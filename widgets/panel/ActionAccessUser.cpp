#include "ActionAccessUser.h"

#include "EwoActions.h"

#include <QAction>
#include <QIcon>
#include <QMenu>

ActionAccessUser::ActionAccessUser(ActionAccess *access)
{
    if (access)
        m_access.reset(access);
}

ActionAccessUser::ActionAccessUser(const ActionAccessUser *other)
{
    if (other)
        m_access = other->m_access;
}

ActionAccessUser::~ActionAccessUser() = default;

ActionAccess::ActionState ActionAccessUser::getActionState(const QString &name) const
{
    return m_access->getActionState(name);
}

void ActionAccessUser::setActionState(const QString &name, ActionAccess::ActionState state)
{
    m_access->setActionState(name, state);
}

void ActionAccessUser::setFixedActionState(const QString &name, ActionAccess::ActionState state)
{
    m_access->setFixedActionState(name, state);
}

void ActionAccessUser::resetFixedActionState(const QString &name)
{
    m_access->resetFixedActionState(name);
}

void ActionAccessUser::setActionPossibility(const QString &name, bool possible)
{
    m_access->setActionPossibility(name, possible);
}

void ActionAccessUser::registerActionControl(const QString &name, QObject *control)
{
    m_access->registerActionControl(name, control);
}

void ActionAccessUser::setActionAccess(const QSharedPointer<ActionAccess> &access)
{
    if (m_access && access)
        access->copyFromOther(m_access.data());
    m_access = access;
}

QStringList ActionAccessUser::getAllActions() const
{
    QStringList all = EwoActions::getAllActions();
    if (!m_access)
        return all;
    const QStringList controlled = m_access->getControlledActions();
    for (const QString &name : controlled) {
        if (!all.contains(name, Qt::CaseSensitive))
            all.append(name);
    }
    return all;
}

QAction *ActionAccessUser::addMenuAction(QMenu *menu, const QString &name, const QString &text,
                                         const QString &iconFile) const
{
    const ActionAccess::ActionState state = getActionState(name);
    if (state == ActionAccess::Hidden)
        return nullptr;
    QAction *action = iconFile.isEmpty() ? new QAction(text, menu)
                                         : new QAction(QIcon(iconFile), text, menu);
    action->setEnabled(state == ActionAccess::Enabled);
    action->setData(QVariant(name));
    menu->addAction(action);
    return action;
}

void ActionAccessUser::addSubMenu(QMenu *menu, const QString &name, QMenu *subMenu) const
{
    const ActionAccess::ActionState state = getActionState(name);
    if (state == ActionAccess::Hidden)
        return;
    subMenu->setEnabled(state == ActionAccess::Enabled);
    menu->addMenu(subMenu);
}
