#include "DialogSystemConnections.h"

#include "SysConnectModel.h"
#include "ui_DialogSystemConnections.h"

DialogSystemConnections::DialogSystemConnections(AlarmsProxyModel *proxyModel, QWidget *parent)
    : QDialog(parent), m_ui(new Ui::DialogSystemConnections), m_model(new SysConnectModel(proxyModel, this))
{
    m_ui->setupUi(this);
    m_ui->tableView->setModel(m_model);
    connect(m_model, &SysConnectModel::columnWidhtCanChange, m_ui->tableView, &QTableView::resizeColumnsToContents);
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_ui->tableView->resizeColumnsToContents();
}

DialogSystemConnections::~DialogSystemConnections() = default;

QTableView *DialogSystemConnections::getView() const
{
    return m_ui->tableView;
}
