#pragma once

#include "alarmmodel_export.h"

#include <QObject>

// Enumerations of the operator's own settings of an alarm screen.
class ALARMMODEL_EXPORT UserSettings
{
    Q_GADGET
public:
    UserSettings() = delete;

    // What to do with the default filter of the structured filter editor.
    enum DefaultFilterAction : int {
        DefaultFilterEnable = 0,        // use the default filter; keep what is held
        DefaultFilterDisable = 1,       // stop using it and drop it
        DefaultFilterSetAndShow = 2,    // use the given filter as default and show it
        DefaultFilterClearAndShow = 3   // use an empty default and show it
    };
    Q_ENUM(DefaultFilterAction)

    // How an area of the screen (for example the filter area) is shown.
    enum AsAreaVisibility : int {
        AreaExpanded = 0,  // shown and unfolded
        AreaCollapsed = 1, // shown, folded away
        AreaHidden = 2     // not shown
    };
    Q_ENUM(AsAreaVisibility)
};
