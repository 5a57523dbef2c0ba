#pragma once

#include "Constants.h"
#include "MsgLoggingProducer.h"
#include "TimeRange.h"
#include "widgets_export.h"

#include <QDateTime>
#include <QStringList>
#include <QTimer>
#include <QWidget>

class AlarmScreenConfiguration;
class SourceAndFilter;

// The strip in which the operator chooses where alarms come from: live alarms,
// or a history query over a time range and a set of systems. This base holds
// the choice; variants show it.
class WIDGETS_EXPORT SourceUi : public QWidget, public MsgLoggingProducer
{
    Q_OBJECT
public:
    SourceUi(const AlarmScreenConfiguration &config, QWidget *parent);
    ~SourceUi() override;

    virtual Qt::TimeSpec getTimeSpec() const;
    virtual void setTimeSpec(Qt::TimeSpec timeSpec);
    virtual void connectedSystemsChanged(const QStringList &systems);
    // Writes the chosen source mode and time range into `filter`, in place. The
    // record comes as const because that is the signature panel plug-ins
    // override; callers always hand a record of their own, never a const
    // object, and overrides write through writableRecord().
    virtual void addToFilter(const SourceAndFilter &filter) const;
    virtual void compareWithFilter(const SourceAndFilter &filter, bool flag) = 0;
    // Switches to a history query over [start, end]; an error text when that is
    // not possible, else an empty string.
    virtual QString prepareArchiveMode(const QDateTime &start, const QDateTime &end,
                                       const QStringList &systems);
    virtual void prepareOnlineMode() = 0;
    virtual void displayFilterModified(bool equal) = 0;
    virtual void displaySourceState(Constants::SourceState state) = 0;
    virtual void displaySourceCounts(unsigned int first, unsigned int second) = 0;
    virtual bool mayApplySettings() const;
    virtual void setMayApplySettings(bool on);

    Constants::SourceMode getMode() const { return m_mode; }
    const TimeRange &getTimeRange() const { return m_timeRange; }

signals:
    void apply();
    void abortQuery();
    void changed();

protected:
    // The record addToFilter() updates.
    static SourceAndFilter &writableRecord(const SourceAndFilter &filter);

    Constants::SourceMode m_mode = Constants::SourceModeLive;
    Constants::SourceMode m_historyMode = Constants::SourceModeHistory;
    Constants::SourceState m_state = Constants::SourceNoQuery;
    QDateTime m_queryStart;
    QTimer m_stateTimer;
    TimeRange m_timeRange;
    // The systems to select when the operator enters history mode.
    QStringList m_initialSystems;
    bool m_mayApplySettings = false;
};
