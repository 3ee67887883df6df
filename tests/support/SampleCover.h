#pragma once

#include "VHSCover.h"

namespace quillmere {

/** The cover of an ordinary meeting with a transcript. */
inline VHSCover sampleCover(double hue = 291)
{
    using namespace Qt::StringLiterals;
    VHSCover cover;
    cover.id = 42;
    cover.title = u"City Council Regular Meeting"_s;
    cover.genre = u"CHAMBER DRAMA"_s;
    cover.year = u"2024"_s;
    cover.runtime = 49;
    cover.speed = u"SP"_s;
    cover.rating = {u"P.G."_s, u"PUBLIC GOVERNANCE — all citizens admitted"_s};
    cover.tagline = u"The fog rolls in. The record rolls on."_s;
    cover.hue = hue;
    cover.catalogNo = u"RW 1130 · SP"_s;
    cover.barcode = {1, 4, 2, 1, 2, 1, 2, 1, 1, 3, 1, 3, 2, 4, 3, 1, 4, 3, 4, 4, 1, 2, 3, 1, 4, 3, 1, 1};
    cover.hasTranscript = true;
    return cover;
}

} // namespace quillmere
