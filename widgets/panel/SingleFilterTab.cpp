#include "SingleFilterTab.h"

#include "AlarmScreenConfiguration.h"
#include "CompletionSource.h"
#include "FilterCompletions.h"
#include "SourceAndFiltersUiFactory.h"
#include "ValueFilterStringPattern.h"
#include "ui_SingleFilterTab.h"

namespace {

// The text an editor shows, as far as the completion service can use it.
QString currentText(WFilter *editor)
{
    const QSharedPointer<ValueFilter> filter = editor->getFilter(false);
    if (const auto *pattern = dynamic_cast<const ValueFilterStringPattern *>(filter.data()))
        return pattern->getFilterText();
    return QString();
}

} // namespace

SingleFilterTab::SingleFilterTab(const MsgLoggingProducer *logger, quint32 number, QWidget *parent)
    : QWidget(parent), MsgLoggingProducer(logger), m_number(number), m_ui(new Ui_SingleFilterTab)
{
    m_ui->setupUi(this);
    // The two buttons are exclusive: one toggle signal covers every change.
    connect(m_ui->includeButton, &QRadioButton::toggled, this, &SingleFilterTab::exclusivityChanged);
}

SingleFilterTab::~SingleFilterTab()
{
    // The editors go after this tab's members and may still report an edit
    // on their way out (a focus loss): nobody is left here to hear it.
    for (WFilter *editor : editors())
        disconnect(editor, nullptr, this, nullptr);
}

void SingleFilterTab::configure(const AlarmScreenConfiguration &config,
                                const QSharedPointer<CompletionSource> &completionSource,
                                QStringList &names)
{
    m_completionSource = completionSource;
    SourceAndFiltersUiFactory factory(this);
    QWidget *page = factory.buildStructuredFilterPageUi(config, names);
    if (!page)
        return;
    m_page = page;
    page->setParent(m_ui->editorContainer);
    m_ui->editorLayout->addWidget(page);
    for (WFilter *editor : editors())
        connect(editor, &WFilter::filterChanged, this, &SingleFilterTab::filterChanged);
}

QString SingleFilterTab::getName() const
{
    return tr("Filter #%1: %2").arg(m_number).arg(isInclude() ? tr("Include") : tr("Exclude"));
}

bool SingleFilterTab::isInclude() const
{
    return m_ui->includeButton->isChecked();
}

QRadioButton *SingleFilterTab::getIncludeButton() const
{
    return m_ui->includeButton;
}

QRadioButton *SingleFilterTab::getExcludeButton() const
{
    return m_ui->excludeButton;
}

QList<WFilter *> SingleFilterTab::editors() const
{
    return findChildren<WFilter *>();
}

FilterRuleSet SingleFilterTab::getFilterSet(bool matchCase) const
{
    FilterRuleSet ruleSet(WildcardConfig(this), isInclude(), matchCase);
    for (WFilter *editor : editors()) {
        const QSharedPointer<ValueFilter> filter = editor->getFilter(matchCase);
        if (filter)
            ruleSet.addFilter(filter);
    }
    return ruleSet;
}

WFilter::FilterDisplayResult SingleFilterTab::displayRuleSet(const FilterRuleSet &ruleSet, bool matchCase,
                                                             QString &error)
{
    const QList<WFilter *> all = editors();
    const QList<QSharedPointer<ValueFilter>> &filters = ruleSet.getFilters();
    int shown = 0;
    for (const QSharedPointer<ValueFilter> &filter : filters) {
        bool found = false;
        for (WFilter *editor : all) {
            QString ignored;
            if (!editor->isPropertyMatch(filter, ignored))
                continue;
            QString text;
            if (editor->setFilter(filter, matchCase, text)) {
                found = true;
                ++shown;
                break;
            }
            if (!text.isEmpty()) {
                error = tr("error displaying filter for '%1': %2").arg(filter->getValueId(), text);
                return WFilter::DisplayFailed;
            }
            // Same property, another kind of editor: the next one may fit.
        }
        if (!found)
            ASLOG(this, MsgLoggerEnums::Warning,
                  QStringLiteral("No widget found to display filter [") + filter->toString() + QLatin1Char(']'));
    }
    if (ruleSet.isInclude())
        m_ui->includeButton->setChecked(true);
    else
        m_ui->excludeButton->setChecked(true);
    if (shown == filters.size())
        return WFilter::AllDisplayed;
    return shown == 0 ? WFilter::NoneDisplayed : WFilter::PartlyDisplayed;
}

void SingleFilterTab::completionsReady(const QSharedPointer<FilterCompletions> &completions,
                                       const QStringList &systems)
{
    if (!completions)
        return;
    const QString &property = completions->getProperty();
    const QStringList values =
        completions->getType() == 3 ? completions->getCompletionsForSystems(systems) : completions->getList();
    for (WFilter *editor : editors()) {
        if (editor->getColumnId() != property)
            continue;
        editor->setCompletionStrings(values);
        m_filterValues.insert(property, currentText(editor));
        connect(editor, &WFilter::filterTextChanged, this, &SingleFilterTab::filterTextChanged,
                Qt::UniqueConnection);
    }
}

void SingleFilterTab::exclusivityChanged()
{
    emit newName(this, getName());
}

void SingleFilterTab::filterTextChanged(const QString &propName, const QString &filterValue)
{
    if (!m_completionSource || !m_filterValues.contains(propName))
        return;
    m_filterValues.insert(propName, filterValue);
    m_completionSource->filterChanged(this, propName, m_filterValues);
}
