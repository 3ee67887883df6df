#pragma once

#include <memory>

// Xlib's own name of the type. Declaring it here avoids Xlib's headers, which define macros such as None and Bool.
struct _XDisplay; // NOLINT(bugprone-reserved-identifier)

namespace quillmere {

/** A connection to the X display that DISPLAY names, shared by the screen and the remote. Single-threaded. */
class XConnection
{
public:
    /** Throws std::runtime_error with a readable message if there is no display. */
    static std::shared_ptr<XConnection> open();
    ~XConnection();

    _XDisplay* display() const { return m_display; }
    unsigned long root() const { return m_root; }

private:
    explicit XConnection(_XDisplay* display);

    _XDisplay* m_display;
    unsigned long m_root;
};

} // namespace quillmere
