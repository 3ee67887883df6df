#pragma once

#include "Clock.h"

namespace quillmere {

/** The system's clock, in local time. Its timers need the event loop of the screen thread. Screen thread only. */
class SystemClock : public Clock
{
public:
    QDateTime now() const override;
    std::chrono::milliseconds elapsed() const override;
    std::unique_ptr<Timer> after(std::chrono::milliseconds delay, std::function<void()> callback) override;
};

} // namespace quillmere
