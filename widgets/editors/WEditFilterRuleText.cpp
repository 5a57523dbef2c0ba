#include "WEditFilterRuleText.h"

#include "ValueFilterText.h"
#include "ValueFilterTextItem.h"
#include "ui_WEditFilterRuleText.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidgetItem>
#include <QToolButton>

namespace {

const char *const kSelectedIndex = "selectedIndex";

// What a match-method button shows and holds; moved whole when rows swap so that
// a rule keeps its label and its method together.
struct MethodButtonState
{
    QString text;
    QString toolTip;
    QVariant selectedIndex;
    QVariant checkedData;
};

MethodButtonState readMethodButton(const QToolButton *button)
{
    MethodButtonState state{button->text(), button->toolTip(), button->property(kSelectedIndex), {}};
    if (const QMenu *menu = button->menu()) {
        for (const QAction *action : menu->actions()) {
            if (action->isChecked())
                state.checkedData = action->data();
        }
    }
    return state;
}

void writeMethodButton(QToolButton *button, const MethodButtonState &state)
{
    button->setText(state.text);
    button->setToolTip(state.toolTip);
    button->setProperty(kSelectedIndex, state.selectedIndex);
    if (QMenu *menu = button->menu()) {
        for (QAction *action : menu->actions())
            action->setChecked(action->data() == state.checkedData);
    }
}

} // namespace

WEditFilterRuleText::WEditFilterRuleText(const WildcardConfig &config, const QString &columnId,
                                         Constants::ValueSource source, QWidget *parent)
    : WFilter(config, columnId, source, parent), m_ui(new Ui::WEditFilterRuleText),
      m_methodShortNames({QStringLiteral("Ex"), QStringLiteral("W*"), QStringLiteral("RE")}),
      m_defaultMethod(ValueFilterTextItem::MethodWildcard)
{
    m_ui->setupUi(this);
    QHeaderView *header = m_ui->tableWidget->horizontalHeader();
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    header->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(2, QHeaderView::ResizeToContents);

    connect(m_ui->btnAdd, &QPushButton::clicked, this, &WEditFilterRuleText::addRule);
    connect(m_ui->btnDel, &QPushButton::clicked, this, &WEditFilterRuleText::deleteRules);
    connect(m_ui->btnUp, &QPushButton::clicked, this, &WEditFilterRuleText::moveRuleUp);
    connect(m_ui->btnDown, &QPushButton::clicked, this, &WEditFilterRuleText::moveRuleDown);
    connect(m_ui->tableWidget, &QTableWidget::itemSelectionChanged, this,
            &WEditFilterRuleText::selectionChanged);
    connect(m_ui->tableWidget, &QTableWidget::cellChanged, this, &WEditFilterRuleText::cellDataChanged);
}

WEditFilterRuleText::~WEditFilterRuleText()
{
    // An open cell editor commits its text while the children are destroyed,
    // after this part of the editor is gone.
    disconnect(m_ui->tableWidget, nullptr, this, nullptr);
}

QToolButton *WEditFilterRuleText::createToolButton()
{
    auto *button = new QToolButton;
    button->setPopupMode(QToolButton::InstantPopup);
    button->setToolButtonStyle(Qt::ToolButtonFollowStyle);
    button->setArrowType(Qt::NoArrow);
    button->setText(m_methodShortNames.at(m_defaultMethod));
    button->setMinimumWidth(48);
    button->setToolTip(tr("Filter-matching method"));

    auto *menu = new QMenu(button);
    auto *group = new QActionGroup(button);
    group->setExclusive(true);
    const QStringList methodNames{tr("Exact Match"), tr("Wildcard"), tr("Regular Expression")};
    for (int method = 0; method < methodNames.size(); ++method) {
        auto *action = new QAction(methodNames.at(method), button);
        action->setCheckable(true);
        action->setData(method);
        action->setChecked(method == m_defaultMethod);
        group->addAction(action);
        menu->addAction(action);
        connect(action, &QAction::triggered, this, &WEditFilterRuleText::ruleMatchMethodChanged);
    }
    button->setMenu(menu);
    button->setProperty(kSelectedIndex, m_defaultMethod);
    return button;
}

void WEditFilterRuleText::addRule(bool checked)
{
    Q_UNUSED(checked)
    QTableWidget *table = m_ui->tableWidget;
    const int row = table->rowCount();
    {
        // Filling the new row's cells is not an edit of a pattern.
        const QSignalBlocker blocker(table);
        table->insertRow(row);
        auto *item = new QTableWidgetItem;
        item->setToolTip(tr("Double-click to set filter pattern"));
        table->setItem(row, 0, item);
        table->setCellWidget(row, 1, createToolButton());
        auto *exclude = new QPushButton(QString(QChar(0x2260)), table);
        exclude->setCheckable(true);
        exclude->setToolTip(tr("Exclude"));
        exclude->setMaximumWidth(36);
        // Turning a rule from including to excluding changes the filter as much
        // as editing its pattern does.
        connect(exclude, &QPushButton::clicked, this, &WEditFilterRuleText::filterChanged);
        table->setCellWidget(row, 2, exclude);
    }
    selectionChanged();
    emit filterChanged();
}

