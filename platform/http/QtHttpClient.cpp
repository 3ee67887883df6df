#include "QtHttpClient.h"

QtHttpClient::QtHttpClient(QByteArray extraCertificates, std::unique_ptr<Connectivity> connectivity)
    : m_extraCertificates(std::move(extraCertificates)), m_connectivity(std::move(connectivity))
{
}

QtHttpClient::~QtHttpClient() = default;

QCoro::Task<HttpResult> QtHttpClient::get(HttpRequest, CancelToken)
{
    co_return tl::unexpected(HttpFailure{HttpFailure::Kind::Network, {}});
}
