#pragma once

#include "PlatformLog.h"

#include <QStringList>

// Collects the platform's log lines while it lives.
class PlatformLogCapture
{
public:
    PlatformLogCapture()
    {
        m_previous = PlatformLog::setSink(
            [this](PlatformLog::Severity, const QString &line) { m_lines.append(line); });
    }
    ~PlatformLogCapture() { PlatformLog::setSink(m_previous); }
    PlatformLogCapture(const PlatformLogCapture &) = delete;
    PlatformLogCapture &operator=(const PlatformLogCapture &) = delete;

    const QStringList &lines() const { return m_lines; }
    QString all() const { return m_lines.join(QLatin1Char('\n')); }

private:
    QStringList m_lines;
    PlatformLog::Sink m_previous;
};
