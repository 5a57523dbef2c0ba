#include "MsgLoggingMultiProducer.h"

#include "MsgLoggerModel.h"

#include <algorithm>

MsgLoggingMultiProducer::MsgLoggingMultiProducer() = default;

MsgLoggingMultiProducer::MsgLoggingMultiProducer(const MsgLoggingProducer *first)
    : MsgLoggingProducer(first)
{
    addLogProducer(first);
}

void MsgLoggingMultiProducer::addLogProducer(const MsgLoggingProducer *producer)
{
    if (!producer)
        return;
    if (producer->isMulti()) {
        // Flatten, so that a buffer is never reached along two paths.
        const auto *multi = static_cast<const MsgLoggingMultiProducer *>(producer);
        for (const MsgLoggingProducer &p : multi->m_producers)
            m_producers.append(p);
        return;
    }
    m_producers.append(MsgLoggingProducer(producer));
}

int MsgLoggingMultiProducer::logProducerCount() const
{
    return m_producers.size();
}

bool MsgLoggingMultiProducer::isLogged(MsgLoggerEnums::LogSeverity severity) const
{
    if (m_producers.isEmpty())
        return MsgLoggingProducer::isLogged(severity);
    return std::any_of(m_producers.cbegin(), m_producers.cend(),
                       [severity](const MsgLoggingProducer &p) { return p.isLogged(severity); });
}

bool MsgLoggingMultiProducer::isMulti() const
{
    return true;
}

void MsgLoggingMultiProducer::addMessage(MsgLoggerEnums::LogSeverity severity,
                                         const QString &message, const QString &source) const
{
    if (m_producers.isEmpty()) {
        MsgLoggingProducer::addMessage(severity, message, source);
        return;
    }
    bool toConsole = false;
    QList<QSharedPointer<MsgLoggerModel>> buffers;
    for (const MsgLoggingProducer &p : m_producers) {
        if (severity >= p.getLogThreshold())
            toConsole = true;
        const QSharedPointer<MsgLoggerModel> buffer = p.getLogBuffer();
        if (buffer && severity >= p.getLogUserLogThreshold() && !buffers.contains(buffer))
            buffers.append(buffer);
    }
    if (toConsole)
        writeToConsole(severity, decorate(message));
    for (const QSharedPointer<MsgLoggerModel> &buffer : qAsConst(buffers))
        buffer->addMessage(severity, source, message);
}

int MsgLoggingMultiProducer::getLogThreshold() const
{
    int threshold = MsgLoggingProducer::getLogThreshold();
    for (const MsgLoggingProducer &p : m_producers)
        threshold = std::min(threshold, p.getLogThreshold());
    return threshold;
}

int MsgLoggingMultiProducer::getLogUserLogThreshold() const
{
    int threshold = MsgLoggingProducer::getLogUserLogThreshold();
    for (const MsgLoggingProducer &p : m_producers)
        threshold = std::min(threshold, p.getLogUserLogThreshold());
    return threshold;
}

QList<QSharedPointer<MsgLoggerModel>> MsgLoggingMultiProducer::getUniqueLogBuffers() const
{
    QList<QSharedPointer<MsgLoggerModel>> result = MsgLoggingProducer::getUniqueLogBuffers();
    for (const MsgLoggingProducer &p : m_producers) {
        const QSharedPointer<MsgLoggerModel> buffer = p.getLogBuffer();
        if (buffer && !result.contains(buffer))
            result.append(buffer);
    }
    return result;
}
