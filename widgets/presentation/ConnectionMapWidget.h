#pragma once

#include "MsgLoggingProducer.h"
#include "SystemInfo.h"
#include "widgets_export.h"

#include <QMap>
#include <QPointer>
#include <QRect>
#include <QWidget>

class AlarmsProxyModel;
class QPainter;

// A compact map of the systems known to the alarm table: one small square per
// system, in ascending system number, red while the platform has lost the
// system, yellow while the platform reaches it but its alarms do not arrive,
// green when both are fine. Fits into a status bar; the squares wrap into up
// to four rows and the widget asks for the width they need.
class WIDGETS_EXPORT ConnectionMapWidget : public QWidget, public MsgLoggingProducer
{
    Q_OBJECT
public:
    struct SystemConnectionInfo {
        QRect rect;
        bool connected = false;       // the platform reaches the system
        bool alarmsConnected = false; // the alarm model receives its alarms
        QString name;

        void draw(QPainter &painter, bool highlighted) const;
    };

    explicit ConnectionMapWidget(QWidget *parent = nullptr);

    void setProxyModel(AlarmsProxyModel *model);

    void updateModelConnections();
    void updateSystemConnections();
    bool buildSystemGeometry(const QSize &size);
    int findNumberOfRows(const QSize &size) const;
    // Refreshes both flags of `info`; true when either changed.
    bool checkSystemConnections(SystemConnectionInfo &info, const SystemInfo &systemInfo) const;

    const QMap<unsigned int, SystemConnectionInfo> &getSystems() const { return m_systems; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public slots:
    void connectedSystemsChanged();
    void systemListChanged();

signals:
    void activated(const QString &system);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    // The number of the system whose square holds `pos`; 0 when none does.
    unsigned int systemAt(const QPoint &pos) const;
    void moveHighlight(int step);
    void applyGeometry();
    QString stateText(const SystemConnectionInfo &info) const;

    QPointer<AlarmsProxyModel> m_proxyModel;
    QMap<unsigned int, SystemConnectionInfo> m_systems;
    int m_requiredWidth = 16;
    int m_requiredHeight = 16;
    unsigned int m_highlighted = 0; // the keyboard's system, shown while focused
};
