#include "ControlServer.h"

#include <sys/socket.h>

namespace quillmere::demo {

using nlohmann::json;

namespace {

void reply(httplib::Response& response, const HubResponse& hubResponse)
{
    response.status = hubResponse.status;
    response.set_content(hubResponse.body + "\n", hubResponse.type);
}

void replyOk(httplib::Response& response)
{
    reply(response, jsonResponse({{"ok", true}}));
}

} // namespace

ControlServer::ControlServer(Hub& hub, Faults& faults, RequestLog& log) : m_hub(hub), m_faults(faults), m_log(log)
{
    m_server.set_socket_options([](int socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
    });
    m_server.set_keep_alive_max_count(1);
    addCommand("/tower/lit", [this] { m_hub.tower().setMode(Tower::Mode::Lit); });
    addCommand("/tower/dark", [this] { m_hub.tower().setMode(Tower::Mode::Dark); });
    addCommand("/tower/schedule", [this] { m_hub.tower().setMode(Tower::Mode::Schedule); });
    addCommand("/status/reset", [this] { m_hub.resetStatus(); });
    addCommand("/fault/clear", [this] { m_faults.clear(); });
    addCommand("/log/clear", [this] { m_log.clear(); });
    addCommand("/catalogue/reset", [this] { m_hub.setCatalogue(nullptr); });
    m_server.Post("/catalogue/one-shelf",
                  [this](const auto& request, auto& response) { handleOneShelf(request, response); });
    m_server.Post("/status", [this](const auto& request, auto& response) { handleStatusPatch(request, response); });
    m_server.Post("/fault", [this](const auto& request, auto& response) { handleFault(request, response); });
    m_server.Get("/catalogue/invalid",
                 [this](const auto&, auto& response) { reply(response, jsonResponse(m_hub.invalidTapes())); });
    m_server.Get("/log", [this](const auto&, auto& response) { reply(response, jsonResponse(m_log.toJson())); });
}

void ControlServer::addCommand(const std::string& path, std::function<void()> action)
{
    m_server.Post(path, [action = std::move(action)](const httplib::Request&, httplib::Response& response) {
        action();
        replyOk(response);
    });
}

void ControlServer::handleStatusPatch(const httplib::Request& request, httplib::Response& response)
{
    const json document = json::parse(request.body, nullptr, false);
    if (!document.is_object()) {
        reply(response, errorResponse(400, "The status is amended by a JSON object."));
        return;
    }
    m_hub.patchStatus(document);
    replyOk(response);
}

void ControlServer::handleOneShelf(const httplib::Request& request, httplib::Response& response)
{
    constexpr int maxTapes = 2500;
    const json document = json::parse(request.body, nullptr, false);
    const json tapes = document.is_object() ? document.value("tapes", json()) : json();
    if (!tapes.is_number_integer() || tapes < 1 || tapes > maxTapes) {
        reply(response, errorResponse(400, "The shelf holds from 1 to " + std::to_string(maxTapes) + " tapes."));
        return;
    }
    m_hub.setCatalogue(std::make_shared<const Catalogue>(Catalogue::SingleShelf{tapes.get<std::size_t>()}));
    replyOk(response);
}

void ControlServer::handleFault(const httplib::Request& request, httplib::Response& response)
{
    const json document = json::parse(request.body, nullptr, false);
    if (const auto error = m_faults.add(document)) {
        reply(response, errorResponse(400, *error));
        return;
    }
    replyOk(response);
}

} // namespace quillmere::demo
