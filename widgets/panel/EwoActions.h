#pragma once

#include "widgets_export.h"

#include <QString>
#include <QStringList>

// The names of the user actions of the alarm screen. The owner decides from the
// operator's rights which of them are enabled; components only ask by name.
class WIDGETS_EXPORT EwoActions
{
public:
    static const QString BasicConfigApplied;
    static const QString MouseEvent;
    static const QString SwitchSourceMode;
    static const QString OraclePassRequest;
    static const QString Settings;
    static const QString AdminSettings;
    static const QString AdminAccessControl;
    static const QString AdminPopupMenu;
    static const QString AdminOracleRdbSettings;
    static const QString AdminHelpFileTypes;
    static const QString SourceControl;
    static const QString SaveFilter;
    static const QString LoadFilter;
    static const QString EditFilterSet;
    static const QString UserSettings;
    static const QString LoadUserSettings;
    static const QString SaveUserSettings;
    static const QString EditUserSettings;
    static const QString DefaultUserSettings;
    static const QString AckMultiple;
    static const QString AckSelected;
    static const QString AckGone;
    static const QString AckAll;
    static const QString ExpandAllNodes;
    static const QString CollapseAllNodes;

    // All standard action names, in the order the owner's rights table lists them.
    static QStringList getAllActions();
};
