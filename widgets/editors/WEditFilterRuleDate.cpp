#include "WEditFilterRuleDate.h"

#include "ValueFilterDate.h"
#include "ui_WEditFilterRuleDate.h"

#include <QApplication>

WEditFilterRuleDate::WEditFilterRuleDate(const WildcardConfig &config, const QString &columnId,
                                         Constants::ValueSource source, const QString &dateTimeFormat,
                                         QWidget *parent)
    : WFilter(config, columnId, source, parent), m_ui(new Ui::WEditFilterRuleDate)
{
    m_ui->setupUi(this);
    m_ui->dtFirst->setDisplayFormat(dateTimeFormat);
    m_ui->dtSecond->setDisplayFormat(dateTimeFormat);
    connect(m_ui->cbCompMethod, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &WEditFilterRuleDate::compMethodChanged);
    const QDateTime now = QDateTime::currentDateTime();
    m_ui->dtFirst->setDateTime(now);
    m_ui->dtSecond->setDateTime(now);
    connect(m_ui->dtFirst, &QDateTimeEdit::dateTimeChanged, this, &WEditFilterRuleDate::dateTimeChanged);
    connect(m_ui->dtSecond, &QDateTimeEdit::dateTimeChanged, this, &WEditFilterRuleDate::dateTimeChanged);
}

WEditFilterRuleDate::~WEditFilterRuleDate() = default;

void WEditFilterRuleDate::compMethodChanged(int index)
{
    m_ui->dtFirst->setEnabled(index != ValueFilterDate::NoComparison);
    m_ui->dtSecond->setEnabled(index == ValueFilterDate::Between);
    updateRangeMark();
    emit filterChanged();
}

void WEditFilterRuleDate::dateTimeChanged(const QDateTime &dateTime)
{
    Q_UNUSED(dateTime)
    updateRangeMark();
    emit filterChanged();
}

void WEditFilterRuleDate::updateRangeMark()
{
    QDateTimeEdit *end = m_ui->dtSecond;
    const bool reversed = m_ui->cbCompMethod->currentIndex() == ValueFilterDate::Between &&
                          end->dateTime() < m_ui->dtFirst->dateTime();
    QPalette palette = end->palette();
    palette.setBrush(QPalette::Base, reversed ? QBrush(QColor(255, 190, 190)) : QApplication::palette(end).base());
    end->setPalette(palette);
    end->setToolTip(reversed ? tr("The end of the time range lies before its start") : QString());
}

QSharedPointer<ValueFilter> WEditFilterRuleDate::getFilter(bool matchCase)
{
    const int method = m_ui->cbCompMethod->currentIndex();
    if (method <= ValueFilterDate::NoComparison)
        return {};
    auto filter = QSharedPointer<ValueFilterDate>::create(m_wildcardConfig, getColumnId(), getSource(), matchCase);
    filter->setComparisonMethod(method);
    filter->setFirstDate(m_ui->dtFirst->dateTime());
    filter->setSecondDate(m_ui->dtSecond->dateTime());
    return filter;
}

bool WEditFilterRuleDate::setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                                    QString &errorText)
{
    Q_UNUSED(matchCase)
    if (!isPropertyMatch(filter, errorText))
        return false;
    const auto date = filter.dynamicCast<ValueFilterDate>();
    if (!date)
        return false;
    m_ui->dtFirst->setDateTime(date->getFirstDate());
    m_ui->dtSecond->setDateTime(date->getSecondDate());
    m_ui->cbCompMethod->setCurrentIndex(date->getComparisonMethod());
    return true;
}

void WEditFilterRuleDate::setMatchCase(bool matchCase)
{
    Q_UNUSED(matchCase)
}
