#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace quillmere::demo {

/// A response of the hub, before it is sent over HTTP.
struct HubResponse
{
    int status = 200;
    std::string type; ///< media type
    std::string body;
    bool isDocument = false; ///< a JSON document: gets an ETag, may be compressed, does not support ranges
};

HubResponse jsonResponse(const nlohmann::json& document, int status = 200);
/// A JSON document with the error message.
HubResponse errorResponse(int status, const std::string& message);

/// A strong ETag for a body, without the quotation marks.
std::string etagOf(const std::string& body);
/// Whether an If-None-Match header contains this ETag.
bool matchesEtag(const std::string& ifNoneMatch, const std::string& etag);
/// Whether an Accept-Encoding header accepts gzip.
bool acceptsGzip(const std::string& acceptEncoding);
std::string gzip(const std::string& body);

} // namespace quillmere::demo
