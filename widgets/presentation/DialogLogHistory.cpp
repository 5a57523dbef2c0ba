#include "DialogLogHistory.h"

#include "MsgLoggerColoredModel.h"
#include "MsgLoggerModel.h"
#include "ui_DialogLogHistory.h"

#include <QPushButton>

DialogLogHistory::DialogLogHistory(const QSharedPointer<MsgLoggerModel> &model, QWidget *parent)
    : QDialog(parent), m_ui(new Ui::DialogLogHistory), m_model(model),
      m_coloredModel(new MsgLoggerColoredModel(this))
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    m_coloredModel->setSourceModel(m_model.data());
    m_ui->tableView->setModel(m_coloredModel);
    // Newest first: the message that brought the operator here is on top.
    m_ui->tableView->sortByColumn(MsgLoggerModel::TimeColumn, Qt::DescendingOrder);
    connect(m_ui->buttonBox, &QDialogButtonBox::clicked, this, &DialogLogHistory::buttonClicked);
    connect(m_coloredModel, &QAbstractItemModel::rowsInserted, this, &DialogLogHistory::rowsInserted);
    connect(m_coloredModel, &QAbstractItemModel::rowsRemoved, this, &DialogLogHistory::rowsRemoved);
    connect(m_coloredModel, &QAbstractItemModel::modelReset, this, &DialogLogHistory::modelReset);
    m_ui->tableView->resizeColumnsToContents();
    updateCounter();
}

DialogLogHistory::~DialogLogHistory() = default;

QTableView *DialogLogHistory::getView() const
{
    return m_ui->tableView;
}

QLabel *DialogLogHistory::getCounter() const
{
    return m_ui->counter;
}

void DialogLogHistory::buttonClicked(QAbstractButton *button)
{
    if (m_ui->buttonBox->standardButton(button) != QDialogButtonBox::Reset)
        return;
    if (auto *messages = qobject_cast<MsgLoggerModel *>(m_coloredModel->sourceModel()))
        messages->clear();
}

void DialogLogHistory::rowsInserted(const QModelIndex &, int, int)
{
    updateCounter();
}

void DialogLogHistory::rowsRemoved(const QModelIndex &, int, int)
{
    updateCounter();
}

void DialogLogHistory::modelReset()
{
    updateCounter();
}

void DialogLogHistory::updateCounter()
{
    m_ui->counter->setText(tr("Total: %1").arg(m_coloredModel->rowCount()));
}
