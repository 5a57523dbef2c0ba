#include "QuickFilterOptions.h"

#include "QuickCellFilter.h"
#include "ui_QuickFilterOptions.h"

QuickFilterOptions::QuickFilterOptions(const MsgLoggingProducer *logger, QWidget *parent)
    : QFrame(parent, Qt::Popup | Qt::FramelessWindowHint), MsgLoggingProducer(logger),
      m_ui(new Ui::QuickFilterOptions)
{
    m_ui->setupUi(this);
    connect(m_ui->checkBoxMatchCase, &QCheckBox::stateChanged, this,
            &QuickFilterOptions::matchCaseChanged);
    connect(m_ui->checkBoxMatchFullColumn, &QCheckBox::stateChanged, this,
            &QuickFilterOptions::matchFullColumnChanged);
    for (QRadioButton *button :
         {m_ui->radioButtonWildCard, m_ui->radioButtonRegExp, m_ui->radioButtonString})
        connect(button, &QRadioButton::toggled, this, &QuickFilterOptions::modeToggeled);
}

QuickFilterOptions::~QuickFilterOptions() = default;

void QuickFilterOptions::setFilterOptions(const QuickCellFilter &filter)
{
    m_ui->checkBoxMatchCase->setChecked(filter.isMatchCase());
    m_ui->checkBoxMatchFullColumn->setChecked(filter.isMatchFullColumn());
    m_mode = filter.getMode();
    QRadioButton *modeButton = nullptr;
    switch (m_mode) {
    case 0:
        modeButton = m_ui->radioButtonString;
        break;
    case 1:
        modeButton = m_ui->radioButtonWildCard;
        break;
    case 2:
        modeButton = m_ui->radioButtonRegExp;
        break;
    default:
        break;
    }
    if (modeButton) {
        modeButton->setChecked(true);
        return;
    }
    // Exclusive radio buttons cannot all be unchecked one by one; and clearing
    // them is no choice of the operator's, so it announces nothing.
    for (QRadioButton *button :
         {m_ui->radioButtonWildCard, m_ui->radioButtonRegExp, m_ui->radioButtonString}) {
        const QSignalBlocker blocker(button);
        button->setAutoExclusive(false);
        button->setChecked(false);
        button->setAutoExclusive(true);
    }
}

void QuickFilterOptions::modeToggeled(bool buttonChecked)
{
    // One click toggles two buttons; reading the buttons rather than the
    // argument makes the pair announce one change.
    Q_UNUSED(buttonChecked)
    int mode = 1;
    if (m_ui->radioButtonRegExp->isChecked())
        mode = 2;
    else if (m_ui->radioButtonString->isChecked())
        mode = 0;
    if (mode == m_mode)
        return;
    m_mode = mode;
    emit modeChanged(mode);
}
