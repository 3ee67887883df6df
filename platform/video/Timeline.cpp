#include "Timeline.h"

#include <cmath>

namespace quillmere {

namespace {

// Playback advances with the clock, but a busy machine reports it late and in steps.
constexpr double tolerance = 1;

// Segments are rarely longer: one missing segment is skipped; several mean that the server has a problem.
constexpr double longestAcceptedGap = 12;

// A load that resumes at a gap meets it a little before or after the position of the previous load.
constexpr double sameGapTolerance = 2;

// Audio still buffered by the sound device is dropped when timestamps restart.
constexpr double droppedAudio = 0.3;

} // namespace

void Timeline::beginLoad()
{
    m_offset = 0;
    m_hasSkippedData = false;
    m_unconfirmed.reset();
}

Timeline::Position Timeline::onSeekFinished(double requested, double timestamp)
{
    m_unconfirmed.reset();
    m_offset = 0;
    if (timestamp <= requested + longestAcceptedGap)
        return {timestamp};
    if (m_hasSkippedData)
        return gap(requested, timestamp);
    m_offset = requested - timestamp;
    return {requested};
}

std::optional<Timeline::Position> Timeline::onTimestamp(double from, double timestamp, double elapsed)
{
    const double to = positionAt(timestamp);
    const double beyond = to - from - elapsed;
    if (to > from - tolerance && beyond < tolerance) {
        m_unconfirmed.reset();
        return Position{to};
    }
    // While the library restarts, it once reports the position of its last seek, so one timestamp alone proves nothing.
    if (!m_unconfirmed || timestamp < *m_unconfirmed || timestamp > *m_unconfirmed + tolerance) {
        m_unconfirmed = timestamp;
        return std::nullopt;
    }
    m_unconfirmed.reset();
    if (to > from && beyond <= longestAcceptedGap)
        return Position{to};
    if (to > from && m_hasSkippedData)
        return gap(from, to);
    m_offset = from + droppedAudio - timestamp;
    return Position{from + droppedAudio};
}

Timeline::Position Timeline::gap(double from, double to)
{
    const bool again = m_lastGapStart && std::abs(from - *m_lastGapStart) <= sameGapTolerance;
    m_lastGapStart = from;
    return {to, again ? Position::Kind::RepeatedGap : Position::Kind::Gap};
}

} // namespace quillmere
