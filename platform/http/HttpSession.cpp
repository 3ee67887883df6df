#include "HttpSession.h"

#include <algorithm>

namespace {

constexpr std::size_t mostLines = 6; // as many as browsers open to one server

/** Servers to remember something of; redirects may lead to any number of them. */
constexpr qsizetype mostOrigins = 64;

} // namespace

HttpSession::HttpSession(const QByteArray& extraCertificates, Connectivity& connectivity)
    : m_extraCertificates(QSslCertificate::fromData(extraCertificates, QSsl::Pem)), m_connectivity(connectivity),
      m_tls(QSslConfiguration::defaultConfiguration()), m_trustsSystem(m_extraCertificates.isEmpty())
{
    m_tls.setProtocol(QSsl::TlsV1_2OrLater);
    if (!m_extraCertificates.isEmpty())
        m_tls.setCaCertificates(m_extraCertificates);
}

HttpLine* HttpSession::freeLine(const QUrl& url)
{
    const QString origin = HttpLine::originOf(url);
    const auto isFree = [](const auto& line) { return line->isFree(); };
    const auto isConnected = [&](const auto& line) { return line->isFree() && line->origin() == origin; };
    auto line = std::find_if(m_lines.begin(), m_lines.end(), isConnected);
    if (line == m_lines.end())
        line = std::find_if(m_lines.begin(), m_lines.end(), isFree);
    if (line != m_lines.end())
        return line->get();
    if (m_lines.size() == mostLines)
        return nullptr;
    m_lines.push_back(std::make_unique<HttpLine>(m_cookies));
    connect(m_lines.back().get(), &HttpLine::freed, this, &HttpSession::lineFreed);
    return m_lines.back().get();
}

QNetworkReply* HttpSession::get(HttpLine& line, QNetworkRequest request, HttpLine::Way way)
{
    request.setSslConfiguration(m_tls);
    return line.get(request, way);
}

void HttpSession::rememberInterimStatus(const QUrl& url)
{
    if (m_interimOrigins.size() == mostOrigins)
        m_interimOrigins.clear();
    m_interimOrigins.insert(HttpLine::originOf(url));
}

void HttpSession::trustSystem()
{
    if (m_trustsSystem)
        return;
    m_trustsSystem = true;
    m_tls.setCaCertificates(QSslConfiguration::systemCaCertificates() + m_extraCertificates);
}
