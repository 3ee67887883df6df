#pragma once

#include "LivingRoom.h"
#include "SampleHub.h"

#include <chrono>
#include <optional>

/** A viewer and one tape of the sample hub: the way to it, what is seen of it, and what the set keeps of it. One thread. */
class TapeVisit
{
public:
    static constexpr QRectF wheel{918, 498, 84, 84};
    static constexpr QRectF transport{60, 780, 1800, 250};
    static constexpr QRectF information{80, 60, 1760, 500};
    static constexpr QRectF failure{200, 380, 1520, 320};
    // What can be read of it over the figures of a recording's last picture.
    static constexpr QRectF failureMessage{775, 526, 375, 30};
    static constexpr QRectF failureButton{800, 592, 320, 60};

    SampleHub& hub() { return m_hub; }
    LivingRoom& room() { return m_room; }

    /** Switches the set on with this position kept of the tape and opens the tape's screen; false when it does not come. */
    bool open(qint64 tape, std::optional<double> kept = {});
    /** The cover's title of the tape that was opened. */
    QString title();
    std::optional<double> kept() { return m_room.set().keptPosition(m_tape); }

    bool reads(const QRectF& area, const QString& text, std::chrono::seconds limit = std::chrono::seconds(20));

    /** The whole seconds that the playing tape shows; nothing while it shows none, or its first. */
    std::optional<int> second();
    /** The next that it shows, other than `last`; nothing when none comes in 30 seconds. */
    std::optional<int> secondAfter(std::optional<int> last = {});
    bool playsTo(int second);
    /** Whether the wheel comes to turn over a picture that stands still. */
    bool waits();

private:
    SampleHub m_hub;
    LivingRoom m_room;
    qint64 m_tape = 0;
};
