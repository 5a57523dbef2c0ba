#pragma once

#include "AlarmInstance.h"
#include "AlarmMatcher.h"
#include "AlarmRecord.h"
#include "Constants.h"
#include "MsgLoggingProducer.h"
#include "SourceAndFilter.h"
#include "alarmmodel_export.h"

#include <QObject>
#include <QSharedPointer>

class AlarmSimulator;
class AlarmsModel;
class HistoryQuery;

// Feeds an alarm model from the platform's alarm systems: the live alarms of
// all systems, or the result of a history query. It keeps the model's
// connection state, the platform's system registry and the list of archive
// systems in step with the systems, and reports the source state and the
// query counts for the source selector.
//
// When a system disconnects its alarms stay in the model, marked as
// disconnected; when it comes back its alarms are brought up to date.
class ALARMMODEL_EXPORT AlarmSource : public QObject, public MsgLoggingProducer
{
    Q_OBJECT
public:
    AlarmSource(AlarmSimulator *simulator, const QSharedPointer<AlarmsModel> &model,
                const MsgLoggingProducer *logger = nullptr, QObject *parent = nullptr);
    ~AlarmSource() override;

    // Starts the source chosen in `filter`: live alarms, or a history query
    // over its time range and systems (rows that do not pass its structured
    // filter are counted but not kept). A refused query leaves the previous
    // content and state and returns false with the reason.
    bool apply(const SourceAndFilter &filter, QString &errorText);
    void startLive();
    bool startHistory(const SourceAndFilter &filter, QString &errorText);
    // Aborts a running history query.
    void abortQuery();

    Constants::SourceMode getMode() const { return m_mode; }
    Constants::SourceState getState() const { return m_state; }
    unsigned int getTotalRead() const { return m_totalRead; }
    unsigned int getMatching() const { return m_matching; }
    QString getErrorText() const { return m_errorText; }

    // The alarm as the model holds it.
    static AlarmInstancePtr toInstance(const AlarmRecord &record, bool connected = true);

signals:
    void sourceStateChanged(int state);
    // In the argument order of the source selector's displaySourceCounts.
    void sourceCountsChanged(unsigned int totalRead, unsigned int matching);

private:
    void setState(Constants::SourceState state);
    void liveBurst(const AlarmRecordList &records);
    void systemConnectionChanged(const QString &system, bool connected);
    void systemResynchronized(const QString &system, const AlarmRecordList &pending);
    void queryStateChanged(int state);
    void queryProgress(quint32 matching, quint32 totalRead);
    void queryRecords(const AlarmRecordList &records);
    void publishSystems();

    AlarmSimulator *m_simulator;
    QSharedPointer<AlarmsModel> m_model;
    HistoryQuery *m_query;
    AlarmMatcher m_queryMatcher;
    QVector<AlarmInstancePtr> m_queryMatches; // converted by the matcher, not yet in the model
    Constants::SourceMode m_mode = Constants::SourceModeUndefined;
    Constants::SourceState m_state = Constants::SourceNoQuery;
    unsigned int m_totalRead = 0;
    unsigned int m_matching = 0;
    QString m_errorText;
};
