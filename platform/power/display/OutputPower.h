#pragma once

#include "WaylandConnection.h"
#include "wlr-output-power.h"

#include <optional>

namespace quillmere {

/**
 * Switches outputs by the Wayland protocol wlr-output-power-management. They stay part of the desktop, so no window
 * moves. Single thread.
 */
class OutputPower
{
public:
    /** Null if the compositor does not offer the protocol. */
    static std::unique_ptr<OutputPower> create(WaylandConnection& connection);

    /**
     * Switches off every output that is on. If none goes off, or one still reports that it is on, switches them on again
     * and returns false.
     */
    bool switchOff();
    /** Switches on the outputs that switchOff() switched off. */
    void switchOn();

private:
    struct Output
    {
        Proxy<wl_output> output;
        Proxy<zwlr_output_power_v1> power;
        std::optional<uint32_t> mode; ///< last reported mode; nullopt if the output cannot be switched
        bool wasOn = false;           ///< on before switchOff()
    };

    explicit OutputPower(WaylandConnection& connection) : m_connection(connection) {}
    void addOutputs();

    static const zwlr_output_power_v1_listener listener;

    WaylandConnection& m_connection;
    Proxy<zwlr_output_power_manager_v1> m_manager;
    std::vector<std::unique_ptr<Output>> m_outputs;
};

} // namespace quillmere
