#include "QueryStateDisplay.h"

#include "SourceStateStyle.h"
#include "ui_QueryStateDisplay.h"

#include <QStyle>

QueryStateDisplay::QueryStateDisplay(QWidget *parent) : PopupFrame(parent), m_ui(new Ui::QueryStateDisplay)
{
    m_ui->setupUi(this);
    m_ui->pushButtonAbort->setIcon(style()->standardIcon(QStyle::SP_BrowserStop));
    m_ui->pushButtonAbort->setEnabled(false);
    connect(m_ui->pushButtonAbort, &QPushButton::clicked, this, &QueryStateDisplay::abortQuery);
    SourceStateStyle::showState(m_ui->labelState, m_state);
    connect(&m_stateTimer, &QTimer::timeout, this, &QueryStateDisplay::stateTimerTick);
    m_stateTimer.start(1000);
}

QueryStateDisplay::~QueryStateDisplay() = default;

void QueryStateDisplay::displaySourceState(Constants::SourceState state)
{
    if (state == m_state)
        return;
    m_state = state;
    const bool measured = SourceStateStyle::isMeasuredState(state);
    if (!measured)
        m_queryStart = QDateTime();
    else if (!m_queryStart.isValid())
        m_queryStart = QDateTime::currentDateTime();
    m_ui->pushButtonAbort->setEnabled(measured);
    SourceStateStyle::showState(m_ui->labelState, state);
}

void QueryStateDisplay::displaySourceCounts(unsigned int totalRead, unsigned int matching)
{
    m_ui->labelTotal->setText(QString::number(totalRead));
    m_ui->labelMatching->setText(QString::number(matching));
}

void QueryStateDisplay::stateTimerTick()
{
    if (!SourceStateStyle::isMeasuredState(m_state) || !isVisible() || !m_queryStart.isValid())
        return;
    m_ui->labelTime->setText(SourceStateStyle::elapsedText(m_queryStart, QDateTime::currentDateTime()));
}
