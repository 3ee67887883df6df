#pragma once

#include "Connectivity.h"

class QNetworkInformation;

/** The system's own word, by whatever tells it (a network monitor need not run). It lives on the network thread. */
class SystemConnectivity : public Connectivity
{
public:
    bool isOnline() override;

private:
    QNetworkInformation* m_information = nullptr; ///< one for the process, Qt's own
    bool m_isLoaded = false;
};
