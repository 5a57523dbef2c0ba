#include "ScriptWatchdog.h"

#include <QJSEngine>

ScriptWatchdog::ScriptWatchdog()
    : m_thread([this] { run(); })
{
}

ScriptWatchdog::~ScriptWatchdog()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_quit = true;
    }
    m_wake.notify_all();
    m_thread.join();
}

void ScriptWatchdog::arm(QJSEngine *engine, int timeoutMs)
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_engine = engine;
        m_deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
        m_fired = false;
        ++m_generation;
    }
    m_wake.notify_all();
}

bool ScriptWatchdog::disarm()
{
    bool fired = false;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        if (m_engine)
            m_engine->setInterrupted(false);
        m_engine = nullptr;
        ++m_generation;
        fired = m_fired;
    }
    m_wake.notify_all();
    return fired;
}

void ScriptWatchdog::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_quit) {
        if (!m_engine) {
            m_wake.wait(lock);
            continue;
        }
        const std::uint64_t generation = m_generation;
        const auto deadline = m_deadline;
        m_wake.wait_until(lock, deadline,
                          [&] { return m_quit || m_generation != generation; });
        if (!m_quit && m_generation == generation && m_engine
            && std::chrono::steady_clock::now() >= deadline) {
            m_engine->setInterrupted(true);
            m_fired = true;
            // Stay idle until the engine is disarmed.
            m_wake.wait(lock, [&] { return m_quit || m_generation != generation; });
        }
    }
}
