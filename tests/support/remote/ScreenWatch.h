#pragma once

#include "XConnection.h"

#include <QImage>

#include <chrono>
#include <functional>
#include <optional>

/** The eyes of the living room: what is on the X display, and when something was drawn there. One thread. */
class ScreenWatch
{
public:
    using Clock = std::chrono::steady_clock;

    /** Throws std::runtime_error with a sentence when the display lacks an extension. */
    explicit ScreenWatch(std::shared_ptr<XConnection> connection);
    ~ScreenWatch();

    QSize size() const;

    /** The picture as it is now; `area` in pixels, the whole screen when empty. */
    QImage look(const QRect& area = {});

    /** Waits until something is drawn, at most `limit`; what was drawn since the last call counts. */
    bool waitForDrawing(std::chrono::milliseconds limit);

    /** Looks again after each drawing until `condition` holds of the picture; false when `limit` passes first. */
    bool waitUntil(const std::function<bool(const QImage&)>& condition, std::chrono::milliseconds limit);

    /** When the pixels of `area` first differed from `before`; nothing when `limit` passes first. */
    std::optional<Clock::time_point> waitForChange(const QImage& before, std::chrono::milliseconds limit,
                                                   const QRect& area = {});

    using See = std::function<void(const QImage&, Clock::time_point)>;

    /**
     * Waits until no pixel of `area` has changed for `quiet`; answers the last change, nothing past `limit`. Each new
     * picture of the area is told to `see` with the time at which it was drawn.
     */
    std::optional<Clock::time_point> waitUntilSettled(std::chrono::milliseconds quiet, std::chrono::milliseconds limit,
                                                      const QRect& area = {}, const See& see = {});

    struct Count
    {
        int drawings = 0; ///< times that something was drawn, whether or not a pixel changed
        int pictures = 0; ///< different pictures, one after the other
    };

    /** What happened in `area` during `span`; drawings count wherever they are. */
    Count count(std::chrono::milliseconds span, const QRect& area = {});

private:
    struct Shared;

    std::unique_ptr<Shared> m_shared;
};
