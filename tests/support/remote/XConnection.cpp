#include "XConnection.h"

#include <stdexcept>

#include <X11/Xlib.h>

namespace quillmere {

XConnection::XConnection(_XDisplay* display) : m_display(display), m_root(DefaultRootWindow(display)) {}

XConnection::~XConnection()
{
    XCloseDisplay(m_display);
}

std::shared_ptr<XConnection> XConnection::open()
{
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        throw std::runtime_error("There is no X display; start this under tests/support/on-virtual-display.");
    // A window may close between two requests. Such an error must not end the test.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    return std::shared_ptr<XConnection>(new XConnection(display));
}

} // namespace quillmere
