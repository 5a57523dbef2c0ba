#pragma once

#include "widgets_export.h"

#include <QDialog>
#include <QScopedPointer>

class AlarmsProxyModel;
class QTableView;
class SysConnectModel;

namespace Ui {
class DialogSystemConnections;
}

// The systems known to the alarm table and whether they are connected, as a
// grid that follows the connection state while the dialog is open.
class WIDGETS_EXPORT DialogSystemConnections : public QDialog
{
    Q_OBJECT
public:
    DialogSystemConnections(AlarmsProxyModel *proxyModel, QWidget *parent = nullptr);
    ~DialogSystemConnections() override;

    SysConnectModel *getModel() const { return m_model; }
    QTableView *getView() const;

private:
    QScopedPointer<Ui::DialogSystemConnections> m_ui;
    SysConnectModel *m_model;
};
