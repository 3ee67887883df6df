#include "Playhead.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto scrubStep = 40ms;

// The player seeks no nearer to the end than this, so that the end is reached by playing alone; to show a position
// beyond it would promise what does not come.
constexpr double playedOut = 3; // seconds

} // namespace

Playhead::Playhead(Clock& clock, std::function<void()> moved) : m_clock(clock), m_moved(std::move(moved)) {}

void Playhead::setPlayer(VideoPlayer* player)
{
    drop();
    m_player = player;
}

double Playhead::position() const
{
    if (m_scrub)
        return bounded(m_scrub->from, m_scrub->positionAt(m_clock.elapsed()));
    return m_player ? m_player->position() : 0;
}

int Playhead::speed() const
{
    return m_scrub ? m_scrub->speedAt(m_clock.elapsed()) : 0;
}

void Playhead::skip(double seconds)
{
    if (!canMove())
        return;
    const double from = position();
    const double to = bounded(from, from + seconds);
    if (to != from)
        m_player->seek(to, SeekTolerance::AtOrAfter);
}

void Playhead::scrub(int direction)
{
    if (m_scrub || !canMove())
        return;
    const bool goesOn = m_player->timeControl() != VideoPlayer::TimeControl::Paused;
    m_scrub = Scrub{m_player->position(), direction, m_clock.elapsed(), goesOn};
    waitForNextStep();
    m_player->pause();
    m_moved();
}

void Playhead::letGo()
{
    if (!m_scrub)
        return;
    const double to = position();
    m_nextStep.reset();
    // The scrub stands until the player goes on, as otherwise it would pass for paused in between.
    if (canMove() && to != m_scrub->from)
        m_player->seek(to, SeekTolerance::AtOrAfter);
    if (m_player && m_scrub && m_scrub->goesOn)
        m_player->play();
    m_scrub.reset();
    m_moved();
}

void Playhead::drop()
{
    m_nextStep.reset();
    m_scrub.reset();
}

bool Playhead::canMove() const
{
    return m_player && m_player->isSeekable() && m_player->duration() > 0;
}

/** On the recording; and not back from `from` when the way leads forward, near the end. */
double Playhead::bounded(double from, double to) const
{
    const double last = m_player ? std::max(0.0, m_player->duration() - playedOut) : from;
    return to > from ? std::min(to, std::max(from, last)) : std::clamp(to, 0.0, last);
}

void Playhead::waitForNextStep()
{
    m_nextStep = m_clock.after(scrubStep, [this] {
        waitForNextStep();
        m_moved();
    });
}
