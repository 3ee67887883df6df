#pragma once

#include "DisplayOutputs.h"
#include "OutputConfiguration.h"
#include "OutputPower.h"

/** The outputs of a Wayland compositor; it is connected to while they are off only. */
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
