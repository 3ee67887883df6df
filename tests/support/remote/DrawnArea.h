#pragma once

#include "XConnection.h"

#include <QRect>

/** Notes where something is drawn on the X display, whether or not a pixel changes by it. One thread. */
class DrawnArea
{
public:
    /** Begins to note; throws std::runtime_error with a sentence when the display lacks an extension. */
    explicit DrawnArea(std::shared_ptr<XConnection> connection);
    ~DrawnArea();
    DrawnArea(const DrawnArea&) = delete;
    DrawnArea& operator=(const DrawnArea&) = delete;

    /** The smallest rectangle around all that was drawn since the last call, in pixels; empty when nothing was. */
    QRect take();

private:
    std::shared_ptr<XConnection> m_connection;
    unsigned long m_damage = 0;
    int m_damageEvent = 0;
};
