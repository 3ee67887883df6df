#pragma once

#include "Clock.h"

/** The machine's own time, in local time; its timers need the screen thread's event loop. Screen thread only. */
class SystemClock : public Clock
{
public:
    QDateTime now() const override;
    std::chrono::milliseconds elapsed() const override;
    std::unique_ptr<Timer> after(std::chrono::milliseconds delay, std::function<void()> callback) override;
};
