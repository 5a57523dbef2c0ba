#include "SourceUiLong.h"

#include "AlarmScreenConfiguration.h"
#include "EwoActions.h"
#include "SourceAndFilter.h"
#include "SourceStateStyle.h"
#include "SystemSelectionTable.h"
#include "TimeRangeEditor.h"
#include "ui_SourceUiLong.h"

#include <QStyle>

namespace {
const int LiveIndex = 0;
const int HistoryIndex = 1;
} // namespace

SourceUiLong::SourceUiLong(const AlarmScreenConfiguration &config, QWidget *parent)
    : SourceUi(config, parent),
      ActionAccessUser(new ActionAccess),
      m_ui(new Ui::SourceUiLong),
      m_timeRangeEditor(new TimeRangeEditor(m_timeRange, this)),
      m_systemTable(nullptr)
{
    m_ui->setupUi(this);
    m_ui->pushButtonAbort->setIcon(style()->standardIcon(QStyle::SP_BrowserStop));
    m_ui->pushButtonApply->setIcon(style()->standardIcon(QStyle::SP_DialogApplyButton));
    registerActionControl(EwoActions::SourceControl, this);
    registerActionControl(EwoActions::SwitchSourceMode, m_ui->comboBoxMode);

    connect(m_ui->comboBoxMode, QOverload<int>::of(&QComboBox::activated), this,
            &SourceUiLong::sourceModeIndexActivated);
    // Until the owner reports a state, the strip shows the form's "no query"
    // texts; there is nothing to abort yet.
    m_ui->pushButtonAbort->hide();
    m_ui->lineAbort->hide();
    SourceStateStyle::showState(m_ui->labelState, m_state);
    showModeWidgets();
    m_ui->labelModified->hide();

    connect(m_ui->pushButtonApply, &QPushButton::clicked, this, &SourceUi::apply);
    connect(m_ui->pushButtonAbort, &QPushButton::clicked, this, &SourceUi::abortQuery);

    m_systemTable = new SystemSelectionTable(this, this);
    connect(m_systemTable, &SystemSelectionTable::selectionChanged, this, &SourceUiLong::systemSelectionChanged);
    systemSelectionChanged(m_systemTable->getSelectedSystems().size(), m_systemTable->getTotalSystemCount());

    connect(m_ui->pushButtonSystems, &QPushButton::clicked, this, &SourceUiLong::sourceButtonClicked);
    connect(m_ui->pushButtonTimeRange, &QPushButton::clicked, this, &SourceUiLong::sourceButtonClicked);
    connect(m_timeRangeEditor, &TimeRangeEditor::changed, this, &SourceUiLong::timeRangeChanged);
    showTimeRange();

    connect(&m_stateTimer, &QTimer::timeout, this, &SourceUiLong::stateTimerTick);
    m_stateTimer.start(1000);
}

SourceUiLong::~SourceUiLong() = default;

void SourceUiLong::setTimeSpec(Qt::TimeSpec timeSpec)
{
    SourceUi::setTimeSpec(timeSpec);
    m_timeRangeEditor->setTimeSpec(timeSpec);
    showTimeRange();
}

void SourceUiLong::connectedSystemsChanged(const QStringList &systems)
{
    // The systems the screen is connected to are the natural default of a new
    // history query; the operator's own choice, once made, is kept.
    m_initialSystems = systems;
}

void SourceUiLong::addToFilter(const SourceAndFilter &filter) const
{
    SourceUi::addToFilter(filter);
    SourceAndFilter &record = writableRecord(filter);
    record.setSelectionKind(SourceAndFilter::SelectBySystems);
    record.setSystems(m_systemTable->getSelectedSystems());
}

void SourceUiLong::compareWithFilter(const SourceAndFilter &, bool)
{
    // The selector keeps no copy of the applied filter: the panel compares its
    // whole record and reports the outcome through displayFilterModified().
}

QString SourceUiLong::prepareArchiveMode(const QDateTime &start, const QDateTime &end, const QStringList &systems)
{
    if (!systems.isEmpty()) {
        const QString error = m_systemTable->setSelectedSystems(systems);
        if (!error.isEmpty())
            return error;
    }
    m_ui->comboBoxMode->setCurrentIndex(HistoryIndex);
    m_timeRange.setRangeType(TimeRange::CustomInterval);
    m_timeRange.setStartSeconds(start.toSecsSinceEpoch());
    m_timeRange.setEndSeconds(end.toSecsSinceEpoch());
    m_timeRange.setTimeSpec(getTimeSpec());
    m_timeRangeEditor->setTimeRange(m_timeRange);
    showTimeRange();
    setNewMode(m_historyMode);
    return QString();
}

