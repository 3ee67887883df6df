#pragma once

#include "XConnection.h"

#include <QRect>

namespace quillmere {

/** Records where something is drawn on the X display, even if no pixel changes. Single-threaded. */
class DrawnArea
{
public:
    /** Starts recording. Throws std::runtime_error with a readable message if the display lacks an extension. */
    explicit DrawnArea(std::shared_ptr<XConnection> connection);
    ~DrawnArea();
    DrawnArea(const DrawnArea&) = delete;
    DrawnArea& operator=(const DrawnArea&) = delete;

    /** The bounding rectangle, in pixels, of everything drawn since the last call; empty if nothing was drawn. */
    QRect take();

private:
    std::shared_ptr<XConnection> m_connection;
    unsigned long m_damage = 0;
    int m_damageEvent = 0;
};

} // namespace quillmere
