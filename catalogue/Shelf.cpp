#include "Shelf.h"

size_t qHash(const Shelf& shelf, size_t seed) noexcept
{
    return qHash(shelf.name, seed);
}