void SourceUiLong::prepareOnlineMode()
{
    m_ui->comboBoxMode->setCurrentIndex(LiveIndex);
    setNewMode(Constants::SourceModeLive);
}

void SourceUiLong::sourceModeIndexActivated(int index)
{
    if (index == LiveIndex)
        setNewMode(Constants::SourceModeLive);
    else if (index == HistoryIndex)
        setNewMode(m_historyMode);
    else
        ASLOG(this, MsgLoggerEnums::Warning,
              QStringLiteral("unexpected combo box index for new mode: ") + QString::number(index));
}

void SourceUiLong::setNewMode(Constants::SourceMode mode)
{
    if (mode == m_mode)
        return;
    if (mode == m_historyMode) {
        const QString error = m_systemTable->setInitial(m_initialSystems);
        if (!error.isEmpty())
            ASLOG(this, MsgLoggerEnums::Warning, error);
    }
    m_mode = mode;
    showTimeRange();
    showModeWidgets();
    emit changed();
}

void SourceUiLong::showModeWidgets()
{
    const bool history = m_mode == m_historyMode;
    m_ui->pushButtonTimeRange->setVisible(history);
    m_ui->pushButtonSystems->setVisible(history);
}

void SourceUiLong::showTimeRange()
{
    m_ui->pushButtonTimeRange->setText(m_timeRange.getDescription());
}

void SourceUiLong::sourceButtonClicked()
{
    QObject *source = sender();
    if (source && source == m_ui->pushButtonSystems)
        m_systemTable->toggleVisibilityBelowWidget(m_ui->pushButtonSystems);
    else if (source && source == m_ui->pushButtonTimeRange)
        m_timeRangeEditor->toggleVisibilityBelowWidget(m_ui->pushButtonTimeRange);
    else
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("click signal from unexpected button"));
}

void SourceUiLong::systemSelectionChanged(int nSelected, int nTotal)
{
    m_ui->pushButtonSystems->setText(tr("Systems %1 / %2").arg(nSelected).arg(nTotal));
    emit changed();
}

void SourceUiLong::timeRangeChanged(const TimeRange &range)
{
    m_timeRange = range;
    showTimeRange();
    emit changed();
}

void SourceUiLong::displaySourceState(Constants::SourceState state)
{
    if (state == m_state)
        return;
    m_state = state;
    if (!SourceStateStyle::isMeasuredState(state))
        m_queryStart = QDateTime();
    else if (!m_queryStart.isValid())
        m_queryStart = QDateTime::currentDateTime();
    showStateWidgets();
    SourceStateStyle::showState(m_ui->labelState, state);
}

void SourceUiLong::showStateWidgets()
{
    const bool measured = SourceStateStyle::isMeasuredState(m_state);
    const bool queryShown = m_state >= Constants::QueryStarting;
    m_ui->pushButtonAbort->setVisible(measured);
    m_ui->lineAbort->setVisible(measured);
    m_ui->labelState->setVisible(queryShown);
    m_ui->labelTime->setVisible(queryShown);
    m_ui->labelCounts->setVisible(queryShown);
}

void SourceUiLong::stateTimerTick()
{
    if (m_queryStart.isValid() && m_ui->labelTime->isVisible())
        m_ui->labelTime->setText(SourceStateStyle::elapsedText(m_queryStart, QDateTime::currentDateTime()));
}

void SourceUiLong::displaySourceCounts(unsigned int totalRead, unsigned int matching)
{
    m_ui->labelCounts->setText(tr("Matching: %1 / Total read: %2").arg(matching).arg(totalRead));
}

void SourceUiLong::displayFilterModified(bool equal)
{
    if (mayApplySettings())
        m_ui->labelModified->setVisible(!equal);
}

void SourceUiLong::setMayApplySettings(bool on)
{
    SourceUi::setMayApplySettings(on);
    m_ui->pushButtonApply->setVisible(on);
}
