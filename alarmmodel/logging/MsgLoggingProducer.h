#pragma once

#include "MsgLoggerEnums.h"
#include "alarmmodel_export.h"

#include <QList>
#include <QSharedPointer>
#include <QString>

class MsgLoggerModel;

// The logging interface every component receives or derives from.
//
// A producer carries logging settings (thresholds, how a line names its method,
// whether a time is added) and an optional shared log buffer, the message model
// that the operator's log views show. Producers are copied freely: a component
// built from a producer logs exactly like it and into the same buffer.
//
// Messages at or above the log threshold go to Qt's message log (category
// "alarmscreen"); messages at or above the user log threshold go to the buffer.
class ALARMMODEL_EXPORT MsgLoggingProducer
{
public:
    MsgLoggingProducer();
    // Copies the settings of `other`; a null pointer gives the defaults.
    explicit MsgLoggingProducer(const MsgLoggingProducer *other);
    MsgLoggingProducer(const MsgLoggingProducer &other);
    MsgLoggingProducer &operator=(const MsgLoggingProducer &other);
    virtual ~MsgLoggingProducer();

    virtual bool isLogged(MsgLoggerEnums::LogSeverity severity) const;
    virtual bool isMulti() const;
    // `source` names where the message comes from (the method), for the log views.
    virtual void addMessage(MsgLoggerEnums::LogSeverity severity, const QString &message,
                            const QString &source = QString()) const;
    virtual int getLogThreshold() const;
    virtual int getLogUserLogThreshold() const;
    virtual int getLogFunc() const;
    virtual bool isLogAddTime() const;
    virtual QSharedPointer<MsgLoggerModel> getLogBuffer() const;
    virtual QList<QSharedPointer<MsgLoggerModel>> getUniqueLogBuffers() const;
    virtual void setLogBuffer(const QSharedPointer<MsgLoggerModel> &buffer);

    void setLogThreshold(int threshold);
    void setLogUserLogThreshold(int threshold);
    void setLogFunc(int logFunc);
    void setLogAddTime(bool addTime);
    // Takes all settings and the buffer of `other` (a null pointer changes nothing).
    void copyLogSettings(const MsgLoggingProducer *other);

    // The default settings of producers built without a model to copy from.
    static void setDefaultLogThreshold(int threshold);
    static int defaultLogThreshold();

    // The prefix of a log line: nothing, the short method name or the full
    // signature, each followed by ": ".
    static QString logPrefix(int logFunc, const char *shortName, const char *fullName);

    // Used by ASLOG; not meant to be called directly.
    void logWithPrefix(MsgLoggerEnums::LogSeverity severity, const char *shortName,
                       const char *fullName, const QString &message) const;

protected:
    // Writes one finished line to Qt's message log.
    static void writeToConsole(MsgLoggerEnums::LogSeverity severity, const QString &line);
    QString decorate(const QString &message) const;

private:
    int m_logThreshold;
    int m_userLogThreshold;
    int m_logFunc;
    bool m_addTime;
    QSharedPointer<MsgLoggerModel> m_logBuffer;
};

// Logs through `producer` (a pointer to a MsgLoggingProducer) with the producer's
// method-name prefix. The message expression is evaluated only when the severity
// is logged at all, so building an expensive message costs nothing otherwise.
#define ASLOG(producer, severity, message)                                                   \
    do {                                                                                     \
        const MsgLoggingProducer *asLogProducer_ = (producer);                               \
        const MsgLoggerEnums::LogSeverity asLogSeverity_ = (severity);                       \
        if (asLogProducer_ && asLogProducer_->isLogged(asLogSeverity_))                      \
            asLogProducer_->logWithPrefix(asLogSeverity_, __func__, Q_FUNC_INFO, (message)); \
    } while (false)
