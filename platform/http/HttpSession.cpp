#include "HttpSession.h"

#include <utility>

HttpSession::HttpSession(const QByteArray& extraCertificates, Connectivity& connectivity)
    : m_extraCertificates(QSslCertificate::fromData(extraCertificates, QSsl::Pem)), m_connectivity(connectivity),
      m_tls(QSslConfiguration::defaultConfiguration()), m_trustsSystem(m_extraCertificates.isEmpty()),
      m_network(std::make_unique<QNetworkAccessManager>())
{
    m_tls.setProtocol(QSsl::TlsV1_2OrLater);
    if (!m_extraCertificates.isEmpty())
        m_tls.setCaCertificates(m_extraCertificates);
}

QNetworkReply* HttpSession::get(QNetworkRequest request)
{
    request.setSslConfiguration(m_tls);
    return m_network->get(request);
}

void HttpSession::trustSystem()
{
    if (m_trustsSystem)
        return;
    m_trustsSystem = true;
    m_tls.setCaCertificates(QSslConfiguration::systemCaCertificates() + m_extraCertificates);
    // A connection keeps the certificates of its first request, so the wider trust takes a network access of its own.
    m_former = std::exchange(m_network, std::make_unique<QNetworkAccessManager>());
}
