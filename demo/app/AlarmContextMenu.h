#pragma once

#include "MenuDescription.h"
#include "MsgLoggingProducer.h"

#include <QObject>
#include <QPointer>
#include <QSharedPointer>
#include <QVariantList>

class AlarmSimulator;
class QAction;
class QMenu;
class QWidget;

// Shows the context menus that the project's mouse-event script describes
// for a row of the alarm table, and carries out the chosen entry. The script
// and the demo agree on the entries' values (scripts/libs/demoMouseEvents.js).
class AlarmContextMenu : public QObject, public MsgLoggingProducer
{
    Q_OBJECT
public:
    enum Choice : int { Acknowledge = 1, CopyElementName = 2, GroupedView = 3 };

    AlarmContextMenu(const MsgLoggingProducer *logger, AlarmSimulator *simulator, QAction *groupedAction,
                     QWidget *parent);

    // The entries of `node` (the root or a cascade) added to `menu`; chosen
    // entries carry their value as data.
    static void addEntries(QMenu *menu, const MenuDescription &node);

public slots:
    // `args` are those of the script call: the event, the alarm, the related alarm.
    void show(const QSharedPointer<MenuDescription> &menu, const QVariantList &args);

signals:
    void statusMessage(const QString &text);

private:
    void carryOut(int choice, bool checked, const QVariantMap &alarm);

    QPointer<QWidget> m_parent;
    AlarmSimulator *m_simulator;
    QPointer<QAction> m_groupedAction;
};
