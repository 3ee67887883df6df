#pragma once

#include <QByteArray>

#include <atomic>
#include <thread>

namespace quillmere {

/**
 * Fake X server that supports only connections and the DPMS extension, which switches the monitor. Runs on its own
 * thread. Sets DISPLAY while it exists.
 */
class ScriptedXServer
{
public:
    struct Options
    {
        bool offersDpms = true;
        bool refuses = false;   ///< the monitor stays on
        bool isEnabled = false; ///< whether DPMS is enabled at first
    };

    explicit ScriptedXServer(Options options);
    ~ScriptedXServer();

    bool isMonitorOn() const { return m_isMonitorOn; }
    /** Whether DPMS is enabled. */
    bool isEnabled() const { return m_isEnabled; }

private:
    void run();
    void serve(int client);
    void answer(int client, const QByteArray& request, quint16 sequence);

    QByteArray m_path; ///< path of the socket
    Options m_options;
    int m_listener = -1;
    int m_stopPipe[2] = {-1, -1}; ///< closing its write end stops the thread
    std::atomic_bool m_isMonitorOn = true;
    std::atomic_bool m_isEnabled;
    std::thread m_thread;
};

} // namespace quillmere
