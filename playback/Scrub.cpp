#include "Scrub.h"

#include <algorithm>

using namespace std::chrono_literals;
using std::chrono::milliseconds;

namespace {

// Twice as fast after each step: an hour of tape takes about half a minute.
constexpr int slowest = 8;
constexpr int fastest = 128;
constexpr milliseconds step = 2000ms;

double seconds(milliseconds time)
{
    return std::chrono::duration<double>(time).count();
}

} // namespace

int Scrub::speedAt(milliseconds now) const
{
    int speed = slowest;
    for (milliseconds held = now - since; held >= step && speed < fastest; held -= step)
        speed *= 2;
    return direction * speed;
}

double Scrub::positionAt(milliseconds now) const
{
    double way = 0;
    milliseconds held = now - since;
    for (int speed = slowest; held > 0ms; speed *= 2) {
        const milliseconds part = speed < fastest ? std::min(held, step) : held;
        way += speed * seconds(part);
        held -= part;
    }
    return from + direction * way;
}
