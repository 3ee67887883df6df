#pragma once

#include "DisplayOutputs.h"
#include "OutputConfiguration.h"
#include "OutputPower.h"

namespace quillmere {

/** The outputs of a Wayland compositor. The connection to it exists only while the outputs are off. */
class WaylandOutputs : public DisplayOutputs
{
public:
    bool switchOff() override;
    void switchOn() override;

private:
    void disconnect();

    std::unique_ptr<WaylandConnection> m_connection;
    std::unique_ptr<OutputPower> m_power;
    std::unique_ptr<OutputConfiguration> m_configuration;
};

} // namespace quillmere
