#pragma once

#include "AlarmRecord.h"
#include "SimulatedSystem.h"
#include "platform_export.h"

#include <QDateTime>
#include <QObject>
#include <QSharedPointer>
#include <QStringList>
#include <QTimer>

#include <functional>

class AlarmSimulator;

// A query of the alarm archives of some systems over a time range. It reads
// the archives step by step in the event loop, counts every row it reads and
// the rows the matcher accepts, hands the accepted rows over, and ends as
// finished, failed or aborted. A query needs a bounded time range.
class PLATFORM_EXPORT HistoryQuery : public QObject
{
    Q_OBJECT
public:
    enum State : int { Idle = 0, Starting = 1, Reading = 2, Finished = 3, Failed = 4, Aborted = 5 };
    Q_ENUM(State)

    using Matcher = std::function<bool(const AlarmRecord &)>;

    explicit HistoryQuery(const AlarmSimulator *simulator, QObject *parent = nullptr);

    // Rows the matcher refuses are counted as read but not handed over;
    // without a matcher every row matches.
    void setMatcher(const Matcher &matcher) { m_matcher = matcher; }

    // Refuses (false, with the reason) a range without both ends, a range
    // that ends before it starts, no systems, and systems without archive.
    // A query that runs is replaced (aborted first).
    bool start(const QDateTime &from, const QDateTime &to, const QStringList &systems, QString &errorText);
    void abort();

    State getState() const { return m_state; }
    bool isRunning() const { return m_state == Starting || m_state == Reading; }
    quint32 getMatchingCount() const { return m_matching; }
    quint32 getTotalRead() const { return m_totalRead; }
    QString getErrorText() const { return m_errorText; }

signals:
    void stateChanged(int state);
    void progress(quint32 matching, quint32 totalRead);
    void recordsRead(const AlarmRecordList &matching);

private:
    void readStep();
    void setState(State state);
    void fail(const QString &errorText);

    const AlarmSimulator *m_simulator;
    Matcher m_matcher;
    QTimer m_timer;
    State m_state = Idle;
    QVector<QSharedPointer<const SimulatedSystem>> m_systems;
    qint64 m_fromMs = 0;
    qint64 m_toMs = 0;
    int m_systemIndex = 0;
    qint64 m_hour = 0;
    AlarmRecordList m_hourRecords; // the hour being read
    int m_hourOffset = 0;
    bool m_hourLoaded = false;
    quint32 m_matching = 0;
    quint32 m_totalRead = 0;
    QString m_errorText;
};
