#include "PublicServer.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <memory>
#include <openssl/ssl.h>
#include <sys/socket.h>

namespace demo {

using namespace std::chrono_literals;

namespace {

constexpr std::size_t threads = 32; // one a connection while it is open
constexpr std::size_t requestsPerConnection = 10000;
constexpr int idleSeconds = 15; // before a connection is closed
constexpr auto longestStall = 10min;

/// Ends the connection without another word.
void hangUp(const SSL* ssl)
{
    shutdown(SSL_get_fd(ssl), SHUT_RDWR);
}

/// Whether a client that waits for an answer waits no longer: all that it can have sent is its farewell.
bool hasHungUp(const SSL* ssl)
{
    char byte = 0;
    return recv(SSL_get_fd(ssl), &byte, 1, MSG_PEEK | MSG_DONTWAIT) >= 0 || (errno != EAGAIN && errno != EINTR);
}

/// Fits the ranges asked for to the body; answers false when one begins beyond its end.
bool fitRanges(httplib::Ranges& ranges, std::size_t size)
{
    const auto end = static_cast<ssize_t>(size);
    for (auto& [first, last] : ranges) {
        if (first >= end) {
            return false;
        }
        last = std::min(last, first < 0 ? end : end - 1); // without a first, last counts from the end
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
    m_server.new_task_queue = [] { return new httplib::ThreadPool(threads); }; // the server deletes it
    m_server.set_keep_alive_max_count(requestsPerConnection);
    m_server.set_keep_alive_timeout(idleSeconds);
    m_server.set_tcp_nodelay(true);
    m_server.set_socket_options([](int socket) {
        // Unlike the library's own option this one does not let two servers share a port.
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
    const std::optional<Fault> fault = m_faults.take(request.target);
    if (fault && fault->kind == Fault::Kind::Refuse) {
        hangUp(request.ssl);
        return;
    }
    if (fault && fault->kind == Fault::Kind::Delay) {
        m_faults.hold(fault->lasts, [ssl = request.ssl] { return hasHungUp(ssl); });
    }
    send(request, response, answer(request, fault), fault);
    const int usual = request.ranges.empty() ? 200 : 206;
    m_log.finish(entry, response.status == -1 ? usual : response.status);
}

Answer PublicServer::answer(const httplib::Request& request, const std::optional<Fault>& fault)
{
    if (fault && fault->kind == Fault::Kind::Error) {
        return errorAnswer(fault->status, "This answer was ordered.");
    }
    if (fault && fault->kind == Fault::Kind::Garbage) {
        return {200, "application/json", "<!DOCTYPE html><html>{\"not\": \xFF json", false};
    }
    return m_hub.answer(request.path, request.params);
}

void PublicServer::send(const httplib::Request& request, httplib::Response& response, Answer answer,
                        const std::optional<Fault>& fault)
{
    // The library reads the ranges only after this handler, and would neither fit them nor spare the documents.
    auto& ranges = const_cast<httplib::Request&>(request).ranges;
    if (answer.isDocument || answer.status != 200) {
        ranges.clear();
    }
    if (answer.status != 200) {
        response.status = answer.status; // else the library sets 200, or 206 for a range
    }
    response.set_header("Cache-Control", "no-cache");
    if (answer.isDocument) {
        response.set_header("Vary", "Accept-Encoding");
        const bool packed = allowsGzip(request.get_header_value("Accept-Encoding"));
        const std::string validator = validatorOf(answer.body) + (packed ? "-gzip" : "");
        response.set_header("ETag", '"' + validator + '"');
        if (answer.status == 200 && namesValidator(request.get_header_value("If-None-Match"), validator)) {
            response.status = 304;
            return;
        }
        if (packed) {
            answer.body = gzip(answer.body);
            response.set_header("Content-Encoding", "gzip");
        }
    } else if (!fitRanges(ranges, answer.body.size())) {
        ranges.clear();
        response.status = 416;
        response.set_header("Content-Range", "bytes */" + std::to_string(answer.body.size()));
        return;
    }
    // Sent by a provider: the library would compress a plain body by its own choice.
    const auto body = std::make_shared<const std::string>(std::move(answer.body));
    const auto kind = fault ? std::optional(fault->kind) : std::nullopt;
    response.set_content_provider(
        body->size(), answer.type,
        [this, body, kind, ssl = request.ssl](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
            if (kind == Fault::Kind::Stall || kind == Fault::Kind::Cut) {
                if (kind == Fault::Kind::Stall) {
                    m_faults.hold(longestStall, [ssl] { return hasHungUp(ssl); });
                } else {
                    sink.write(body->data() + offset, length / 2);
                }
                hangUp(ssl);
                return false;
            }
            return sink.write(body->data() + offset, length);
        });
}

} // namespace demo
