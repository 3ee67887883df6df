#include "ControlServer.h"

#include <sys/socket.h>

namespace demo {

using nlohmann::json;

namespace {

void reply(httplib::Response& response, const Answer& answer)
{
    response.status = answer.status;
    response.set_content(answer.body + "\n", answer.type);
}

void accept(httplib::Response& response)
{
    reply(response, documentAnswer({{"ok", true}}));
}

} // namespace

ControlServer::ControlServer(Hub& hub, Faults& faults, RequestLog& log) : m_hub(hub), m_faults(faults), m_log(log)
{
    m_server.set_socket_options([](int socket) {
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
    });
    m_server.set_keep_alive_max_count(1);
    order("/tower/lit", [this] { m_hub.tower().obey(Tower::Order::Lit); });
    order("/tower/dark", [this] { m_hub.tower().obey(Tower::Order::Dark); });
    order("/tower/schedule", [this] { m_hub.tower().obey(Tower::Order::Schedule); });
    order("/status/reset", [this] { m_hub.resetStatus(); });
    order("/fault/clear", [this] { m_faults.clear(); });
    order("/log/clear", [this] { m_log.clear(); });
    order("/catalogue/reset", [this] { m_hub.offer(nullptr); });
    m_server.Post("/catalogue/one-shelf",
                  [this](const auto& request, auto& response) { orderOneShelf(request, response); });
    m_server.Post("/status", [this](const auto& request, auto& response) { orderStatus(request, response); });
    m_server.Post("/fault", [this](const auto& request, auto& response) { orderFault(request, response); });
    m_server.Get("/catalogue/invalid",
                 [this](const auto&, auto& response) { reply(response, documentAnswer(m_hub.invalidTapes())); });
    m_server.Get("/log", [this](const auto&, auto& response) { reply(response, documentAnswer(m_log.toJson())); });
}

void ControlServer::order(const std::string& path, std::function<void()> action)
{
    m_server.Post(path, [action = std::move(action)](const httplib::Request&, httplib::Response& response) {
        action();
        accept(response);
    });
}

void ControlServer::orderStatus(const httplib::Request& request, httplib::Response& response)
{
    const json document = json::parse(request.body, nullptr, false);
    if (!document.is_object()) {
        reply(response, errorAnswer(400, "The status is amended by a JSON object."));
        return;
    }
    m_hub.amendStatus(document);
    accept(response);
}

void ControlServer::orderOneShelf(const httplib::Request& request, httplib::Response& response)
{
    constexpr int most = 2500;
    const json document = json::parse(request.body, nullptr, false);
    const json tapes = document.is_object() ? document.value("tapes", json()) : json();
    if (!tapes.is_number_integer() || tapes < 1 || tapes > most) {
        reply(response, errorAnswer(400, "The shelf holds from 1 to " + std::to_string(most) + " tapes."));
        return;
    }
    m_hub.offer(std::make_shared<const Catalogue>(Catalogue::OneShelf{tapes.get<std::size_t>()}));
    accept(response);
}

void ControlServer::orderFault(const httplib::Request& request, httplib::Response& response)
{
    const json document = json::parse(request.body, nullptr, false);
    if (const auto wrong = m_faults.order(document)) {
        reply(response, errorAnswer(400, *wrong));
        return;
    }
    accept(response);
}

} // namespace demo
