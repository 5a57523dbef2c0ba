#include "Constants.h"

#include <QCoreApplication>
#include <QMetaEnum>

namespace {
// Files use the enumerator names without the enumeration's prefix
// ("Alarm" for ValueSourceAlarm).
template <typename E>
QString keyOf(E value, const char *prefix)
{
    const char *key = QMetaEnum::fromType<E>().valueToKey(value);
    return key ? QString::fromLatin1(key).mid(int(qstrlen(prefix))) : QString();
}

template <typename E>
bool valueOf(const QString &key, E &value, const char *prefix)
{
    bool ok = false;
    const int v = QMetaEnum::fromType<E>().keyToValue((QByteArray(prefix) + key.toLatin1()).constData(), &ok);
    if (ok)
        value = static_cast<E>(v);
    return ok;
}
} // namespace

QString Constants::getSourceStateVisibleName(SourceState state)
{
    switch (state) {
    case SourceDisconnected:
        return QCoreApplication::translate("Constants", "Disconnected");
    case SourceNoQuery:
        return QCoreApplication::translate("Constants", "NoQuery");
    case SourceConnecting:
        return QCoreApplication::translate("Constants", "Connecting");
    case SourceLoading:
        return QCoreApplication::translate("Constants", "Loading");
    case SourceLive:
        return QCoreApplication::translate("Constants", "Live");
    case QueryStarting:
        return QCoreApplication::translate("Constants", "Starting query");
    case QueryRunning:
        return QCoreApplication::translate("Constants", "Query running");
    case QueryFinished:
        return QCoreApplication::translate("Constants", "Query finished");
    case QueryFailed:
        return QCoreApplication::translate("Constants", "Query failed");
    case QueryAborted:
        return QCoreApplication::translate("Constants", "Query aborted");
    }
    return QCoreApplication::translate("Constants", "Unknown (%1)").arg(static_cast<int>(state));
}

QString Constants::sourceModeKey(SourceMode mode)
{
    return keyOf(mode, "SourceMode");
}

bool Constants::sourceModeFromKey(const QString &key, SourceMode &mode)
{
    return valueOf(key, mode, "SourceMode");
}

QString Constants::valueSourceKey(ValueSource source)
{
    return keyOf(source, "ValueSource");
}

bool Constants::valueSourceFromKey(const QString &key, ValueSource &source)
{
    return valueOf(key, source, "ValueSource");
}
