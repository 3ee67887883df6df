#pragma once

#include <wayland-client.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quillmere {

/** Destroys a Wayland object in the client only. That suffices, as the connection is closed soon afterwards. */
struct ProxyDeleter
{
    template<typename Object>
    void operator()(Object* object) const
    {
        wl_proxy_destroy(reinterpret_cast<wl_proxy*>(object));
    }
};

template<typename Object>
using Proxy = std::unique_ptr<Object, ProxyDeleter>;

/**
 * A connection to the compositor that WAYLAND_DISPLAY names. Single thread. Objects bound through it must not outlive
 * it.
 */
class WaylandConnection
{
public:
    struct Global
    {
        uint32_t name;
        std::string interface;
    };

    /** Null if there is no compositor or it does not answer. */
    static std::unique_ptr<WaylandConnection> open();
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    const std::vector<Global>& globals() const { return m_globals; }

    /** Binds version 1 of the first global with this interface; null if there is none. */
    template<typename Object>
    Proxy<Object> bindFirst(const wl_interface& interface)
    {
        for (const Global& global : m_globals) {
            if (global.interface == interface.name)
                return bind<Object>(global, interface);
        }
        return nullptr;
    }

    template<typename Object>
    Proxy<Object> bind(const Global& global, const wl_interface& interface)
    {
        return Proxy<Object>(static_cast<Object*>(wl_registry_bind(m_registry.get(), global.name, &interface, 1)));
    }

    /**
     * Sends all pending requests and handles events until the compositor has processed them. False if the connection is
     * broken or this takes longer than 3 s.
     */
    bool roundtrip();
    /**
     * Handles events until `condition` returns true. False if the connection is broken or this takes longer than 3 s.
     */
    bool waitUntil(const std::function<bool()>& condition);

private:
    WaylandConnection() = default;
    bool readEvents(std::chrono::steady_clock::time_point deadline);

    static const wl_registry_listener registryListener;

    std::unique_ptr<wl_display, decltype(&wl_display_disconnect)> m_display{nullptr, &wl_display_disconnect};
    Proxy<wl_registry> m_registry;
    std::vector<Global> m_globals;
};

} // namespace quillmere
