#include "SystemClock.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace quillmere {

namespace {

class SystemTimer : public Clock::Timer
{
public:
    SystemTimer(std::chrono::milliseconds delay, std::function<void()> callback) : m_callback(std::move(callback))
    {
        m_timer.setSingleShot(true);
        // A coarse timer may be up to 5 % late, which is visible in a countdown of seconds.
        m_timer.setTimerType(Qt::PreciseTimer);
        // The callback is moved out first, because it may destroy this timer.
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { std::exchange(m_callback, {})(); });
        m_timer.start(std::max(delay, std::chrono::milliseconds{0}));
    }

private:
    std::function<void()> m_callback;
    QTimer m_timer;
};

} // namespace

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTime();
}

std::chrono::milliseconds SystemClock::elapsed() const
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

std::unique_ptr<Clock::Timer> SystemClock::after(std::chrono::milliseconds delay, std::function<void()> callback)
{
    return std::make_unique<SystemTimer>(delay, std::move(callback));
}

} // namespace quillmere
