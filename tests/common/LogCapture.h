#pragma once

#include "MsgLoggerModel.h"
#include "MsgLoggingProducer.h"

#include <QSharedPointer>
#include <QStringList>

// A logging producer whose lines land in a buffer the test reads, and never on
// the console.
struct LogCapture
{
    explicit LogCapture(int logFunc = MsgLoggerEnums::NoFuncName)
        : buffer(QSharedPointer<MsgLoggerModel>::create(nullptr, 10000))
    {
        producer.setLogThreshold(4);
        producer.setLogUserLogThreshold(0);
        producer.setLogFunc(logFunc);
        producer.setLogBuffer(buffer);
    }

    // Every line as "<severity>|<text>", oldest first.
    QStringList lines() const
    {
        QStringList result;
        for (int row = 0; row < buffer->rowCount(); ++row) {
            const int severity =
                buffer->data(buffer->index(row, MsgLoggerModel::SeverityColumn), Qt::EditRole).toInt();
            const QString text = buffer->data(buffer->index(row, MsgLoggerModel::TextColumn)).toString();
            result << QString::number(severity) + QLatin1Char('|') + text;
        }
        return result;
    }

    void clear() { buffer->clear(); }

    QSharedPointer<MsgLoggerModel> buffer;
    MsgLoggingProducer producer;
};
