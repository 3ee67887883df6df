#include "WaylandConnection.h"

#include <algorithm>
#include <cerrno>

#include <poll.h>

using namespace std::chrono_literals;

namespace quillmere {

using Time = std::chrono::steady_clock;

namespace {

constexpr auto answerTimeout = 3s;

} // namespace

const wl_registry_listener WaylandConnection::registryListener = {
    .global =
        [](void* data, wl_registry*, uint32_t name, const char* interface, uint32_t) {
            static_cast<WaylandConnection*>(data)->m_globals.push_back({name, interface});
        },
    .global_remove =
        [](void* data, wl_registry*, uint32_t name) {
            auto& globals = static_cast<WaylandConnection*>(data)->m_globals;
            std::erase_if(globals, [name](const Global& global) { return global.name == name; });
        },
};

std::unique_ptr<WaylandConnection> WaylandConnection::open()
{
    std::unique_ptr<WaylandConnection> connection(new WaylandConnection);
    connection->m_display.reset(wl_display_connect(nullptr));
    if (!connection->m_display)
        return nullptr;
    connection->m_registry.reset(wl_display_get_registry(connection->m_display.get()));
    wl_registry_add_listener(connection->m_registry.get(), &registryListener, connection.get());
    return connection->roundtrip() ? std::move(connection) : nullptr;
}

WaylandConnection::~WaylandConnection() = default;

bool WaylandConnection::waitUntil(const std::function<bool()>& condition)
{
    const Time::time_point deadline = Time::now() + answerTimeout;
    while (!condition()) {
        if (!readEvents(deadline))
            return false;
    }
    return true;
}

bool WaylandConnection::roundtrip()
{
    bool answered = false;
    const Proxy<wl_callback> callback(wl_display_sync(m_display.get()));
    static constexpr wl_callback_listener listener = {
        .done = [](void* data, wl_callback*, uint32_t) { *static_cast<bool*>(data) = true; }};
    wl_callback_add_listener(callback.get(), &listener, &answered);
    return waitUntil([&answered] { return answered; });
}

/** Reads with a timeout, because wl_display_roundtrip() waits for ever. */
bool WaylandConnection::readEvents(Time::time_point deadline)
{
    wl_display* const display = m_display.get();
    if (wl_display_prepare_read(display) != 0)
        return wl_display_dispatch_pending(display) >= 0;
    wl_display_flush(display);
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Time::now());
    pollfd socket{wl_display_get_fd(display), POLLIN, 0};
    const int ready = left > 0ms ? poll(&socket, 1, int(left.count())) : 0;
    if (ready <= 0) {
        wl_display_cancel_read(display);
        return ready < 0 && errno == EINTR;
    }
    return wl_display_read_events(display) == 0 && wl_display_dispatch_pending(display) >= 0;
}

} // namespace quillmere
