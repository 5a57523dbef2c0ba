#include "PopupFrame.h"

#include <QScreen>
#include <QWindow>

PopupFrame::PopupFrame(QWidget *parent) : QFrame(parent, Qt::Popup | Qt::FramelessWindowHint)
{
    setFrameShadow(QFrame::Raised);
    setFrameShape(QFrame::Box);
}

void PopupFrame::toggleVisibilityBelowWidget(QWidget *anchor)
{
    if (!anchor || !anchor->isVisible() || isVisible()) {
        hide();
        return;
    }
    QPoint p = anchor->mapToGlobal(QPoint(0, anchor->height()));
    const QWindow *window = anchor->window()->windowHandle();
    const QScreen *screen = window ? window->screen() : nullptr;
    if (screen) {
        const QRect area = screen->geometry();
        if (p.x() < area.left())
            p.setX(area.left());
        else if (p.x() + width() > area.right())
            p.setX(area.right() - width());
    }
    move(p);
    show();
}
