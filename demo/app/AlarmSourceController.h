#pragma once

#include "AlarmRecord.h"
#include "AlarmsModel.h"
#include "Constants.h"
#include "MsgLoggingProducer.h"
#include "SourceAndFilter.h"

#include <QObject>
#include <QSharedPointer>
#include <QStringList>

class AlarmSimulator;
class HistoryQuery;
class SimulationConfig;

// Feeds the alarm model from the simulated platform: in live mode with the
// pending alarms of the connected systems and every burst that follows, in
// history mode with the rows of one archive query. It reports the state of
// the source and the counts of a query as the source selector shows them.
//
// The simulated systems run all the time, so that switching back to live
// mode shows the alarms pending at that moment.
class AlarmSourceController : public QObject, public MsgLoggingProducer
{
    Q_OBJECT
public:
    AlarmSourceController(const MsgLoggingProducer *logger, const SimulationConfig &config,
                          const QSharedPointer<AlarmsModel> &model, QObject *parent = nullptr);
    ~AlarmSourceController() override;

    // Live alarms (aborts a running query).
    void startLive();
    // A history query over the filter's time range and systems, its rows
    // passing the filter's rule sets. False with `error` when the query
    // cannot start (the state is then QueryFailed).
    bool startHistory(const SourceAndFilter &filter, QString &error);
    void abortQuery();

    Constants::SourceMode getMode() const { return m_mode; }
    Constants::SourceState getState() const { return m_state; }
    bool isQueryRunning() const;
    AlarmSimulator *getSimulator() const { return m_simulator; }
    QStringList getArchiveSystems() const;

    static AlarmInstancePtr toAlarm(const AlarmRecord &record, bool connected);

signals:
    void stateChanged(Constants::SourceState state);
    // The arguments in the order the source selector takes them.
    void countsChanged(unsigned int totalRead, unsigned int matching);
    void queryFailed(const QString &errorText);

private:
    void setState(Constants::SourceState state);
    void applyLiveRecords(const AlarmRecordList &records);
    void systemConnectionChanged(const QString &system, bool connected);
    void systemResynchronized(const QString &system, const AlarmRecordList &pending);
    void queryStateChanged(int queryState);
    void queryRecordsRead(const AlarmRecordList &records);

    QSharedPointer<AlarmsModel> m_model;
    AlarmSimulator *m_simulator;
    HistoryQuery *m_query;
    Constants::SourceMode m_mode = Constants::SourceModeUndefined;
    Constants::SourceState m_state = Constants::SourceNoQuery;
};
