#include "AlarmInstance.h"

#include <QCoreApplication>
#include <QDateTime>

namespace {

const QString &cachedText(int kind, int value)
{
    // Enumeration texts are built once and shared by every alarm.
    static std::array<std::array<QString, 4>, 3> cache;
    static bool built = false;
    if (!built) {
        const char *states[] = {QT_TRANSLATE_NOOP("AlarmInstance", "Came/unack."),
                                QT_TRANSLATE_NOOP("AlarmInstance", "Came/ack."),
                                QT_TRANSLATE_NOOP("AlarmInstance", "Went/unack."),
                                QT_TRANSLATE_NOOP("AlarmInstance", "Went/ack.")};
        for (int i = 0; i < 4; ++i)
            cache[0][i] = QCoreApplication::translate("AlarmInstance", states[i]);
        cache[1][0] = QCoreApplication::translate("AlarmInstance", "came");
        cache[1][1] = QCoreApplication::translate("AlarmInstance", "went");
        cache[2][0] = QCoreApplication::translate("AlarmInstance", "disconnected");
        cache[2][1] = QCoreApplication::translate("AlarmInstance", "connected");
        cache[2][2] = QCoreApplication::translate("AlarmInstance", "no");
        cache[2][3] = QCoreApplication::translate("AlarmInstance", "yes");
        built = true;
    }
    static const QString empty;
    return value >= 0 && value < 4 ? cache[kind][value] : empty;
}

const QString &priorityText(int priority)
{
    static std::array<QString, 256> cache;
    if (priority < 0 || priority > 255) {
        static thread_local QString scratch;
        scratch = QString::number(priority);
        return scratch;
    }
    QString &text = cache[priority];
    if (text.isNull())
        text = QString::number(priority);
    return text;
}

void putDigits(QChar *&out, int value, int width)
{
    for (int i = width - 1; i >= 0; --i) {
        out[i] = QLatin1Char(char('0' + value % 10));
        value /= 10;
    }
    out += width;
}

int compareNumbers(qint64 a, qint64 b)
{
    return a < b ? -1 : (a > b ? 1 : 0);
}

} // namespace

AlarmInstance::AlarmInstance(const Data &data) : m_data(data)
{
    m_texts[AlarmProp::System] = data.ident.getSystem();
    m_texts[AlarmProp::Dpe] = data.dpe;
    m_texts[AlarmProp::Alias] = data.alias;
    m_texts[AlarmProp::Description] = data.description;
    m_texts[AlarmProp::AlarmText] = data.alarmText;
    m_texts[AlarmProp::Priority] = priorityText(data.priority);
    m_texts[AlarmProp::State] = stateText(data.state);
    m_texts[AlarmProp::Direction] = directionText(data.direction);
    m_texts[AlarmProp::Time] = formatTime(data.timeMs);
    m_texts[AlarmProp::AckTime] = formatTime(data.ackTimeMs);
    m_texts[AlarmProp::Value] = QString::number(data.value, 'g', 8);
    m_texts[AlarmProp::AlarmClass] = data.alarmClass;
    m_texts[AlarmProp::Acknowledgeable] = cachedText(2, data.acknowledgeable ? 3 : 2);
    m_texts[AlarmProp::Connection] = cachedText(2, data.connected ? 1 : 0);
    m_texts[AlarmProp::Acknowledged] = cachedText(2, isAcknowledged() ? 3 : 2);
}

QVariant AlarmInstance::getProperty(const AlarmProp &prop, Qt::ItemDataRole role) const
{
    return getProperty(prop.getIndex(), role);
}

QVariant AlarmInstance::getProperty(int propIndex, Qt::ItemDataRole role) const
{
    if (propIndex < 0 || propIndex >= AlarmProp::Count)
        return QVariant();
    if (role == Qt::DisplayRole)
        return m_texts[propIndex];
    if (role != Qt::EditRole)
        return QVariant();
    switch (propIndex) {
    case AlarmProp::Priority:
        return m_data.priority;
    case AlarmProp::State:
        return int(m_data.state);
    case AlarmProp::Direction:
        return int(m_data.direction);
    case AlarmProp::Time:
    case AlarmProp::AckTime: {
        const qint64 ms = propIndex == AlarmProp::Time ? m_data.timeMs : m_data.ackTimeMs;
        return ms ? QVariant(QDateTime::fromMSecsSinceEpoch(ms)) : QVariant();
    }
    case AlarmProp::Value:
        return m_data.value;
    case AlarmProp::Acknowledgeable:
        return m_data.acknowledgeable;
    case AlarmProp::Connection:
        return m_data.connected;
    case AlarmProp::Acknowledged:
        return isAcknowledged();
    default:
        return m_texts[propIndex];
    }
}

const QString &AlarmInstance::noText()
{
    static const QString empty;
    return empty;
}

bool AlarmInstance::isAcknowledged() const
{
    return m_data.state == CameAcknowledged || m_data.state == WentAcknowledged;
}

int AlarmInstance::compare(const AlarmInstance &a, const AlarmInstance &b, int propIndex)
{
    const Data &x = a.m_data;
    const Data &y = b.m_data;
    switch (propIndex) {
    case AlarmProp::Priority:
        return compareNumbers(x.priority, y.priority);
    case AlarmProp::State:
        return compareNumbers(x.state, y.state);
    case AlarmProp::Direction:
        return compareNumbers(x.direction, y.direction);
    case AlarmProp::Time:
        return compareNumbers(x.timeMs, y.timeMs);
    case AlarmProp::AckTime:
        return compareNumbers(x.ackTimeMs, y.ackTimeMs);
    case AlarmProp::Value:
        return x.value < y.value ? -1 : (y.value < x.value ? 1 : 0);
    case AlarmProp::Acknowledgeable:
        return compareNumbers(x.acknowledgeable, y.acknowledgeable);
    case AlarmProp::Connection:
        return compareNumbers(x.connected, y.connected);
    case AlarmProp::Acknowledged:
        return compareNumbers(a.isAcknowledged(), b.isAcknowledged());
    default:
        return a.getText(propIndex).compare(b.getText(propIndex));
    }
}

QSharedPointer<AlarmInstance> AlarmInstance::withConnection(bool connected) const
{
    Data data = m_data;
    data.connected = connected;
    return QSharedPointer<AlarmInstance>::create(data);
}

QString AlarmInstance::stateText(State state)
{
    return cachedText(0, state);
}

QString AlarmInstance::directionText(Direction direction)
{
    return cachedText(1, direction);
}

QString AlarmInstance::formatTime(qint64 msSinceEpoch)
{
    if (msSinceEpoch == 0)
        return QString();
    // Formatting by hand: QDateTime::toString is several times slower, and
    // every alarm of a large history query needs two of these texts.
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(msSinceEpoch);
    const QDate date = local.date();
    const QTime time = local.time();
    QString text(23, Qt::Uninitialized);
    QChar *out = text.data();
    putDigits(out, date.year(), 4);
    *out++ = QLatin1Char('-');
    putDigits(out, date.month(), 2);
    *out++ = QLatin1Char('-');
    putDigits(out, date.day(), 2);
    *out++ = QLatin1Char(' ');
    putDigits(out, time.hour(), 2);
    *out++ = QLatin1Char(':');
    putDigits(out, time.minute(), 2);
    *out++ = QLatin1Char(':');
    putDigits(out, time.second(), 2);
    *out++ = QLatin1Char('.');
    putDigits(out, time.msec(), 3);
    return text;
}
