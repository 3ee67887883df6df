#pragma once

#include <QString>

/** One track of a stream from which a viewer can choose. A plain value. */
struct MediaTrack
{
    enum class Kind { Audio, Subtitle };

    /** The id by which no track of a kind is selected. */
    static constexpr int none = -1;

    int id = none; ///< counts from 1, for each kind on its own
    Kind kind = Kind::Audio;
    QString title;    ///< the stream's own words; may be empty
    QString language; ///< BCP 47 or ISO 639; empty while unknown
    bool selected = false;

    bool operator==(const MediaTrack&) const = default;
};
