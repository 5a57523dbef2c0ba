#include "MsgLoggingProducer.h"

#include "MsgLoggerModel.h"

#include <QDateTime>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcAlarmScreen, "alarmscreen", QtInfoMsg)

namespace {
int s_defaultThreshold = MsgLoggerEnums::Warning;
}

MsgLoggingProducer::MsgLoggingProducer()
    : m_logThreshold(s_defaultThreshold)
    , m_userLogThreshold(MsgLoggerEnums::Warning)
    , m_logFunc(MsgLoggerEnums::ShortFuncName)
    , m_addTime(false)
{
}

MsgLoggingProducer::MsgLoggingProducer(const MsgLoggingProducer *other)
    : MsgLoggingProducer()
{
    copyLogSettings(other);
}

MsgLoggingProducer::MsgLoggingProducer(const MsgLoggingProducer &other)
    : MsgLoggingProducer()
{
    copyLogSettings(&other);
}

MsgLoggingProducer &MsgLoggingProducer::operator=(const MsgLoggingProducer &other)
{
    if (this != &other)
        copyLogSettings(&other);
    return *this;
}

MsgLoggingProducer::~MsgLoggingProducer() = default;

void MsgLoggingProducer::copyLogSettings(const MsgLoggingProducer *other)
{
    if (!other)
        return;
    // Through the virtual getters, so that a multi producer hands on what it
    // effectively does.
    m_logThreshold = other->getLogThreshold();
    m_userLogThreshold = other->getLogUserLogThreshold();
    m_logFunc = other->getLogFunc();
    m_addTime = other->isLogAddTime();
    m_logBuffer = other->getLogBuffer();
}

bool MsgLoggingProducer::isLogged(MsgLoggerEnums::LogSeverity severity) const
{
    if (severity >= m_logThreshold)
        return true;
    return m_logBuffer && severity >= m_userLogThreshold;
}

bool MsgLoggingProducer::isMulti() const
{
    return false;
}

void MsgLoggingProducer::addMessage(MsgLoggerEnums::LogSeverity severity, const QString &message,
                                    const QString &source) const
{
    if (severity >= m_logThreshold)
        writeToConsole(severity, decorate(message));
    if (m_logBuffer && severity >= m_userLogThreshold)
        m_logBuffer->addMessage(severity, source, message);
}

int MsgLoggingProducer::getLogThreshold() const
{
    return m_logThreshold;
}

int MsgLoggingProducer::getLogUserLogThreshold() const
{
    return m_userLogThreshold;
}

int MsgLoggingProducer::getLogFunc() const
{
    return m_logFunc;
}

bool MsgLoggingProducer::isLogAddTime() const
{
    return m_addTime;
}

QSharedPointer<MsgLoggerModel> MsgLoggingProducer::getLogBuffer() const
{
    return m_logBuffer;
}

QList<QSharedPointer<MsgLoggerModel>> MsgLoggingProducer::getUniqueLogBuffers() const
{
    QList<QSharedPointer<MsgLoggerModel>> result;
    if (m_logBuffer)
        result.append(m_logBuffer);
    return result;
}

void MsgLoggingProducer::setLogBuffer(const QSharedPointer<MsgLoggerModel> &buffer)
{
    m_logBuffer = buffer;
}

void MsgLoggingProducer::setLogThreshold(int threshold)
{
    m_logThreshold = threshold;
}

void MsgLoggingProducer::setLogUserLogThreshold(int threshold)
{
    m_userLogThreshold = threshold;
}

void MsgLoggingProducer::setLogFunc(int logFunc)
{
    m_logFunc = logFunc;
}

void MsgLoggingProducer::setLogAddTime(bool addTime)
{
    m_addTime = addTime;
}

void MsgLoggingProducer::setDefaultLogThreshold(int threshold)
{
    s_defaultThreshold = threshold;
}

int MsgLoggingProducer::defaultLogThreshold()
{
    return s_defaultThreshold;
}

QString MsgLoggingProducer::logPrefix(int logFunc, const char *shortName, const char *fullName)
{
    switch (logFunc) {
    case MsgLoggerEnums::ShortFuncName:
        return QLatin1String(shortName) + QLatin1String(": ");
    case MsgLoggerEnums::FullFuncName:
        return QLatin1String(fullName) + QLatin1String(": ");
    default:
        return QString();
    }
}

void MsgLoggingProducer::logWithPrefix(MsgLoggerEnums::LogSeverity severity, const char *shortName,
                                       const char *fullName, const QString &message) const
{
    addMessage(severity, logPrefix(getLogFunc(), shortName, fullName) + message,
               QLatin1String(shortName));
}

QString MsgLoggingProducer::decorate(const QString &message) const
{
    if (!isLogAddTime())
        return message;
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz "))
           + message;
}

void MsgLoggingProducer::writeToConsole(MsgLoggerEnums::LogSeverity severity, const QString &line)
{
    switch (severity) {
    case MsgLoggerEnums::Trace:
    case MsgLoggerEnums::DetailedTrace:
        qCInfo(lcAlarmScreen).noquote() << line;
        break;
    case MsgLoggerEnums::Warning:
        qCWarning(lcAlarmScreen).noquote() << line;
        break;
    default:
        qCCritical(lcAlarmScreen).noquote() << line;
        break;
    }
}
