#include "SystemConnectivity.h"

#include <QNetworkInformation>

namespace quillmere {

bool SystemConnectivity::isOnline()
{
    if (!m_isLoaded) {
        m_isLoaded = true;
        // The default backend fails if NetworkManager does not run. The glib backend reads the routes itself.
        if (QNetworkInformation::loadBackendByName(u"glib") || QNetworkInformation::loadDefaultBackend())
            m_information = QNetworkInformation::instance();
        if (m_information)
            connect(m_information, &QNetworkInformation::reachabilityChanged, this, &Connectivity::changed);
    }
    if (!m_information)
        return true;
    const auto reachability = m_information->reachability();
    return reachability == QNetworkInformation::Reachability::Online ||
           reachability == QNetworkInformation::Reachability::Unknown;
}

} // namespace quillmere
