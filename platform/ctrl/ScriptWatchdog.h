#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>

class QJSEngine;

// Interrupts a script engine that runs longer than allowed. The engine runs in
// the GUI thread and blocks it, so the watch has to be kept from a thread of
// its own.
class ScriptWatchdog
{
public:
    ScriptWatchdog();
    ~ScriptWatchdog();
    ScriptWatchdog(const ScriptWatchdog &) = delete;
    ScriptWatchdog &operator=(const ScriptWatchdog &) = delete;

    // Starts watching `engine` for `timeoutMs` milliseconds.
    void arm(QJSEngine *engine, int timeoutMs);
    // Stops watching and clears an interruption; true when the engine had to be
    // interrupted since arm().
    bool disarm();

private:
    void run();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    QJSEngine *m_engine = nullptr;
    std::chrono::steady_clock::time_point m_deadline;
    std::uint64_t m_generation = 0;
    bool m_fired = false;
    bool m_quit = false;
    std::thread m_thread;
};
