#include "X11Outputs.h"

#include <xcb/dpms.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace quillmere {

namespace {

struct Free
{
    void operator()(void* memory) const { std::free(memory); }
};

template<typename Reply>
using Answer = std::unique_ptr<Reply, Free>;

using Connection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

/** Connects to the X server; null if there is none or it lacks the DPMS extension. */
Connection connectToServer()
{
    Connection connection(xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(connection.get()))
        return {nullptr, &xcb_disconnect};
    const xcb_query_extension_reply_t* const dpms = xcb_get_extension_data(connection.get(), &xcb_dpms_id);
    if (!dpms || !dpms->present)
        return {nullptr, &xcb_disconnect};
    return connection;
}

Answer<xcb_dpms_info_reply_t> info(xcb_connection_t* connection)
{
    return Answer<xcb_dpms_info_reply_t>(xcb_dpms_info_reply(connection, xcb_dpms_info(connection), nullptr));
}

} // namespace

bool X11Outputs::switchOff()
{
    const Connection connection = connectToServer();
    if (!connection)
        return false;
    const auto before = info(connection.get());
    m_wasEnabled = before && before->state;
    xcb_dpms_enable(connection.get());
    xcb_dpms_force_level(connection.get(), XCB_DPMS_DPMS_MODE_OFF);
    const auto after = info(connection.get());
    if (after && after->power_level == XCB_DPMS_DPMS_MODE_OFF)
        return true;
    restore(connection.get());
    return false;
}

void X11Outputs::switchOn()
{
    const Connection connection = connectToServer();
    if (!connection)
        return;
    xcb_dpms_force_level(connection.get(), XCB_DPMS_DPMS_MODE_ON);
    restore(connection.get());
}

void X11Outputs::restore(xcb_connection_t* connection) const
{
    if (!m_wasEnabled)
        xcb_dpms_disable(connection);
    info(connection); // waits until the server has processed the requests
}

} // namespace quillmere
