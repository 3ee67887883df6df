#include "WakeLock.h"

#include "DesktopLink.h"

namespace quillmere {

WakeLock::WakeLock(const QString& reason, const QString& busAddress)
{
    if (busAddress.isEmpty())
        return;
    m_link = new DesktopLink(busAddress, reason);
    m_link->setState({}, true);
}

WakeLock::~WakeLock()
{
    if (m_link != nullptr)
        m_link->close();
}

} // namespace quillmere
