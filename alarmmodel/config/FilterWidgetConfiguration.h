#pragma once

#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>

// Configuration of the source and filter panel and of its completion values:
// the panel plug-in (empty: the built-in panel), the CTRL library and the
// master and slave completion functions, fixed completion lists per alarm
// property, and whether the screen has no panel at all.
class ALARMMODEL_EXPORT FilterWidgetConfiguration
{
public:
    FilterWidgetConfiguration() = default;

    QString getPanelPluginName() const { return m_panelPluginName; }
    void setPanelPluginName(const QString &name) { m_panelPluginName = name; }
    QString getCtrlLibrary() const { return m_ctrlLibrary; }
    void setCtrlLibrary(const QString &library) { m_ctrlLibrary = library; }
    QString getMasterFunction() const { return m_masterFunction; }
    void setMasterFunction(const QString &function) { m_masterFunction = function; }
    QString getSlaveFunction() const { return m_slaveFunction; }
    void setSlaveFunction(const QString &function) { m_slaveFunction = function; }
    // Property name -> the completion values offered for it (no CTRL call).
    QMap<QString, QStringList> getFixedCompletions() const { return m_fixedCompletions; }
    void setFixedCompletions(const QMap<QString, QStringList> &lists) { m_fixedCompletions = lists; }
    bool isNoPanel() const { return m_noPanel; }
    void setNoPanel(bool noPanel) { m_noPanel = noPanel; }

    bool operator==(const FilterWidgetConfiguration &other) const;

    // {"panelPlugin": "", "ctrlLibrary": "", "masterFunction": "", "slaveFunction": "",
    //  "fixedCompletions": {"priority": ["low", "high"]}, "noPanel": false}.
    // On failure nothing changes.
    QJsonObject toJson() const;
    bool fromJson(const QJsonObject &object, const QString &path, QString &error);

private:
    QString m_panelPluginName;
    QString m_ctrlLibrary;
    QString m_masterFunction;
    QString m_slaveFunction;
    QMap<QString, QStringList> m_fixedCompletions;
    bool m_noPanel = false;
};
