#include "WEditFilterRuleNumbers.h"

#include "ui_WEditFilterRuleNumbers.h"

#include <QApplication>
#include <QToolTip>

const QRegularExpression WEditFilterRuleNumbers::re(ValueFilterNumbers::rulePattern());
const QString WEditFilterRuleNumbers::toolTipBlank(QStringLiteral("No rules set"));

WEditFilterRuleNumbers::WEditFilterRuleNumbers(const WildcardConfig &config, const QString &columnId,
                                               Constants::ValueSource source, QWidget *parent)
    : WFilter(config, columnId, source, parent), ValueFilterNumbers(config, columnId, source, false),
      m_ui(new Ui::WEditFilterRuleNumbers)
{
    m_ui->setupUi(this);
    connect(m_ui->txtInput, &QLineEdit::textEdited, this, &WEditFilterRuleNumbers::parseInput);
    m_ui->txtInput->setToolTip(tr("No rules set"));
    if (config.isEmptyPatternCharSet())
        m_ui->txtInput->setPlaceholderText(config.getMatchAllString());
}

WEditFilterRuleNumbers::~WEditFilterRuleNumbers() = default;

void WEditFilterRuleNumbers::parseInput(const QString &text)
{
    parseFilterString(text, true);
}

void WEditFilterRuleNumbers::parseFilterString(const QString &text, bool showFeedback)
{
    setFilterText(text);
    setFeedback(showFeedback);
    emit filterChanged();
}

void WEditFilterRuleNumbers::setFeedback(bool show)
{
    const QStringList rules = getRuleDescriptions();
    const QStringList failed = getFailedParts();
    const QString separator = QStringLiteral("\n  ");
    QString text;
    if (rules.isEmpty() && failed.isEmpty())
        text = tr("No rules set");
    else if (!rules.isEmpty())
        text = tr("Filtering rules:") + separator + rules.join(separator);
    if (!failed.isEmpty()) {
        if (!text.isEmpty())
            text += QStringLiteral("\n\n");
        text += tr("Warning! Failed to parse:") + separator + failed.join(separator);
    }

    QLineEdit *input = m_ui->txtInput;
    input->setToolTip(text);
    // A part that is no rule filters nothing; the tinted line keeps saying so
    // after the tool tip has gone.
    QPalette palette = input->palette();
    palette.setBrush(QPalette::Base, failed.isEmpty() ? QApplication::palette(input).base()
                                                      : QBrush(QColor(255, 190, 190)));
    input->setPalette(palette);
    if (show)
        QToolTip::showText(input->mapToGlobal(QPoint(0, 6)), text, input);
}

QSharedPointer<ValueFilter> WEditFilterRuleNumbers::getFilter(bool matchCase)
{
    Q_UNUSED(matchCase)
    if (isEmpty())
        return {};
    return QSharedPointer<ValueFilter>(new ValueFilterNumbers(*this));
}

bool WEditFilterRuleNumbers::setFilter(const QSharedPointer<ValueFilter> &filter, bool matchCase,
                                       QString &errorText)
{
    Q_UNUSED(matchCase)
    if (!isPropertyMatch(filter, errorText))
        return false;
    const auto numbers = filter.dynamicCast<ValueFilterNumbers>();
    if (!numbers)
        return false;
    const QString text = numbers->getFilterText();
    m_ui->txtInput->setText(text);
    parseFilterString(text, false);
    return true;
}

void WEditFilterRuleNumbers::setMatchCase(bool matchCase)
{
    Q_UNUSED(matchCase)
}
