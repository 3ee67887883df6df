#include "TapeRating.h"

size_t qHash(const TapeRating& rating, size_t seed) noexcept
{
    return qHashMulti(seed, rating.code, rating.full);
}
