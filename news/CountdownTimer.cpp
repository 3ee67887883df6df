#include "CountdownTimer.h"

#include "NewsTexts.h"
#include "Text.h"

namespace quillmere {

void CountdownTimer::setNextBroadcast(const QString& nextBroadcast)
{
    if (m_nextBroadcast == nextBroadcast)
        return;
    m_nextBroadcast = nextBroadcast;
    Q_EMIT inputChanged();
    updateReading();
}

void CountdownTimer::setLabel(const QString& label)
{
    if (m_label == label)
        return;
    m_label = label;
    Q_EMIT inputChanged();
    updateReading();
}

void CountdownTimer::setClock(Clock* clock)
{
    if (m_clock == clock)
        return;
    m_clock = clock;
    m_timer.reset();
    if (clock) {
        m_start = clock->elapsed();
        tick();
    }
    Q_EMIT inputChanged();
}

void CountdownTimer::setRunning(bool running)
{
    if (m_running == running)
        return;
    m_running = running;
    m_timer.reset();
    tick();
    Q_EMIT inputChanged();
}

void CountdownTimer::tick()
{
    if (!m_clock)
        return;
    Clock& clock = *m_clock;
    // The time is that of the scheduled tick, so that a tick which fires a little late neither skips nor repeats a
    // second.
    const std::chrono::milliseconds late = (clock.elapsed() - m_start) % tickInterval;
    m_lastTick = clock.now().addMSecs(-late.count());
    if (m_running)
        m_timer = clock.after(tickInterval - late, [this] { tick(); });
    updateReading();
}

void CountdownTimer::updateReading()
{
    if (!m_clock)
        return;
    CountdownReading reading = countdownReading(broadcastDate(m_nextBroadcast),
                                                shortenedLine(m_label, NewsTexts::maximumTextLength), m_lastTick);
    if (reading == m_reading)
        return;
    m_reading = std::move(reading);
    Q_EMIT readingChanged();
}

} // namespace quillmere
