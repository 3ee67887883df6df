#pragma once

#include <QString>

namespace quillmere {

/** An audio or subtitle track of a stream, which the viewer can select. A plain value. */
struct MediaTrack
{
    enum class Kind { Audio, Subtitle };

    /** The id that selects no track of a kind. */
    static constexpr int none = -1;

    int id = none; ///< counted from 1, separately for each kind
    Kind kind = Kind::Audio;
    QString title;    ///< from the stream; may be empty
    QString language; ///< BCP 47 or ISO 639; empty if unknown
    bool selected = false;

    bool operator==(const MediaTrack&) const = default;
};

} // namespace quillmere
