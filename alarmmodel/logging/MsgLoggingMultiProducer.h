#pragma once

#include "MsgLoggingProducer.h"

#include <QVector>

// A producer that forwards to several producers, for a service shared by
// components that each log their own way (a completion source used by several
// filter widgets, say). A message is written once to the console and once to
// every distinct buffer that any of the producers wants it in.
class ALARMMODEL_EXPORT MsgLoggingMultiProducer : public MsgLoggingProducer
{
public:
    MsgLoggingMultiProducer();
    explicit MsgLoggingMultiProducer(const MsgLoggingProducer *first);

    // Keeps a copy of the producer's settings: the producer itself may go away.
    void addLogProducer(const MsgLoggingProducer *producer);
    int logProducerCount() const;

    bool isLogged(MsgLoggerEnums::LogSeverity severity) const override;
    bool isMulti() const override;
    void addMessage(MsgLoggerEnums::LogSeverity severity, const QString &message,
                    const QString &source = QString()) const override;
    int getLogThreshold() const override;
    int getLogUserLogThreshold() const override;
    QList<QSharedPointer<MsgLoggerModel>> getUniqueLogBuffers() const override;

private:
    QVector<MsgLoggingProducer> m_producers;
};
