#include "PixelPlacement.h"

#include <cmath>

namespace {

bool near(double a, double b)
{
    return std::abs(a - b) < PixelPlacement::tolerance;
}

} // namespace

bool PixelPlacement::operator==(const PixelPlacement& other) const
{
    return pixels == other.pixels && near(phase.x(), other.phase.x()) && near(phase.y(), other.phase.y()) &&
           near(scale.width() * pixels.width(), other.scale.width() * pixels.width()) &&
           near(scale.height() * pixels.height(), other.scale.height() * pixels.height());
}
