#pragma once

#include "widgets_export.h"

#include <QFrame>

// A small frameless pop-up that the source selector shows below one of its buttons
// (the time range editor, the system table, the query state).
class WIDGETS_EXPORT PopupFrame : public QFrame
{
    Q_OBJECT
public:
    explicit PopupFrame(QWidget *parent = nullptr);

    // Shows the frame right below `anchor`, kept inside the anchor's screen
    // horizontally, or hides it when it is already shown (or there is nothing
    // visible to anchor it to).
    void toggleVisibilityBelowWidget(QWidget *anchor);
};
