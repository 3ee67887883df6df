#pragma once

#include "Connectivity.h"

class QNetworkInformation;

namespace quillmere {

/**
 * The system's state, from any available QNetworkInformation backend; NetworkManager is not needed. Network thread
 * only.
 */
class SystemConnectivity : public Connectivity
{
public:
    bool isOnline() override;

private:
    QNetworkInformation* m_information = nullptr; ///< Qt's singleton; null if no backend could be loaded
    bool m_isLoaded = false;
};

} // namespace quillmere
