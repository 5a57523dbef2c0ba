#pragma once

#include "ActionAccessUser.h"
#include "SourceUi.h"
#include "widgets_export.h"

#include <QScopedPointer>

class SystemSelectionTable;
class TimeRangeEditor;
namespace Ui {
class SourceUiLong;
}

// The full source selector of the built-in panel: live alarms or a history query
// over a time range and a set of systems, with the state, elapsed time and counts
// of the source, Abort while a query runs, and Apply.
class WIDGETS_EXPORT SourceUiLong : public SourceUi, public ActionAccessUser
{
    Q_OBJECT
public:
    explicit SourceUiLong(const AlarmScreenConfiguration &config, QWidget *parent = nullptr);
    ~SourceUiLong() override;

    void setTimeSpec(Qt::TimeSpec timeSpec) override;
    void connectedSystemsChanged(const QStringList &systems) override;
    void addToFilter(const SourceAndFilter &filter) const override;
    void compareWithFilter(const SourceAndFilter &filter, bool applied) override;
    QString prepareArchiveMode(const QDateTime &start, const QDateTime &end, const QStringList &systems) override;
    void prepareOnlineMode() override;
    void displayFilterModified(bool equal) override;
    void displaySourceState(Constants::SourceState state) override;
    void displaySourceCounts(unsigned int totalRead, unsigned int matching) override;
    void setMayApplySettings(bool on) override;

    TimeRangeEditor *getTimeRangeEditor() const { return m_timeRangeEditor; }
    SystemSelectionTable *getSystemSelectionTable() const { return m_systemTable; }

public slots:
    void sourceModeIndexActivated(int index);
    void timeRangeChanged(const TimeRange &range);
    void systemSelectionChanged(int nSelected, int nTotal);
    void sourceButtonClicked();
    void stateTimerTick();

private:
    void setNewMode(Constants::SourceMode mode);
    void showModeWidgets();
    void showStateWidgets();
    void showTimeRange();

    QScopedPointer<Ui::SourceUiLong> m_ui;
    TimeRangeEditor *m_timeRangeEditor;
    SystemSelectionTable *m_systemTable;
};
