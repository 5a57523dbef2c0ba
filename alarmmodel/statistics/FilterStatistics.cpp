#include "FilterStatistics.h"

namespace {
const char *const quantityKeys[] = {"matching",           "total",           "unacknowledged",
                                    "cameUnacknowledged", "cameAcknowledged", "wentUnacknowledged",
                                    "disconnected",       "highestPriority"};
}

void FilterStatistics::clear()
{
    *this = FilterStatistics();
}

void FilterStatistics::countAlarm(const AlarmInstance &alarm, bool matching, int delta)
{
    m_total += delta;
    if (!matching)
        return;
    m_matching += delta;
    m_byState[alarm.getData().state] += delta;
    if (!alarm.isConnected())
        m_disconnected += delta;
    const int priority = alarm.getData().priority;
    if ((m_priorities[priority] += delta) <= 0)
        m_priorities.remove(priority);
}

int FilterStatistics::get(Quantity quantity) const
{
    switch (quantity) {
    case Matching:
        return m_matching;
    case Total:
        return m_total;
    case Unacknowledged:
        return m_byState[AlarmInstance::CameUnacknowledged] + m_byState[AlarmInstance::WentUnacknowledged];
    case CameUnacknowledged:
        return m_byState[AlarmInstance::CameUnacknowledged];
    case CameAcknowledged:
        return m_byState[AlarmInstance::CameAcknowledged];
    case WentUnacknowledged:
        return m_byState[AlarmInstance::WentUnacknowledged];
    case Disconnected:
        return m_disconnected;
    case HighestPriority:
        return m_priorities.isEmpty() ? -1 : m_priorities.lastKey();
    }
    return 0;
}

QString FilterStatistics::quantityKey(Quantity quantity)
{
    return quantity >= Matching && quantity <= HighestPriority ? QLatin1String(quantityKeys[quantity]) : QString();
}

bool FilterStatistics::quantityFromKey(const QString &key, Quantity &quantity)
{
    for (int i = Matching; i <= HighestPriority; ++i) {
        if (key == QLatin1String(quantityKeys[i])) {
            quantity = Quantity(i);
            return true;
        }
    }
    return false;
}

bool FilterStatistics::operator==(const FilterStatistics &other) const
{
    for (int i = Matching; i <= HighestPriority; ++i) {
        if (get(Quantity(i)) != other.get(Quantity(i)))
            return false;
    }
    return true;
}
