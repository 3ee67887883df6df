#pragma once

#include <QTemporaryDir>

#include <atomic>
#include <memory>
#include <thread>

namespace quillmere {

/**
 * Fake Wayland compositor that has only outputs. It offers one or both protocols for switching them, and can be
 * configured to misbehave. Runs on its own thread. Sets WAYLAND_DISPLAY while it exists.
 */
class ScriptedCompositor
{
public:
    struct Options
    {
        bool offersPower = false;         ///< offers wlr-output-power-management
        bool offersConfiguration = false; ///< offers wlr-output-management
        int outputs = 1;
        int outputsOff = 0;              ///< how many of the outputs are off at first
        bool refuses = false;            ///< no output is ever switched
        bool sendsFailed = false;        ///< power protocol: sends `failed` for every output
        bool isSlow = false;             ///< power protocol: outputs are switched up to 100 ms late
        bool refusesState = false;       ///< refuses configurations that set an output's mode
        int cancelledConfigurations = 0; ///< how many configurations are cancelled, as if the outputs had changed
    };

    explicit ScriptedCompositor(Options options);
    ~ScriptedCompositor();

    /** Number of outputs that are on. */
    int outputsOn() const { return m_outputsOn; }
    /** Number of connected clients. */
    int clients() const { return m_clients; }
    /** Last state that a client requested for an enabled output: width of its mode, position, transform and scale. */
    QString lastEnabled() const;
    /** Description of the last request that violated the protocol; empty if there was none. */
    QString protocolError() const;

    /** Unplugs the last output soon; isUnplugging() is false once it is done. */
    void unplug() { m_isUnplugging = true; }
    bool isUnplugging() const { return m_isUnplugging; }

private:
    struct Server;

    void run();

    QTemporaryDir m_folder;
    Options m_options;
    std::atomic_int m_outputsOn;
    std::atomic_int m_clients = 0;
    std::atomic_bool m_isUnplugging = false;
    std::atomic_bool m_stops = false;
    std::unique_ptr<Server> m_server;
    std::thread m_thread;
};

} // namespace quillmere
