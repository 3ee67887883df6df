#include "HttpSession.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr std::size_t maxChannels = 6; // as many as browsers open to one server

/** Bounds the memory used: redirects may lead to any number of servers. */
constexpr qsizetype maxInterimOrigins = 64;

} // namespace

HttpSession::HttpSession(const QByteArray& extraCertificates, Connectivity& connectivity)
    : m_extraCertificates(QSslCertificate::fromData(extraCertificates, QSsl::Pem)), m_connectivity(connectivity),
      m_tls(QSslConfiguration::defaultConfiguration()), m_trustsSystemCertificates(m_extraCertificates.isEmpty())
{
    m_tls.setProtocol(QSsl::TlsV1_2OrLater);
    if (!m_extraCertificates.isEmpty())
        m_tls.setCaCertificates(m_extraCertificates);
}

HttpChannel* HttpSession::findFreeChannel(const QUrl& url)
{
    const QString origin = HttpChannel::originOf(url);
    const auto isFree = [](const auto& channel) { return channel->isFree(); };
    const auto isConnected = [&](const auto& channel) { return channel->isFree() && channel->origin() == origin; };
    auto channel = std::find_if(m_channels.begin(), m_channels.end(), isConnected);
    if (channel == m_channels.end())
        channel = std::find_if(m_channels.begin(), m_channels.end(), isFree);
    if (channel != m_channels.end())
        return channel->get();
    if (m_channels.size() == maxChannels)
        return nullptr;
    m_channels.push_back(std::make_unique<HttpChannel>(m_cookies));
    connect(m_channels.back().get(), &HttpChannel::freed, this, &HttpSession::channelFreed);
    return m_channels.back().get();
}

QNetworkReply* HttpSession::get(HttpChannel& channel, QNetworkRequest request, HttpChannel::Connection connection)
{
    request.setSslConfiguration(m_tls);
    return channel.get(request, connection);
}

void HttpSession::addInterimOrigin(const QUrl& url)
{
    if (m_interimOrigins.size() == maxInterimOrigins)
        m_interimOrigins.clear();
    m_interimOrigins.insert(HttpChannel::originOf(url));
}

void HttpSession::trustSystemCertificates()
{
    if (m_trustsSystemCertificates)
        return;
    m_trustsSystemCertificates = true;
    m_tls.setCaCertificates(QSslConfiguration::systemCaCertificates() + m_extraCertificates);
}

} // namespace quillmere
