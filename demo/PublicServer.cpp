#include "PublicServer.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <memory>
#include <openssl/ssl.h>
#include <sys/socket.h>

namespace quillmere::demo {

using namespace std::chrono_literals;

namespace {

constexpr std::size_t threads = 32; // each open connection occupies one
constexpr std::size_t requestsPerConnection = 10000;
constexpr int idleSeconds = 15; // until an idle connection is closed
constexpr auto maxStall = 10min;

/// Closes the connection without a response.
void closeConnection(const SSL* ssl)
{
    shutdown(SSL_get_fd(ssl), SHUT_RDWR);
}

/// Whether a client that waits for a response has closed its connection. Such a client sends nothing else, so any
/// readable data is the end of the connection.
bool isClosedByClient(const SSL* ssl)
{
    char byte = 0;
    return recv(SSL_get_fd(ssl), &byte, 1, MSG_PEEK | MSG_DONTWAIT) >= 0 || (errno != EAGAIN && errno != EINTR);
}

/// Clamps the requested ranges to the size of the body. Returns false if a range starts beyond its end.
bool clampRanges(httplib::Ranges& ranges, std::size_t size)
{
    const auto end = static_cast<ssize_t>(size);
    for (auto& [first, last] : ranges) {
        if (first >= end) {
            return false;
        }
        // A suffix range ("bytes=-N") has no first; its last counts from the end.
        last = std::min(last, first < 0 ? end : end - 1);
    }
    return true;
}

} // namespace

PublicServer::PublicServer(Hub& hub, Faults& faults, RequestLog& log, const std::string& certificate,
                           const std::string& key)
    : m_hub(hub), m_faults(faults), m_log(log), m_server(certificate.c_str(), key.c_str())
{
    if (!m_server.is_valid()) {
        return;
    }
    SSL_CTX_set_min_proto_version(m_server.ssl_context(), TLS1_2_VERSION);
    m_server.new_task_queue = [] { return new httplib::ThreadPool(threads); }; // owned by the server
    m_server.set_keep_alive_max_count(requestsPerConnection);
    m_server.set_keep_alive_timeout(idleSeconds);
    m_server.set_tcp_nodelay(true);
    m_server.set_socket_options([](int socket) {
        // Unlike the library's default option, this one does not let two servers share a port.
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
    });
    m_server.Get(".*",
                 [this](const httplib::Request& request, httplib::Response& response) { serve(request, response); });
}

bool PublicServer::bind(const std::string& address, int port)
{
    return m_server.bind_to_port(address, port);
}

void PublicServer::serve(const httplib::Request& request, httplib::Response& response)
{
    const std::uint64_t entry = m_log.begin(request.method, request.target, request.get_header_value("If-None-Match"));
    const std::optional<Fault> fault = m_faults.nextFault(request.target);
    if (fault && fault->kind == Fault::Kind::Refuse) {
        closeConnection(request.ssl);
        return;
    }
    if (fault && fault->kind == Fault::Kind::Delay) {
        m_faults.wait(fault->duration, [ssl = request.ssl] { return isClosedByClient(ssl); });
    }
    send(request, response, respondTo(request, fault), fault);
    const int usual = request.ranges.empty() ? 200 : 206;
    m_log.finish(entry, response.status == -1 ? usual : response.status);
}

HubResponse PublicServer::respondTo(const httplib::Request& request, const std::optional<Fault>& fault)
{
    if (fault && fault->kind == Fault::Kind::Error) {
        return errorResponse(fault->status, "This answer was ordered.");
    }
    if (fault && fault->kind == Fault::Kind::Garbage) {
        return {200, "application/json", "<!DOCTYPE html><html>{\"not\": \xFF json", false};
    }
    return m_hub.respond(request.path, request.params);
}

void PublicServer::send(const httplib::Request& request, httplib::Response& response, HubResponse hubResponse,
                        const std::optional<Fault>& fault)
{
    // The library applies the ranges after this handler. It does not clamp them, and would apply them to documents too.
    auto& ranges = const_cast<httplib::Request&>(request).ranges;
    if (hubResponse.isDocument || hubResponse.status != 200) {
        ranges.clear();
    }
    if (hubResponse.status != 200) {
        response.status = hubResponse.status; // otherwise the library sets 200, or 206 for a range
    }
    response.set_header("Cache-Control", "no-cache");
    if (hubResponse.isDocument) {
        response.set_header("Vary", "Accept-Encoding");
        const bool compressed = acceptsGzip(request.get_header_value("Accept-Encoding"));
        const std::string etag = etagOf(hubResponse.body) + (compressed ? "-gzip" : "");
        response.set_header("ETag", '"' + etag + '"');
        if (hubResponse.status == 200 && matchesEtag(request.get_header_value("If-None-Match"), etag)) {
            response.status = 304;
            return;
        }
        if (compressed) {
            hubResponse.body = gzip(hubResponse.body);
            response.set_header("Content-Encoding", "gzip");
        }
    } else if (!clampRanges(ranges, hubResponse.body.size())) {
        ranges.clear();
        response.status = 416;
        response.set_header("Content-Range", "bytes */" + std::to_string(hubResponse.body.size()));
        return;
    }
    // A content provider is used because the library may compress a plain body by itself.
    const auto body = std::make_shared<const std::string>(std::move(hubResponse.body));
    const auto kind = fault ? std::optional(fault->kind) : std::nullopt;
    response.set_content_provider(
        body->size(), hubResponse.type,
        [this, body, kind, ssl = request.ssl](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
            if (kind == Fault::Kind::Stall || kind == Fault::Kind::Cut) {
                if (kind == Fault::Kind::Stall) {
                    m_faults.wait(maxStall, [ssl] { return isClosedByClient(ssl); });
                } else {
                    sink.write(body->data() + offset, length / 2);
                }
                closeConnection(ssl);
                return false;
            }
            return sink.write(body->data() + offset, length);
        });
}

} // namespace quillmere::demo
