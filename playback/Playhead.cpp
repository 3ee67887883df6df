#include "Playhead.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr auto scrubStep = 40ms;

// The player never seeks closer to the end than this, so that the end is always played. The position shown stops there
// too.
constexpr double endMargin = 3; // seconds

} // namespace

Playhead::Playhead(Clock& clock, std::function<void()> onMoved) : m_clock(clock), m_onMoved(std::move(onMoved)) {}

void Playhead::setPlayer(VideoPlayer* player)
{
    cancelScrub();
    m_player = player;
}

double Playhead::position() const
{
    if (m_scrub)
        return clamped(m_scrub->startPosition, m_scrub->positionAt(m_clock.elapsed()));
    return m_player ? m_player->position() : 0;
}

int Playhead::speed() const
{
    return m_scrub ? m_scrub->speedAt(m_clock.elapsed()) : 0;
}

void Playhead::skip(double seconds)
{
    if (!canSeek())
        return;
    const double from = position();
    const double to = clamped(from, from + seconds);
    if (to != from)
        m_player->seek(to, SeekTolerance::AtOrAfter);
}

void Playhead::startScrub(int direction)
{
    if (m_scrub || !canSeek())
        return;
    const bool wasPlaying = m_player->timeControl() != VideoPlayer::TimeControl::Paused;
    m_scrub = Scrub{m_player->position(), direction, m_clock.elapsed(), wasPlaying};
    scheduleNextStep();
    m_player->pause();
    m_onMoved();
}

void Playhead::endScrub()
{
    if (!m_scrub)
        return;
    const double to = position();
    m_nextStep.reset();
    // Reset m_scrub only after play(): otherwise the player would seem to be paused in between.
    if (canSeek() && to != m_scrub->startPosition)
        m_player->seek(to, SeekTolerance::AtOrAfter);
    if (m_player && m_scrub && m_scrub->wasPlaying)
        m_player->play();
    m_scrub.reset();
    m_onMoved();
}

void Playhead::cancelScrub()
{
    m_nextStep.reset();
    m_scrub.reset();
}

bool Playhead::canSeek() const
{
    return m_player && m_player->isSeekable() && m_player->duration() > 0;
}

/** Limits `to` to the seekable range. A move forward from near the end never goes back behind `from`. */
double Playhead::clamped(double from, double to) const
{
    const double last = m_player ? std::max(0.0, m_player->duration() - endMargin) : from;
    return to > from ? std::min(to, std::max(from, last)) : std::clamp(to, 0.0, last);
}

void Playhead::scheduleNextStep()
{
    m_nextStep = m_clock.after(scrubStep, [this] {
        scheduleNextStep();
        m_onMoved();
    });
}

} // namespace quillmere
