#pragma once

#include "WaylandConnection.h"
#include "wlr-output-power.h"

#include <optional>

/** Switches outputs by zwlr_output_power_manager_v1. They stay part of the desktop, and no window moves. One thread. */
class OutputPower
{
public:
    /** Null if the compositor does not offer it. */
    static std::unique_ptr<OutputPower> create(WaylandConnection& connection);

    /** Switches off every output that is on; false if none went off. */
    bool switchOff();
    /** Switches on those that went off. */
    void switchOn();

private:
    struct Output
    {
        Proxy<wl_output> output;
        Proxy<zwlr_output_power_v1> power;
        std::optional<uint32_t> mode; ///< as last reported; none if it cannot be switched
        bool wasOn = false;           ///< before switchOff
    };

    explicit OutputPower(WaylandConnection& connection) : m_connection(connection) {}
    void addOutputs();

    static const zwlr_output_power_v1_listener listener;

    WaylandConnection& m_connection;
    Proxy<zwlr_output_power_manager_v1> m_manager;
    std::vector<std::unique_ptr<Output>> m_outputs;
};
