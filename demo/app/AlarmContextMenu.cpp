#include "AlarmContextMenu.h"

#include "AlarmSimulator.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>

AlarmContextMenu::AlarmContextMenu(const MsgLoggingProducer *logger, AlarmSimulator *simulator,
                                   QAction *groupedAction, QWidget *parent)
    : QObject(parent), MsgLoggingProducer(logger), m_parent(parent), m_simulator(simulator),
      m_groupedAction(groupedAction)
{
}

void AlarmContextMenu::addEntries(QMenu *menu, const MenuDescription &node)
{
    for (const QSharedPointer<MenuDescription> &item : node.getItems()) {
        switch (item->getType()) {
        case MenuDescription::Separator:
            menu->addSeparator();
            break;
        case MenuDescription::Label: {
            QAction *label = menu->addAction(item->getLabel());
            label->setEnabled(false);
            break;
        }
        case MenuDescription::Cascade: {
            QMenu *sub = menu->addMenu(item->getLabel());
            sub->setEnabled(item->isEnabled());
            addEntries(sub, *item);
            break;
        }
        default: {
            QAction *action = menu->addAction(item->getLabel());
            action->setData(item->getValue());
            action->setEnabled(item->isEnabled());
            if (item->getType() == MenuDescription::Check) {
                action->setCheckable(true);
                action->setChecked(item->isChecked());
            }
            break;
        }
        }
    }
}

void AlarmContextMenu::show(const QSharedPointer<MenuDescription> &menu, const QVariantList &args)
{
    // A menu answered for a row that the operator has long left is still
    // about that row's alarm: the arguments carry it.
    if (!menu || args.size() < 2 || !m_parent)
        return;
    QMenu popup(m_parent);
    popup.setObjectName(QStringLiteral("alarmContextMenu"));
    addEntries(&popup, *menu);
    const QAction *chosen = popup.exec(QPoint(menu->getMenuX(), menu->getMenuY()));
    if (chosen && chosen->data().isValid())
        carryOut(chosen->data().toInt(), chosen->isChecked(), args.at(1).toMap());
}

void AlarmContextMenu::carryOut(int choice, bool checked, const QVariantMap &alarm)
{
    const QString system = alarm.value(QStringLiteral("system")).toString();
    const QString dpe = alarm.value(QStringLiteral("dpe")).toString();
    switch (choice) {
    case Acknowledge:
        if (m_simulator->acknowledge(system, dpe))
            emit statusMessage(tr("Acknowledged %1").arg(dpe));
        else
            emit statusMessage(tr("%1 has no alarm to acknowledge").arg(dpe));
        break;
    case CopyElementName:
        QApplication::clipboard()->setText(dpe);
        emit statusMessage(tr("Copied %1").arg(dpe));
        break;
    case GroupedView:
        if (m_groupedAction && m_groupedAction->isEnabled())
            m_groupedAction->setChecked(checked);
        break;
    default:
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("the demo has no meaning for menu value %1").arg(choice));
        break;
    }
}
