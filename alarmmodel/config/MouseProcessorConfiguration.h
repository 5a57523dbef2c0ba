#pragma once

#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QString>

// How mouse events on the alarm table are processed: by the owning widget
// (the default), or by a CTRL function of a library.
class ALARMMODEL_EXPORT MouseProcessorConfiguration
{
public:
    MouseProcessorConfiguration() = default;

    bool isProcessByWidget() const { return m_processByWidget; }
    void setProcessByWidget(bool byWidget) { m_processByWidget = byWidget; }
    QString getCtrlLibrary() const { return m_ctrlLibrary; }
    void setCtrlLibrary(const QString &library) { m_ctrlLibrary = library; }
    QString getCtrlFunction() const { return m_ctrlFunction; }
    void setCtrlFunction(const QString &function) { m_ctrlFunction = function; }

    bool operator==(const MouseProcessorConfiguration &other) const;

    // {"processByWidget": true, "ctrlLibrary": "", "ctrlFunction": ""}.
    // On failure nothing changes.
    QJsonObject toJson() const;
    bool fromJson(const QJsonObject &object, const QString &path, QString &error);

private:
    bool m_processByWidget = true;
    QString m_ctrlLibrary;
    QString m_ctrlFunction;
};
