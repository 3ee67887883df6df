#include "VHSCover.h"

size_t qHash(const VHSCover& cover, size_t seed) noexcept
{
    return qHashMulti(seed, cover.id, cover.title, cover.spineTitle, cover.bodyName, cover.genre, cover.shelf,
                      cover.year, cover.dateLabel, cover.runtime, cover.speed, cover.rating, cover.tagline,
                      cover.synopsis, cover.hue, cover.catalogNo, cover.barcode, cover.hasAgenda, cover.hasTranscript);
}
