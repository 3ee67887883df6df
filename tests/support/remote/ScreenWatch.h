#pragma once

#include "XConnection.h"

#include <QImage>

#include <chrono>
#include <functional>
#include <optional>

namespace quillmere {

/** Grabs the X display and reports when something is drawn there. Single-threaded. */
class ScreenWatch
{
public:
    using Clock = std::chrono::steady_clock;

    /** Throws std::runtime_error with a readable message if the display lacks an extension. */
    explicit ScreenWatch(std::shared_ptr<XConnection> connection);
    ~ScreenWatch();

    QSize size() const;

    /** The current picture of `area`, in pixels; of the whole screen if empty. */
    QImage grab(const QRect& area = {});

    /** Waits at most `limit` until something is drawn. Drawing since the last call counts too. */
    bool waitForDrawing(std::chrono::milliseconds limit);

    /**
     * Grabs the screen after each drawing until `condition` is true for the picture; returns false if `limit` passes
     * first.
     */
    bool waitUntil(const std::function<bool(const QImage&)>& condition, std::chrono::milliseconds limit);

    /** The time at which the pixels of `area` first differed from `before`; nullopt if `limit` passes first. */
    std::optional<Clock::time_point> waitForChange(const QImage& before, std::chrono::milliseconds limit,
                                                   const QRect& area = {});

    using OnChange = std::function<void(const QImage&, Clock::time_point)>;

    /**
     * Waits until no pixel of `area` has changed for `quiet`. Returns the time of the last change, or nullopt if
     * `limit` passes first. Calls `onChange` with each new picture of the area and the time at which it was drawn.
     */
    std::optional<Clock::time_point> waitUntilStill(std::chrono::milliseconds quiet, std::chrono::milliseconds limit,
                                                    const QRect& area = {}, const OnChange& onChange = {});

    struct Count
    {
        int drawings = 0; ///< drawing operations, even if no pixel changed
        int pictures = 0; ///< pictures that differ from the previous one
    };

    /** Counts drawings of the whole screen, and new pictures of `area`, during `span`. */
    Count count(std::chrono::milliseconds span, const QRect& area = {});

private:
    struct Shared;

    std::unique_ptr<Shared> m_shared;
};

} // namespace quillmere
