#include "SystemSelectionTable.h"

#include "SysOracleArchive.h"
#include "SystemSelectionModel.h"
#include "ui_SystemSelectionTable.h"

SystemSelectionTable::SystemSelectionTable(const MsgLoggingProducer *logger, QWidget *parent)
    : PopupFrame(parent),
      MsgLoggingProducer(logger),
      m_ui(new Ui::SystemSelectionTable),
      m_model(nullptr)
{
    m_ui->setupUi(this);
    const QSharedPointer<SysOracleArchive> archive = SysOracleArchive::getInstance();
    m_model = new SystemSelectionModel(this, archive->getSystems().size());
    m_ui->tableViewSystems->setModel(m_model);

    connect(archive.data(), &SysOracleArchive::contentChanged, m_model, &SystemSelectionModel::systemListChanged);
    connect(m_model, &SystemSelectionModel::selectionChanged, this, &SystemSelectionTable::sysSelectionChanged);
    connect(m_ui->lineEditFilter, &QLineEdit::textEdited, this, &SystemSelectionTable::filterTextChanged);
    connect(m_ui->pushButtonSelectAll, &QPushButton::clicked, this, &SystemSelectionTable::buttonClicked);
    connect(m_ui->pushButtonUnselectAll, &QPushButton::clicked, this, &SystemSelectionTable::buttonClicked);
    connect(m_ui->pushButtonClose, &QPushButton::clicked, this, &QWidget::hide);
}

SystemSelectionTable::~SystemSelectionTable() = default;

QStringList SystemSelectionTable::getSelectedSystems() const
{
    return m_model->getSelectedSystems();
}

int SystemSelectionTable::getTotalSystemCount() const
{
    return m_model->getTotalSystemCount();
}

QString SystemSelectionTable::setSelectedSystems(const QStringList &names)
{
    return m_model->setSelectedSystems(names);
}

QString SystemSelectionTable::setInitial(const QStringList &names)
{
    return m_model->setInitial(names);
}

void SystemSelectionTable::filterTextChanged(const QString &text)
{
    const int matching = m_model->setFilter(text);
    m_ui->labelMatching->setText(tr("Matching %1").arg(matching));
    m_ui->pushButtonSelectAll->setEnabled(matching > 0);
    m_ui->pushButtonUnselectAll->setEnabled(matching > 0);
}

void SystemSelectionTable::buttonClicked()
{
    const QObject *source = sender();
    if (source && source == m_ui->pushButtonSelectAll)
        m_model->setSelection(true);
    else if (source && source == m_ui->pushButtonUnselectAll)
        m_model->setSelection(false);
    else
        ASLOG(this, MsgLoggerEnums::Warning,
              QStringLiteral("click from unexpected source: ")
                  + (source ? source->objectName() : QStringLiteral("NULL")));
}

void SystemSelectionTable::sysSelectionChanged(int nSelected, int nTotal)
{
    m_ui->labelSelected->setText(tr("Selected %1/%2").arg(nSelected).arg(nTotal));
    emit selectionChanged(nSelected, nTotal);
}
