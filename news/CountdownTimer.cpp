#include "CountdownTimer.h"

#include "NewsTexts.h"
#include "ShortenedText.h"

void CountdownTimer::setNextBroadcast(const QString& nextBroadcast)
{
    if (m_nextBroadcast == nextBroadcast)
        return;
    m_nextBroadcast = nextBroadcast;
    Q_EMIT inputChanged();
    read();
}

void CountdownTimer::setLabel(const QString& label)
{
    if (m_label == label)
        return;
    m_label = label;
    Q_EMIT inputChanged();
    read();
}

void CountdownTimer::setTimepiece(Timepiece* timepiece)
{
    if (m_timepiece == timepiece)
        return;
    m_timepiece = timepiece;
    m_next.reset();
    if (timepiece) {
        m_start = timepiece->clock().elapsed();
        tick();
    }
    Q_EMIT inputChanged();
}

void CountdownTimer::setRunning(bool running)
{
    if (m_running == running)
        return;
    m_running = running;
    m_next.reset();
    tick();
    Q_EMIT inputChanged();
}

void CountdownTimer::tick()
{
    if (!m_timepiece)
        return;
    Clock& clock = m_timepiece->clock();
    // Read as of the whole second, so that one that comes a little late neither skips nor repeats a number.
    const std::chrono::milliseconds late = (clock.elapsed() - m_start) % tickTime;
    m_tick = clock.now().addMSecs(-late.count());
    if (m_running)
        m_next = clock.after(tickTime - late, [this] { tick(); });
    read();
}

void CountdownTimer::read()
{
    if (!m_timepiece)
        return;
    CountdownReading reading =
        countdownReading(broadcastDate(m_nextBroadcast), shortenedLine(m_label, NewsTexts::longestText), m_tick);
    if (reading == m_reading)
        return;
    m_reading = std::move(reading);
    Q_EMIT readingChanged();
}
