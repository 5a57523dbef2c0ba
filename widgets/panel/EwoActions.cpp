#include "EwoActions.h"

const QString EwoActions::BasicConfigApplied = QStringLiteral("basicConfigApplied");
const QString EwoActions::MouseEvent = QStringLiteral("mouseEvent");
const QString EwoActions::SwitchSourceMode = QStringLiteral("switchSourceMode");
const QString EwoActions::OraclePassRequest = QStringLiteral("oraclePassRequest");
const QString EwoActions::Settings = QStringLiteral("settings");
const QString EwoActions::AdminSettings = QStringLiteral("adminSettings");
const QString EwoActions::AdminAccessControl = QStringLiteral("adminAccessControl");
const QString EwoActions::AdminPopupMenu = QStringLiteral("adminPopupMenu");
const QString EwoActions::AdminOracleRdbSettings = QStringLiteral("adminOracleRdbSettings");
const QString EwoActions::AdminHelpFileTypes = QStringLiteral("adminHelpFileTypes");
const QString EwoActions::SourceControl = QStringLiteral("sourceControl");
const QString EwoActions::SaveFilter = QStringLiteral("saveFilter");
const QString EwoActions::LoadFilter = QStringLiteral("loadFilter");
const QString EwoActions::EditFilterSet = QStringLiteral("editFilterSet");
const QString EwoActions::UserSettings = QStringLiteral("userSettings");
const QString EwoActions::LoadUserSettings = QStringLiteral("loadUserSettings");
const QString EwoActions::SaveUserSettings = QStringLiteral("saveUserSettings");
const QString EwoActions::EditUserSettings = QStringLiteral("editUserSettings");
const QString EwoActions::DefaultUserSettings = QStringLiteral("defaultUserSettings");
const QString EwoActions::AckMultiple = QStringLiteral("ackMultiple");
const QString EwoActions::AckSelected = QStringLiteral("ackSelected");
const QString EwoActions::AckGone = QStringLiteral("ackGone");
const QString EwoActions::AckAll = QStringLiteral("ackAll");
const QString EwoActions::ExpandAllNodes = QStringLiteral("expandAllNodes");
const QString EwoActions::CollapseAllNodes = QStringLiteral("collapseAllNodes");

QStringList EwoActions::getAllActions()
{
    static const QStringList all = {
        BasicConfigApplied, MouseEvent, SwitchSourceMode, OraclePassRequest, Settings,
        AdminSettings, AdminAccessControl, AdminPopupMenu, AdminOracleRdbSettings,
        AdminHelpFileTypes, SourceControl, SaveFilter, LoadFilter, EditFilterSet,
        UserSettings, EditUserSettings, LoadUserSettings, SaveUserSettings,
        DefaultUserSettings, AckMultiple, AckSelected, AckGone, AckAll, ExpandAllNodes,
        CollapseAllNodes};
    return all;
}
