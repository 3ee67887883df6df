#pragma once

#include "WaylandConnection.h"
#include "wlr-output-management.h"

#include <optional>

/**
 * Switches outputs by zwlr_output_manager_v1, which takes them out of the desktop and puts them back as they were: for
 * compositors without zwlr_output_power_manager_v1. One thread.
 */
class OutputConfiguration
{
public:
    /** Null if the compositor does not offer it. */
    static std::unique_ptr<OutputConfiguration> create(WaylandConnection& connection);

    /** Disables every output that is enabled; false if the compositor refuses or none is. */
    bool switchOff();
    /** Enables those again that are still connected, as they were or, where that is refused, somehow. */
    void switchOn();

private:
    struct Mode
    {
        Proxy<zwlr_output_mode_v1> proxy;
        bool isGone = false;
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
        bool isGone = false;
        bool isEnabled = false;
        State state;
        std::optional<State> before; ///< as it was when it was disabled here
        std::vector<std::unique_ptr<Mode>> modes;
    };

    enum class Outcome { Pending, Succeeded, Failed, Cancelled };

    explicit OutputConfiguration(WaylandConnection& connection) : m_connection(connection) {}
    /** Has `configure` describe the wanted state of each head, and applies it. */
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
