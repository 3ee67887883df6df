#pragma once

#include <QByteArray>

#include <atomic>
#include <thread>

/**
 * The least of an X server, on a thread of its own, that DISPLAY names while it exists: connections, and the extension that
 * switches the monitor.
 */
class ScriptedXServer
{
public:
    struct Terms
    {
        bool offersDpms = true;
        bool refuses = false; ///< the monitor stays on
        bool isEnabled = false;
    };

    explicit ScriptedXServer(Terms terms);
    ~ScriptedXServer();

    bool isMonitorOn() const { return m_isMonitorOn; }
    bool isEnabled() const { return m_isEnabled; }

private:
    void run();
    void serve(int client);
    void answer(int client, const QByteArray& request, quint16 sequence);

    QByteArray m_path; ///< of the socket
    Terms m_terms;
    int m_listener = -1;
    int m_end[2] = {-1, -1}; ///< of the pipe that ends the thread
    std::atomic_bool m_isMonitorOn = true;
    std::atomic_bool m_isEnabled;
    std::thread m_thread;
};
