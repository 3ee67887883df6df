#include "ScriptedClock.h"

#include <algorithm>

namespace quillmere {

struct ScriptedClock::ScriptedTimer : Clock::Timer
{
    explicit ScriptedTimer(std::shared_ptr<Pending> what) : pending(std::move(what)) {}

    std::shared_ptr<Pending> pending;
};

ScriptedClock::ScriptedClock(QDateTime now) : m_now(std::move(now)) {}

std::unique_ptr<Clock::Timer> ScriptedClock::after(std::chrono::milliseconds delay, std::function<void()> callback)
{
    auto pending = std::make_shared<Pending>(Pending{m_elapsed + delay, std::move(callback)});
    m_pending.append(pending);
    return std::make_unique<ScriptedTimer>(std::move(pending));
}

void ScriptedClock::advance(std::chrono::milliseconds by)
{
    const auto end = m_elapsed + by;
    while (true) {
        m_pending.removeIf([](const auto& weak) { return weak.expired() || !weak.lock()->callback; });
        std::shared_ptr<Pending> next;
        for (const auto& weak : std::as_const(m_pending)) {
            const auto pending = weak.lock();
            if (pending->due <= end && (!next || pending->due < next->due))
                next = pending;
        }
        if (!next)
            break;
        m_now = m_now.addMSecs((std::max(next->due, m_elapsed) - m_elapsed).count());
        m_elapsed = std::max(next->due, m_elapsed);
        std::exchange(next->callback, {})();
    }
    m_now = m_now.addMSecs((end - m_elapsed).count());
    m_elapsed = end;
}

void ScriptedClock::stall(std::chrono::milliseconds by)
{
    m_now = m_now.addMSecs(by.count());
    m_elapsed += by;
}

int ScriptedClock::pendingTimers() const
{
    return int(std::count_if(m_pending.begin(), m_pending.end(), [](const auto& weak) {
        const auto pending = weak.lock();
        return pending && pending->callback;
    }));
}

} // namespace quillmere
