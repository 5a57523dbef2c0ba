#pragma once

#include "ActionAccess.h"
#include "widgets_export.h"

#include <QSharedPointer>
#include <QStringList>

class QAction;
class QMenu;

// Base of every component that shows user actions: it shares one ActionAccess
// with the owner and the other components. The forwarding operations assume an
// access object is held.
class WIDGETS_EXPORT ActionAccessUser
{
public:
    // Takes ownership of `access`; null leaves the user without an access object.
    explicit ActionAccessUser(ActionAccess *access);
    // Shares the access object of `other`.
    explicit ActionAccessUser(const ActionAccessUser *other);
    virtual ~ActionAccessUser();

    virtual ActionAccess::ActionState getActionState(const QString &name) const;
    virtual void setActionState(const QString &name, ActionAccess::ActionState state);
    virtual void setFixedActionState(const QString &name, ActionAccess::ActionState state);
    virtual void resetFixedActionState(const QString &name);
    virtual void setActionPossibility(const QString &name, bool possible);
    virtual void registerActionControl(const QString &name, QObject *control);

    // Moves what the current access object gathered into `access`, then shares it.
    void setActionAccess(const QSharedPointer<ActionAccess> &access);
    const QSharedPointer<ActionAccess> &getActionAccess() const { return m_access; }

    // The standard names followed by the custom names that have controls.
    QStringList getAllActions() const;

    // Adds an entry for `name` to `menu` as its state allows: none when hidden,
    // a disabled one when disabled. The entry carries the name as its data and
    // does not follow later state changes.
    QAction *addMenuAction(QMenu *menu, const QString &name, const QString &text,
                           const QString &iconFile) const;
    void addSubMenu(QMenu *menu, const QString &name, QMenu *subMenu) const;

private:
    QSharedPointer<ActionAccess> m_access;
};
