#include "ScreenWatch.h"

#include <cstring>
#include <optional>
#include <poll.h>
#include <stdexcept>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>
#include <X11/extensions/Xdamage.h>

using namespace std::chrono_literals;

namespace quillmere {

using std::chrono::milliseconds;

namespace {

milliseconds left(ScreenWatch::Clock::time_point deadline)
{
    return std::max(0ms, std::chrono::duration_cast<milliseconds>(deadline - ScreenWatch::Clock::now()));
}

} // namespace

struct ScreenWatch::Shared
{
    std::shared_ptr<XConnection> connection;
    QSize size;
    XImage* image = nullptr;
    XShmSegmentInfo segment{};
    Damage damage = 0;
    int damageEvent = 0;

    Display* display() const { return connection->display(); }

    void watch()
    {
        int error = 0;
        if (!XDamageQueryExtension(display(), &damageEvent, &error))
            throw std::runtime_error("The X display has no DAMAGE extension.");
        damage = XDamageCreate(display(), connection->root(), XDamageReportNonEmpty);
    }

    void share()
    {
        XWindowAttributes root;
        XGetWindowAttributes(display(), connection->root(), &root);
        size = QSize(root.width, root.height);
        image = XShmCreateImage(display(), root.visual, unsigned(root.depth), ZPixmap, nullptr, &segment,
                                unsigned(root.width), unsigned(root.height));
        if (!image || image->bits_per_pixel != 32)
            throw std::runtime_error("The X display must have shared memory and 24 bits a pixel.");
        segment.shmid = shmget(IPC_PRIVATE, size_t(image->bytes_per_line) * size_t(image->height), IPC_CREAT | 0600);
        segment.shmaddr = image->data = static_cast<char*>(shmat(segment.shmid, nullptr, 0));
        segment.readOnly = False;
        XShmAttach(display(), &segment);
        XSync(display(), False);
        shmctl(segment.shmid, IPC_RMID, nullptr); // the segment is destroyed when the last process detaches
    }
};

ScreenWatch::ScreenWatch(std::shared_ptr<XConnection> connection) : m_shared(std::make_unique<Shared>())
{
    m_shared->connection = std::move(connection);
    m_shared->share();
    m_shared->watch();
}

ScreenWatch::~ScreenWatch()
{
    XDamageDestroy(m_shared->display(), m_shared->damage);
    XShmDetach(m_shared->display(), &m_shared->segment);
    XDestroyImage(m_shared->image);
    shmdt(m_shared->segment.shmaddr);
}

QSize ScreenWatch::size() const
{
    return m_shared->size;
}

QImage ScreenWatch::grab(const QRect& area)
{
    const QRect whole(QPoint(), m_shared->size);
    const QRect seen = area.isEmpty() ? whole : area.intersected(whole);
    XImage* image = m_shared->image;
    image->width = seen.width();
    image->height = seen.height();
    image->bytes_per_line = seen.width() * 4;
    XShmGetImage(m_shared->display(), m_shared->connection->root(), image, seen.x(), seen.y(), AllPlanes);
    return QImage(reinterpret_cast<const uchar*>(image->data), seen.width(), seen.height(), image->bytes_per_line,
                  QImage::Format_RGB32)
        .copy();
}

bool ScreenWatch::waitForDrawing(milliseconds limit)
{
    Display* display = m_shared->display();
    const auto deadline = Clock::now() + limit;
    bool drawn = false;
    for (;;) {
        while (XPending(display) > 0) {
            XEvent event;
            XNextEvent(display, &event);
            drawn = drawn || event.type == m_shared->damageEvent + XDamageNotify;
        }
        if (drawn) {
            // Reset before the next grab, so that later drawing is reported again.
            XDamageSubtract(display, m_shared->damage, 0, 0);
            XFlush(display);
            return true;
        }
        const milliseconds wait = left(deadline);
        if (wait == 0ms)
            return false;
        pollfd socket{ConnectionNumber(display), POLLIN, 0};
        poll(&socket, 1, int(wait.count()));
    }
}

bool ScreenWatch::waitUntil(const std::function<bool(const QImage&)>& condition, milliseconds limit)
{
    const auto deadline = Clock::now() + limit;
    for (;;) {
        waitForDrawing(0ms);
        if (condition(grab()))
            return true;
        if (left(deadline) == 0ms)
            return false;
        // The condition may depend on more than the picture, so check it every 250 ms even if nothing is drawn.
        waitForDrawing(std::min(left(deadline), 250ms));
    }
}

std::optional<ScreenWatch::Clock::time_point> ScreenWatch::waitForChange(const QImage& before, milliseconds limit,
                                                                         const QRect& area)
{
    const auto deadline = Clock::now() + limit;
    while (waitForDrawing(left(deadline))) {
        const auto drawn = Clock::now();
        if (grab(area) != before)
            return drawn;
    }
    return std::nullopt;
}

std::optional<ScreenWatch::Clock::time_point> ScreenWatch::waitUntilStill(milliseconds quiet, milliseconds limit,
                                                                          const QRect& area, const OnChange& onChange)
{
    const auto deadline = Clock::now() + limit;
    waitForDrawing(0ms);
    QImage last = grab(area);
    auto changed = Clock::now();
    while (Clock::now() < deadline) {
        const auto still = std::min(changed + quiet, deadline);
        if (Clock::now() >= still && still == changed + quiet)
            return changed;
        if (!waitForDrawing(left(still) + 1ms))
            continue;
        const auto drawn = Clock::now();
        QImage now = grab(area);
        if (now != last) {
            last = std::move(now);
            changed = drawn;
            if (onChange)
                onChange(last, drawn);
        }
    }
    return std::nullopt;
}

ScreenWatch::Count ScreenWatch::count(milliseconds span, const QRect& area)
{
    const auto deadline = Clock::now() + span;
    waitForDrawing(0ms);
    QImage last = grab(area);
    Count count;
    while (waitForDrawing(left(deadline))) {
        ++count.drawings;
        QImage now = grab(area);
        if (now != last) {
            last = std::move(now);
            ++count.pictures;
        }
    }
    return count;
}

} // namespace quillmere
