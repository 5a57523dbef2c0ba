#include "ColorUsageCounter.h"

#include <algorithm>

ColorUsageCounter::ColorUsageCounter(const MsgLoggingProducer *logger) : MsgLoggingProducer(logger) {}

ColorUsageCounter::~ColorUsageCounter()
{
    transferAll(m_target, false);
}

void ColorUsageCounter::setFinalTarget(ColorUsageCounter *target)
{
    if (target == this) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("a colour usage counter cannot be its own target"));
        return;
    }
    if (target == m_target)
        return;
    transferAll(m_target, false);
    m_target = target;
    transferAll(m_target, true);
}

void ColorUsageCounter::incrementColorUsage(const QString &name)
{
    if (name.isEmpty())
        return;
    ++m_counts[name];
    if (m_target)
        m_target->incrementColorUsage(name);
}

void ColorUsageCounter::decrementColorUsage(const QString &name)
{
    const auto it = m_counts.find(name);
    if (it == m_counts.end()) {
        ASLOG(this, MsgLoggerEnums::Warning,
              QStringLiteral("colour '%1' released more often than used").arg(name));
        return;
    }
    if (--*it == 0)
        m_counts.erase(it);
    if (m_target)
        m_target->decrementColorUsage(name);
}

bool ColorUsageCounter::isColorUsed(const QString &name) const
{
    return m_counts.value(name) > 0;
}

QStringList ColorUsageCounter::getColors() const
{
    QStringList names = m_counts.keys();
    std::sort(names.begin(), names.end());
    return names;
}

void ColorUsageCounter::transferAll(ColorUsageCounter *target, bool increment) const
{
    if (!target)
        return;
    for (auto it = m_counts.constBegin(); it != m_counts.constEnd(); ++it) {
        for (int i = 0; i < it.value(); ++i) {
            if (increment)
                target->incrementColorUsage(it.key());
            else
                target->decrementColorUsage(it.key());
        }
    }
}
