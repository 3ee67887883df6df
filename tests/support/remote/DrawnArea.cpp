#include "DrawnArea.h"

#include <stdexcept>

#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>

namespace quillmere {

DrawnArea::DrawnArea(std::shared_ptr<XConnection> connection) : m_connection(std::move(connection))
{
    int error = 0;
    if (!XDamageQueryExtension(m_connection->display(), &m_damageEvent, &error))
        throw std::runtime_error("The X display has no DAMAGE extension.");
    m_damage = XDamageCreate(m_connection->display(), m_connection->root(), XDamageReportRawRectangles);
    take(); // X reports the whole display first
}

DrawnArea::~DrawnArea()
{
    XDamageDestroy(m_connection->display(), m_damage);
}

QRect DrawnArea::take()
{
    Display* display = m_connection->display();
    XSync(display, False);
    QRect drawn;
    while (XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type != m_damageEvent + XDamageNotify)
            continue;
        const XRectangle& area = reinterpret_cast<const XDamageNotifyEvent&>(event).area;
        drawn |= QRect(area.x, area.y, area.width, area.height);
    }
    return drawn;
}

} // namespace quillmere
