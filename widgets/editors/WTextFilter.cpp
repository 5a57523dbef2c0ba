#include "WTextFilter.h"

#include <QAction>

WTextFilter::WTextFilter(QWidget *parent) : QLineEdit(parent)
{
}

WTextFilter::WTextFilter(const MsgLoggingProducer *logger, QWidget *parent)
    : QLineEdit(parent), MsgLoggingProducer(logger)
{
}

void WTextFilter::enableClearButtonSignal()
{
    if (m_clearConnected)
        return;
    if (!isClearButtonEnabled())
        setClearButtonEnabled(true);
    // The clear button is an action of the line edit; it has no name to find it by.
    const QList<QAction *> actions = findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly);
    for (QAction *action : actions) {
        connect(action, &QAction::triggered, this, &WTextFilter::textCleared);
        m_clearConnected = true;
    }
    if (!m_clearConnected) {
        ASLOG(this, MsgLoggerEnums::Warning,
              QStringLiteral("Could not connect action 'clear'"
                             "to signal 'filterCleared' for instance of 'WTextFilter'"));
    }
}
