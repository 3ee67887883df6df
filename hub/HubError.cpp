#include "HubError.h"

using namespace Qt::StringLiterals;

namespace quillmere {

HubError::HubError(Case which) : m_case(std::move(which)) {}

HubError HubError::http(int status)
{
    return HubError(Http{status});
}

HubError HubError::transport(QString message)
{
    return HubError(Transport{std::move(message)});
}

HubError HubError::badURL()
{
    return HubError(BadURL{});
}

QString HubError::errorDescription() const
{
    if (const auto* http = std::get_if<Http>(&m_case))
        return u"The hub answered %1."_s.arg(http->status);
    if (const auto* transport = std::get_if<Transport>(&m_case))
        return transport->message;
    return u"That address didn't resolve."_s;
}

} // namespace quillmere