void WEditFilterRuleText::deleteRules(bool checked)
{
    Q_UNUSED(checked)
    QList<QTableWidgetSelectionRange> ranges = m_ui->tableWidget->selectedRanges();
    std::sort(ranges.begin(), ranges.end(),
              [](const QTableWidgetSelectionRange &a, const QTableWidgetSelectionRange &b) {
                  return a.bottomRow() < b.bottomRow();
              });
    // From the bottom up, so that the rows still to be removed keep their numbers.
    for (auto range = ranges.crbegin(); range != ranges.crend(); ++range) {
        for (int row = range->bottomRow(); row >= range->topRow(); --row)
            m_ui->tableWidget->removeRow(row);
    }
    selectionChanged();
    emit filterChanged();
}

void WEditFilterRuleText::moveRuleUp(bool checked)
{
    Q_UNUSED(checked)
    moveRule(-1);
}

void WEditFilterRuleText::moveRuleDown(bool checked)
{
    Q_UNUSED(checked)
    moveRule(1);
}

void WEditFilterRuleText::moveRule(int offset)
{
    const QList<QTableWidgetSelectionRange> ranges = m_ui->tableWidget->selectedRanges();
    if (ranges.size() != 1 || ranges.first().rowCount() != 1)
        return;
    const int row = ranges.first().topRow();
    const int target = row + offset;
    if (target < 0 || target >= m_ui->tableWidget->rowCount())
        return;
    swapRows(row, target);
    m_ui->tableWidget->setCurrentCell(target, 0,
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    emit filterChanged();
}

void WEditFilterRuleText::swapRows(int first, int second)
{
    QTableWidget *table = m_ui->tableWidget;
    const QSignalBlocker blocker(table);
    QTableWidgetItem *firstItem = table->takeItem(first, 0);
    QTableWidgetItem *secondItem = table->takeItem(second, 0);
    table->setItem(first, 0, secondItem);
    table->setItem(second, 0, firstItem);

    auto *firstMethod = qobject_cast<QToolButton *>(table->cellWidget(first, 1));
    auto *secondMethod = qobject_cast<QToolButton *>(table->cellWidget(second, 1));
    if (firstMethod && secondMethod) {
        const MethodButtonState state = readMethodButton(firstMethod);
        writeMethodButton(firstMethod, readMethodButton(secondMethod));
        writeMethodButton(secondMethod, state);
    }
    auto *firstExclude = qobject_cast<QPushButton *>(table->cellWidget(first, 2));
    auto *secondExclude = qobject_cast<QPushButton *>(table->cellWidget(second, 2));
    if (firstExclude && secondExclude) {
        const bool excluded = firstExclude->isChecked();
        firstExclude->setChecked(secondExclude->isChecked());
        secondExclude->setChecked(excluded);
    }
}

void WEditFilterRuleText::selectionChanged()
{
    const QList<QTableWidgetSelectionRange> ranges = m_ui->tableWidget->selectedRanges();
    m_ui->btnDel->setEnabled(!ranges.isEmpty());
    const bool single = ranges.size() == 1 && ranges.first().rowCount() == 1;
    m_ui->btnUp->setEnabled(single && ranges.first().topRow() > 0);
    m_ui->btnDown->setEnabled(single && ranges.first().topRow() < m_ui->tableWidget->rowCount() - 1);
}

void WEditFilterRuleText::cellDataChanged(int row, int column)
{
    if (column == 0)
        validateRow(row);
    emit filterChanged();
}

void WEditFilterRuleText::ruleMatchMethodChanged(bool checked)
{
    Q_UNUSED(checked)
    auto *action = qobject_cast<QAction *>(sender());
    if (!action) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("ruleMatchMethodChanged slot sender is not a QAction."));
        return;
    }
    auto *button = qobject_cast<QToolButton *>(action->parent());
    const int method = action->data().toInt();
    if (!button || method < 0 || method >= m_methodShortNames.size())
        return;
    button->setText(m_methodShortNames.at(method));
    button->setToolTip(action->text());
    button->setProperty(kSelectedIndex, method);
    // A pattern may be a valid wildcard and still no valid regular expression.
    for (int row = 0; row < m_ui->tableWidget->rowCount(); ++row) {
        if (m_ui->tableWidget->cellWidget(row, 1) == button) {
            validateRow(row);
            break;
        }
    }
}

