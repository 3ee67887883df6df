#include "MpvTracks.h"

#include <optional>
#include <string_view>

namespace quillmere {

namespace {

std::optional<MediaTrack> readOne(const mpv_node_list& members)
{
    MediaTrack track;
    bool known = false;
    for (int i = 0; i < members.num; ++i) {
        const std::string_view key = members.keys[i];
        const mpv_node& value = members.values[i];
        if (key == "id" && value.format == MPV_FORMAT_INT64) {
            track.id = int(value.u.int64);
        } else if (key == "selected" && value.format == MPV_FORMAT_FLAG) {
            track.selected = value.u.flag != 0;
        } else if (value.format != MPV_FORMAT_STRING) {
            continue;
        } else if (key == "type") {
            const std::string_view type = value.u.string;
            known = type == "audio" || type == "sub";
            track.kind = type == "sub" ? MediaTrack::Kind::Subtitle : MediaTrack::Kind::Audio;
        } else if (key == "title") {
            track.title = QString::fromUtf8(value.u.string);
        } else if (key == "lang") {
            track.language = QString::fromUtf8(value.u.string);
        }
    }
    return known ? std::optional(track) : std::nullopt;
}

} // namespace

QList<MediaTrack> MpvTracks::read(const mpv_node& list)
{
    QList<MediaTrack> tracks;
    for (int i = 0; list.format == MPV_FORMAT_NODE_ARRAY && i < list.u.list->num; ++i) {
        const mpv_node& entry = list.u.list->values[i];
        if (entry.format != MPV_FORMAT_NODE_MAP)
            continue;
        if (const auto track = readOne(*entry.u.list))
            tracks.append(*track);
    }
    return tracks;
}

const char* MpvTracks::option(MediaTrack::Kind kind)
{
    return kind == MediaTrack::Kind::Audio ? "aid" : "sid";
}

bool MpvTracks::isSubtitlePlaylist(mpv_handle* mpv)
{
    char* const codec = mpv_get_property_string(mpv, "current-tracks/sub/codec");
    const bool is = codec && std::string_view(codec) == "webvtt";
    mpv_free(codec);
    return is;
}

} // namespace quillmere
