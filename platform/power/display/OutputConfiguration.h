#pragma once

#include "WaylandConnection.h"
#include "wlr-output-management.h"

#include <optional>

namespace quillmere {

/**
 * Switches outputs by the Wayland protocol wlr-output-management, which removes them from the desktop and restores
 * them. For compositors without wlr-output-power-management (OutputPower). Single thread.
 */
class OutputConfiguration
{
public:
    /** Null if the compositor does not offer the protocol. */
    static std::unique_ptr<OutputConfiguration> create(WaylandConnection& connection);

    /** Disables every enabled output; false if the compositor refuses or no output is enabled. */
    bool switchOff();
    /**
     * Enables the disabled outputs that are still connected, in their previous state. If the compositor refuses that
     * state, lets it choose one.
     */
    void switchOn();

private:
    struct Mode
    {
        Proxy<zwlr_output_mode_v1> proxy;
        bool isRemoved = false;
    };

    struct State
    {
        zwlr_output_mode_v1* mode = nullptr;
        int32_t x = 0;
        int32_t y = 0;
        int32_t transform = 0;
        wl_fixed_t scale = 0;
    };

    struct Head
    {
        Proxy<zwlr_output_head_v1> proxy;
        bool isRemoved = false;
        bool isEnabled = false;
        State state;
        std::optional<State> before; ///< state before switchOff(); nullopt if it was disabled then
        std::vector<std::unique_ptr<Mode>> modes;
    };

    enum class Outcome { Pending, Succeeded, Failed, Cancelled };

    explicit OutputConfiguration(WaylandConnection& connection) : m_connection(connection) {}
    /** Calls `configure` for each head to describe its wanted state, then applies the configuration. */
    Outcome apply(const std::function<void(zwlr_output_configuration_v1&, Head&)>& configure);
    Outcome applyOnce(const std::function<void(zwlr_output_configuration_v1&, Head&)>& configure);
    static void enable(zwlr_output_configuration_v1& configuration, Head& head, bool withState);

    static const zwlr_output_manager_v1_listener managerListener;
    static const zwlr_output_head_v1_listener headListener;
    static const zwlr_output_mode_v1_listener modeListener;
    static const zwlr_output_configuration_v1_listener outcomeListener;

    WaylandConnection& m_connection;
    Proxy<zwlr_output_manager_v1> m_manager;
    std::vector<std::unique_ptr<Head>> m_heads;
    uint32_t m_serial = 0;
};

} // namespace quillmere
