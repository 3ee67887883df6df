#include "Scrub.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace quillmere {

using std::chrono::milliseconds;

namespace {

// The speed doubles after each step: an hour of tape takes about half a minute.
constexpr int minSpeed = 8;
constexpr int maxSpeed = 128;
constexpr milliseconds stepTime = 2000ms;

double seconds(milliseconds time)
{
    return std::chrono::duration<double>(time).count();
}

} // namespace

int Scrub::speedAt(milliseconds now) const
{
    int speed = minSpeed;
    for (milliseconds held = now - startTime; held >= stepTime && speed < maxSpeed; held -= stepTime)
        speed *= 2;
    return direction * speed;
}

double Scrub::positionAt(milliseconds now) const
{
    double distance = 0;
    milliseconds held = now - startTime;
    for (int speed = minSpeed; held > 0ms; speed *= 2) {
        const milliseconds part = speed < maxSpeed ? std::min(held, stepTime) : held;
        distance += speed * seconds(part);
        held -= part;
    }
    return startPosition + direction * distance;
}

} // namespace quillmere
