#pragma once

#include <memory>

// X's own name for it, so that its headers, which define macros like None and Bool, stay out of this one.
struct _XDisplay; // NOLINT(bugprone-reserved-identifier)

/** One connection to the X display that DISPLAY names, shared by the screen and the remote. One thread. */
class XConnection
{
public:
    /** Throws std::runtime_error with a sentence when there is no display, or it lacks an extension. */
    static std::shared_ptr<XConnection> open();
    ~XConnection();

    _XDisplay* display() const { return m_display; }
    unsigned long root() const { return m_root; }

private:
    explicit XConnection(_XDisplay* display);

    _XDisplay* m_display;
    unsigned long m_root;
};
