#include "QuickFilterEditor.h"

#include "QuickFilterOptions.h"
#include "WildcardConfig.h"

#include <QAction>
#include <QApplication>
#include <QSignalBlocker>
#include <QToolTip>

namespace {
const QColor kNotAppliedColor(255, 255, 192);
}

QuickFilterEditor::QuickFilterEditor(QWidget *parent)
    : QLineEdit(parent), m_errorColor(255, 160, 160)
{
    qRegisterMetaType<QuickCellFilter>();
    setClearButtonEnabled(true);
    // Clearing applies the empty filter at once, as Return would.
    const QList<QAction *> actions = findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly);
    for (QAction *action : actions)
        connect(action, &QAction::triggered, this, &QuickFilterEditor::clearButtonTriggered);

    QAction *setup = addAction(QIcon(QStringLiteral(":vesk/icons/settingsEdit.png")),
                               QLineEdit::LeadingPosition);
    setup->setToolTip(tr("Edit options"));
    connect(setup, &QAction::triggered, this, &QuickFilterEditor::openSetup);

    connect(this, &QLineEdit::textChanged, this, &QuickFilterEditor::newText);
    connect(this, &QLineEdit::editingFinished, this, &QuickFilterEditor::textEditingFinished);

    m_options = new QuickFilterOptions(this, this);
    m_options->setFrameShadow(QFrame::Raised);
    m_options->setFrameShape(QFrame::Box);
    m_options->setFilterOptions(m_editedFilter);
    connect(m_options, &QuickFilterOptions::matchCaseChanged, this,
            &QuickFilterEditor::matchCaseChanged);
    connect(m_options, &QuickFilterOptions::matchFullColumnChanged, this,
            &QuickFilterEditor::matchFullColumnChanged);
    connect(m_options, &QuickFilterOptions::modeChanged, this, &QuickFilterEditor::modeChanged);
}

QuickFilterEditor::~QuickFilterEditor() = default;

bool QuickFilterEditor::validateString(const QString &text)
{
    const bool ok = m_editedFilter.setString(text);
    if (ok) {
        restorePalette();
    } else {
        QToolTip::showText(mapToGlobal(QPoint(0, 8)), tr("Incorrect pattern: ") + text, this);
        setBackground(m_errorColor);
    }
    return ok;
}

void QuickFilterEditor::compareFilters()
{
    if (!validateString(text()))
        return;
    if (m_editedFilter == m_appliedFilter)
        restorePalette();
    else
        setBackground(kNotAppliedColor);
}

void QuickFilterEditor::setBackground(const QColor &color)
{
    QPalette p = palette();
    p.setColor(QPalette::All, backgroundRole(), color);
    setPalette(p);
}

void QuickFilterEditor::restorePalette()
{
    setPalette(QApplication::palette());
}

void QuickFilterEditor::newText(const QString &text)
{
    if (validateString(text))
        compareFilters();
}

void QuickFilterEditor::clearButtonTriggered()
{
    // The button's action fires before the line edit empties itself; finishing
    // the edit now would report the text that is being cleared.
    if (!text().isEmpty())
        QLineEdit::clear();
    emit editingFinished();
}

void QuickFilterEditor::textEditingFinished()
{
    if (validateString(text()))
        emit filterModified(m_editedFilter);
}

void QuickFilterEditor::matchCaseChanged(int checkState)
{
    m_editedFilter.setMatchCase(checkState == Qt::Checked);
    compareFilters();
}

void QuickFilterEditor::matchFullColumnChanged(int checkState)
{
    m_editedFilter.setMatchFullColumn(checkState == Qt::Checked);
    compareFilters();
}

void QuickFilterEditor::modeChanged(int mode)
{
    m_editedFilter.setMode(mode);
    compareFilters();
}

void QuickFilterEditor::setAppliedFilter(const QuickCellFilter &filter)
{
    m_editedFilter = filter;
    m_appliedFilter = filter;
    // The popup shows the options of the filter in force, not stale ones. Its
    // check boxes and buttons must not report back: that would validate the
    // old text under the new options and could show a stale error.
    {
        const QSignalBlocker blocker(m_options);
        m_options->setFilterOptions(filter);
    }
    setText(filter.getString());
    const int length = text().length();
    setSelection(length, length + 1);
    compareFilters();
}

void QuickFilterEditor::clear()
{
    setText(QString());
    validateString(QString());
    m_appliedFilter = m_editedFilter;
    compareFilters();
}

void QuickFilterEditor::setWildcardConfig(const WildcardConfig &config)
{
    if (config.isEmptyPatternCharSet())
        setPlaceholderText(config.getMatchAllString());
    m_editedFilter.setWildCardConfig(config);
    m_appliedFilter.setWildCardConfig(config);
    setLogBuffer(config.getLogBuffer());
}

void QuickFilterEditor::openSetup()
{
    if (m_options->isVisible()) {
        m_options->hide();
        return;
    }
    m_options->move(mapToGlobal(QPoint(0, height() - 1)));
    m_options->show();
}