bool WEditFilterRuleText::addFilterOfRow(int row, ValueFilterText *filter)
{
    QTableWidget *table = m_ui->tableWidget;
    const QTableWidgetItem *item = table->item(row, 0);
    if (!item) {
        ASLOG(this, MsgLoggerEnums::DetailedTrace,
              QStringLiteral("Cannot create filter, no QTableWidgetItem found for row ") + QString::number(row));
        return false;
    }
    if (item->text().isEmpty()) {
        ASLOG(this, MsgLoggerEnums::DetailedTrace,
              QStringLiteral("Cannot create filter, text field empty in row ") + QString::number(row));
        markRow(row, tr("The pattern is empty"));
        return false;
    }
    const auto *method = qobject_cast<const QToolButton *>(table->cellWidget(row, 1));
    if (!method) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Expected cellWidget to be a QToolButton in row ") + QString::number(row));
        return false;
    }
    const auto *exclude = qobject_cast<const QPushButton *>(table->cellWidget(row, 2));
    if (!exclude) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Expected cellWidget to be a QPushButton in row ") + QString::number(row));
        return false;
    }
    QString error;
    if (!filter->addItem(item->text(), method->property(kSelectedIndex).toInt(), exclude->isChecked(), &error)) {
        ASLOG(this, MsgLoggerEnums::Warning,
              QStringLiteral("Cannot create filter, rule refused in row %1: %2").arg(row).arg(error));
        markRow(row, error);
        return false;
    }
    markRow(row, QString());
    return true;
}

bool WEditFilterRuleText::addRowOfFilter(const ValueFilterTextItem &item)
{
    addRule(false);
    QTableWidget *table = m_ui->tableWidget;
    const int row = table->rowCount() - 1;
    QTableWidgetItem *textItem = table->item(row, 0);
    if (!textItem) {
        ASLOG(this, MsgLoggerEnums::DetailedTrace,
              QStringLiteral("Cannot add row for filter filter, no QTableWidgetItem found for row ") +
                  QString::number(row));
        return false;
    }
    auto *method = qobject_cast<QToolButton *>(table->cellWidget(row, 1));
    if (!method) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Cannot add row for filter, expected cellWidget to be a QToolButton in row ") +
                  QString::number(row));
        return false;
    }
    auto *exclude = qobject_cast<QPushButton *>(table->cellWidget(row, 2));
    if (!exclude) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Cannot add row for filter, expected cellWidget to be a QPushButton in row ") +
                  QString::number(row));
        return false;
    }
    {
        // addRule() has announced the rule already.
        const QSignalBlocker blocker(table);
        textItem->setText(item.getText());
    }
    // The label stays the default method's: the rule's own method takes effect
    // through the property.
    method->setProperty(kSelectedIndex, item.getMethod());
    exclude->setChecked(item.isExclude());
    return true;
}

QSharedPointer<ValueFilter> WEditFilterRuleText::getFilter(bool matchCase)
{
    const int rows = m_ui->tableWidget->rowCount();
    if (rows == 0)
        return {};
    auto filter = QSharedPointer<ValueFilterText>::create(m_wildcardConfig, getColumnId(), getSource(), matchCase);
    // Every row is tried, so that every rule that is not valid gets its mark.
    bool allRows = true;
    for (int row = 0; row < rows; ++row) {
        if (!addFilterOfRow(row, filter.data()))
            allRows = false;
    }
    if (!allRows)
        return {};
    return filter;
}

bool WEditFilterRuleText::setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                                    QString &errorText)
{
    Q_UNUSED(matchCase)
    if (!isPropertyMatch(filter, errorText))
        return false;
    const auto text = filter.dynamicCast<ValueFilterText>();
    if (!text)
        return false;
    m_ui->tableWidget->setRowCount(0);
    for (const ValueFilterTextItem &item : text->getItems()) {
        if (!addRowOfFilter(item))
            return false;
    }
    return true;
}

void WEditFilterRuleText::validateRow(int row)
{
    const QTableWidgetItem *item = m_ui->tableWidget->item(row, 0);
    const auto *method = qobject_cast<const QToolButton *>(m_ui->tableWidget->cellWidget(row, 1));
    if (!item || !method)
        return;
    if (item->text().isEmpty()) {
        markRow(row, tr("The pattern is empty"));
        return;
    }
    ValueFilterText check(m_wildcardConfig, getColumnId(), getSource(), false);
    QString error;
    check.addItem(item->text(), method->property(kSelectedIndex).toInt(), false, &error);
    markRow(row, error);
}

void WEditFilterRuleText::markRow(int row, const QString &error)
{
    QTableWidgetItem *item = m_ui->tableWidget->item(row, 0);
    if (!item)
        return;
    // The mark is no edit of the pattern.
    const QSignalBlocker blocker(m_ui->tableWidget);
    if (error.isEmpty()) {
        item->setData(Qt::BackgroundRole, QVariant());
        item->setToolTip(tr("Double-click to set filter pattern"));
    } else {
        item->setBackground(QColor(255, 190, 190));
        item->setToolTip(tr("This rule is not valid: %1").arg(error));
    }
}
