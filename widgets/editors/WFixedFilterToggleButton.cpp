#include "WFixedFilterToggleButton.h"

#include "ValueFilterFixed.h"
#include "ui_WFilterToggleButton.h"

WFixedFilterToggleButton::WFixedFilterToggleButton(const WildcardConfig &config,
                                                   const QSharedPointer<ValueFilterFixed> &filter,
                                                   QWidget *parent)
    : WFilter(config, filter->getValueId(), filter->getSource(), parent), m_filter(filter),
      m_ui(new Ui::WFilterToggleButton)
{
    m_ui->setupUi(this);
    m_ui->toolButton->setChecked(m_filter->isChecked());
    connect(m_ui->toolButton, &QToolButton::clicked, this,
            &WFixedFilterToggleButton::buttonClicked);
}

WFixedFilterToggleButton::~WFixedFilterToggleButton() = default;

QSharedPointer<ValueFilter> WFixedFilterToggleButton::getFilter(bool matchCase)
{
    m_filter->setMatchCase(matchCase);
    return QSharedPointer<ValueFilter>(new ValueFilterFixed(*m_filter));
}

bool WFixedFilterToggleButton::setFilter(const QSharedPointer<ValueFilter> &filter,
                                         bool matchCase, QString &errorText)
{
    const auto given = filter.dynamicCast<ValueFilterFixed>();
    if (!given)
        return false;
    if (!isPropertyMatch(filter, errorText))
        return false;
    if (given->getFixedKind() != m_filter->getFixedKind())
        return false;
    m_filter->setMatchCase(matchCase);
    if (given->isChecked() != m_filter->isChecked()) {
        m_filter->setChecked(given->isChecked());
        m_ui->toolButton->setChecked(m_filter->isChecked());
    }
    return true;
}

void WFixedFilterToggleButton::setMatchCase(bool matchCase)
{
    m_filter->setMatchCase(matchCase);
}

QString WFixedFilterToggleButton::getColumnId() const
{
    return m_filter->getValueId();
}

Constants::ValueSource WFixedFilterToggleButton::getSource() const
{
    return m_filter->getSource();
}

void WFixedFilterToggleButton::setText(const QString &text)
{
    m_ui->toolButton->setText(text);
}

void WFixedFilterToggleButton::setToolTip(const QString &toolTip)
{
    m_ui->toolButton->setToolTip(toolTip);
}

void WFixedFilterToggleButton::setTextColor(const QColor &color)
{
    QPalette palette = m_ui->toolButton->palette();
    palette.setBrush(QPalette::All, QPalette::ButtonText, QBrush(color, Qt::SolidPattern));
    m_ui->toolButton->setPalette(palette);
}

void WFixedFilterToggleButton::buttonClicked(bool checked)
{
    Q_UNUSED(checked)
    const bool buttonChecked = m_ui->toolButton->isChecked();
    if (buttonChecked == m_filter->isChecked())
        return;
    m_filter->setChecked(buttonChecked);
    emit filterChanged();
}
