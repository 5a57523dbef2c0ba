#include "WEditFilterRuleSingleValue.h"

#include "ValueFilterSingleValue.h"
#include "ui_WEditFilterRuleSelectText.h"

#include <QSignalBlocker>

WEditFilterRuleSingleValue::WEditFilterRuleSingleValue(const WildcardConfig &config,
                                                       const QString &columnId,
                                                       Constants::ValueSource source, QWidget *parent)
    : WFilter(config, columnId, source, parent), m_ui(new Ui::WEditFilterRuleSelectText)
{
    setUpForm();
}

WEditFilterRuleSingleValue::WEditFilterRuleSingleValue(const WildcardConfig &config,
                                                       const QString &columnId,
                                                       Constants::ValueSource source,
                                                       const QStringList &values, QWidget *parent)
    : WFilter(config, columnId, source, parent), m_ui(new Ui::WEditFilterRuleSelectText)
{
    setUpForm();
    startList();
    m_ui->choiceList->addItems(values);
}

WEditFilterRuleSingleValue::WEditFilterRuleSingleValue(const WildcardConfig &config,
                                                       const QString &columnId,
                                                       Constants::ValueSource source,
                                                       const QList<QPair<QString, QVariant>> &values,
                                                       QWidget *parent)
    : WFilter(config, columnId, source, parent), m_ui(new Ui::WEditFilterRuleSelectText)
{
    setUpForm();
    startList();
    for (const auto &value : values)
        m_ui->choiceList->addItem(value.first, value.second);
}

WEditFilterRuleSingleValue::~WEditFilterRuleSingleValue() = default;

void WEditFilterRuleSingleValue::setUpForm()
{
    m_ui->setupUi(this);
    connect(m_ui->choiceList, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &WEditFilterRuleSingleValue::filterItemSelected);
}

void WEditFilterRuleSingleValue::startList()
{
    m_ui->choiceList->clear();
    m_ui->choiceList->addItem(labelForFirsListItem());
}

QString WEditFilterRuleSingleValue::labelForFirsListItem() const
{
    return m_wildcardConfig.isEmptyPatternCharSet() ? m_wildcardConfig.getMatchAllString() : QString();
}

void WEditFilterRuleSingleValue::setCompletionStrings(const QStringList &strings)
{
    QComboBox *list = m_ui->choiceList;
    const QString text = list->currentText();
    const int index = list->currentIndex();
    startList();
    for (const QString &string : strings)
        list->addItem(string, string);
    if (index > 0) {
        const int position = strings.indexOf(text);
        if (position >= 0)
            list->setCurrentIndex(position + 1);
    }
}

void WEditFilterRuleSingleValue::filterItemSelected(int index)
{
    emit filterTextChanged(getColumnId(), index == 0 ? QString() : m_ui->choiceList->currentText());
    emit filterChanged();
}

QSharedPointer<ValueFilter> WEditFilterRuleSingleValue::getFilter(bool matchCase)
{
    const int index = m_ui->choiceList->currentIndex();
    if (index <= 0)
        return {};
    auto filter =
        QSharedPointer<ValueFilterSingleValue>::create(m_wildcardConfig, getColumnId(), getSource(), matchCase);
    filter->setFilterValue(m_ui->choiceList->itemData(index, Qt::UserRole));
    if (filter->isEmpty())
        return {};
    return filter;
}

bool WEditFilterRuleSingleValue::setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                                           QString &errorText)
{
    Q_UNUSED(matchCase)
    if (!isPropertyMatch(filter, errorText))
        return false;
    const auto single = filter.dynamicCast<ValueFilterSingleValue>();
    if (!single)
        return false;
    QComboBox *list = m_ui->choiceList;
    const QVariant value = single->getFilterValue();
    int found = -1;
    for (int index = 1; index < list->count() && found < 0; ++index) {
        const QVariant data = list->itemData(index, Qt::UserRole);
        if (data.isValid() && ValueFilter::valuesEqual(data, value, Qt::CaseSensitive))
            found = index;
    }
    if (found < 0) {
        ASLOG(this, MsgLoggerEnums::Warning,
              QStringLiteral("WEditFilterRuleSingleValue for '") + getColumnId() +
                  QStringLiteral("': filter value not found ") + single->toString());
        if (single->isEmpty()) {
            found = 0;
        } else {
            // The list may simply not know the value yet (completions arrive
            // later): the rule is kept as an item of its own instead of being
            // dropped.
            list->addItem(value.toString(), value);
            found = list->count() - 1;
        }
    }
    list->setCurrentIndex(found);
    return true;
}

void WEditFilterRuleSingleValue::setMatchCase(bool matchCase)
{
    Q_UNUSED(matchCase)
}
