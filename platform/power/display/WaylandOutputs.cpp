#include "WaylandOutputs.h"

namespace quillmere {

bool WaylandOutputs::switchOff()
{
    disconnect();
    m_connection = WaylandConnection::open();
    if (!m_connection)
        return false;
    if (m_power = OutputPower::create(*m_connection); m_power && m_power->switchOff())
        return true;
    m_power.reset();
    if (m_configuration = OutputConfiguration::create(*m_connection); m_configuration && m_configuration->switchOff())
        return true;
    disconnect();
    return false;
}

void WaylandOutputs::switchOn()
{
    if (m_power)
        m_power->switchOn();
    else if (m_configuration)
        m_configuration->switchOn();
    disconnect();
}

void WaylandOutputs::disconnect()
{
    m_configuration.reset();
    m_power.reset();
    m_connection.reset();
}

} // namespace quillmere
