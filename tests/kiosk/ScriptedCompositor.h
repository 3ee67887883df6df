#pragma once

#include <QTemporaryDir>

#include <atomic>
#include <memory>
#include <thread>

/**
 * A Wayland compositor with outputs and nothing else, on a thread of its own, that WAYLAND_DISPLAY names while it exists.
 * It switches its outputs by one of the two protocols, or as badly as a test wants.
 */
class ScriptedCompositor
{
public:
    struct Terms
    {
        bool offersPower = false;
        bool offersConfiguration = false;
        int outputs = 1;
        int outputsOff = 0;        ///< of them, at first
        bool refuses = false;      ///< nothing is switched
        bool saysFailed = false;   ///< the power protocol's word for an output that cannot be switched
        bool isSlow = false;       ///< the power protocol's outputs are switched after the next answers
        bool refusesState = false; ///< configurations that name an output's mode
        int changesMeanwhile = 0;  ///< configurations that come too late, as the outputs have changed
    };

    explicit ScriptedCompositor(Terms terms);
    ~ScriptedCompositor();

    /** Outputs that are on now. */
    int outputsOn() const { return m_outputsOn; }
    /** Programs that are connected now. */
    int clients() const { return m_clients; }
    /** Of the last output that a configuration enabled: its mode's width, its position, transform and scale. */
    QString lastEnabled() const;
    /** A request that the protocol forbids, empty if there was none. */
    QString complaint() const;

    /** Unplugs the last output. */
    void unplug() { m_isUnplugging = true; }
    bool isUnplugging() const { return m_isUnplugging; }

private:
    struct Server;

    void run();

    QTemporaryDir m_folder;
    Terms m_terms;
    std::atomic_int m_outputsOn;
    std::atomic_int m_clients = 0;
    std::atomic_bool m_isUnplugging = false;
    std::atomic_bool m_ends = false;
    std::unique_ptr<Server> m_server;
    std::thread m_thread;
};
