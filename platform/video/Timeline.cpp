#include "Timeline.h"

#include <cmath>

namespace {

// Playing goes by the clock, but is told of late, and in steps, on a busy machine.
constexpr double steady = 1;

// Segments are rarely longer: a single one that is missing is passed over, more are a server in trouble.
constexpr double longestGap = 12;

// A load that goes on at a gap lands a little before or after where the last one met it.
constexpr double samePlace = 2;

// What the sound device still held is dropped when timestamps begin anew.
constexpr double dropped = 0.3;

} // namespace

void Timeline::begin()
{
    m_shift = 0;
    m_hasSkipped = false;
    m_unsure.reset();
}

Timeline::Place Timeline::landed(double wanted, double timestamp)
{
    m_unsure.reset();
    m_shift = 0;
    if (timestamp <= wanted + longestGap)
        return {timestamp};
    if (m_hasSkipped)
        return jump(wanted, timestamp);
    m_shift = wanted - timestamp;
    return {wanted};
}

std::optional<Timeline::Place> Timeline::moved(double from, double timestamp, double elapsed)
{
    const double to = positionAt(timestamp);
    const double beyond = to - from - elapsed;
    if (to > from - steady && beyond < steady) {
        m_unsure.reset();
        return Place{to};
    }
    // While the library begins anew it tells once where it was last sent.
    if (!m_unsure || timestamp < *m_unsure || timestamp > *m_unsure + steady) {
        m_unsure = timestamp;
        return std::nullopt;
    }
    m_unsure.reset();
    if (to > from && beyond <= longestGap)
        return Place{to};
    if (to > from && m_hasSkipped)
        return jump(from, to);
    m_shift = from + dropped - timestamp;
    return Place{from + dropped};
}

Timeline::Place Timeline::jump(double from, double to)
{
    const bool again = m_jumpedFrom && std::abs(from - *m_jumpedFrom) <= samePlace;
    m_jumpedFrom = from;
    return {to, again ? Place::Kind::JumpedAgain : Place::Kind::Jumped};
}
