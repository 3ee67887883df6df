#include "MpvProperties.h"

#include "Logging.h"
#include "MpvTracks.h"

#include <cmath>
#include <limits>

namespace quillmere {

namespace {

// Smallest change of the end of the buffered data that is reported, in seconds. libmpv reports every few packets, but
// smaller changes are not visible on screen.
constexpr double bufferedStep = 0.5;

enum Property : uint64_t { Position = 1, Buffered, Waiting, Seekable, Tracks };

struct Observed
{
    Property property;
    const char* name;
    mpv_format format;
};

constexpr Observed observed[] = {
    {Position, "time-pos", MPV_FORMAT_DOUBLE},      {Buffered, "demuxer-cache-time", MPV_FORMAT_DOUBLE},
    {Waiting, "paused-for-cache", MPV_FORMAT_FLAG}, {Seekable, "seekable", MPV_FORMAT_FLAG},
    {Tracks, "track-list", MPV_FORMAT_NODE},
};

} // namespace

void MpvProperties::observe(mpv_handle* mpv)
{
    for (const Observed& one : observed)
        mpv_observe_property(mpv, one.property, one.name, one.format);
}

void MpvProperties::reset(int loadId, bool isLive)
{
    m_loadId = loadId;
    m_startTime = 0;
    m_isLive = isLive;
    m_pictureShown = false;
    m_bufferedTo = -bufferedStep;
}

void MpvProperties::handleChange(uint64_t property, const mpv_event_property& value)
{
    if (value.format == MPV_FORMAT_NONE)
        return;
    switch (property) {
    case Position:
        if (m_pictureShown)
            report(&VideoEngineListener::onPositionChanged, *static_cast<const double*>(value.data) - m_startTime);
        break;
    case Buffered:
        reportBuffered(*static_cast<const double*>(value.data) - m_startTime);
        break;
    case Waiting:
        report(&VideoEngineListener::onWaitingChanged, *static_cast<const int*>(value.data) != 0);
        break;
    case Seekable:
        report(&VideoEngineListener::onSeekableKnown, !m_isLive && *static_cast<const int*>(value.data) != 0);
        break;
    case Tracks:
        report(&VideoEngineListener::onTracksChanged, MpvTracks::read(*static_cast<const mpv_node*>(value.data)));
        break;
    default:
        break;
    }
}

void MpvProperties::reportBuffered(double seconds)
{
    if (std::abs(seconds - m_bufferedTo) < bufferedStep)
        return;
    m_bufferedTo = seconds;
    report(&VideoEngineListener::onBufferedToChanged, seconds);
}

// If the first timestamp is unknown, timestamps are used as positions.
void MpvProperties::updateStartTime(mpv_handle* mpv)
{
    double seconds = 0;
    if (mpv_get_property(mpv, "demuxer-start-time", MPV_FORMAT_DOUBLE, &seconds) >= 0 && std::isfinite(seconds))
        m_startTime = seconds;
}

// Once packets are read, libmpv uses the time of the last packet as duration if the playlist does not state one.
void MpvProperties::reportDuration(mpv_handle* mpv)
{
    double seconds = 0;
    if (mpv_get_property(mpv, "duration", MPV_FORMAT_DOUBLE, &seconds) >= 0)
        report(&VideoEngineListener::onDurationKnown, seconds);
}

// Unknown if the file has just ended; then the last reported value remains.
void MpvProperties::reportSeekable(mpv_handle* mpv)
{
    int seekable = 0;
    if (mpv_get_property(mpv, "seekable", MPV_FORMAT_FLAG, &seekable) >= 0)
        report(&VideoEngineListener::onSeekableKnown, !m_isLive && seekable != 0);
}

// libmpv may not report a value as changed if it is equal to that of the previous load.
void MpvProperties::reportPictureShown(mpv_handle* mpv)
{
    reportSeekable(mpv);
    mpv_node tracks{};
    if (mpv_get_property(mpv, "track-list", MPV_FORMAT_NODE, &tracks) >= 0) {
        report(&VideoEngineListener::onTracksChanged, MpvTracks::read(tracks));
        mpv_free_node_contents(&tracks);
    }
    m_pictureShown = true;
    report(&VideoEngineListener::onPictureShown, position(mpv));
}

void MpvProperties::reportSeekFinished(mpv_handle* mpv, int seekId)
{
    report(&VideoEngineListener::onSeekFinished, seekId, position(mpv));
}

void MpvProperties::logDecoders(mpv_handle* mpv)
{
    if (!logVideo().isInfoEnabled())
        return;
    const auto property = [mpv](const char* name) {
        char* const value = mpv_get_property_string(mpv, name);
        const QByteArray text = value ? value : "none";
        mpv_free(value);
        return text;
    };
    qCInfo(logVideo).noquote().nospace() << "video " << property("video-codec") << ", hardware "
                                         << property("hwdec-current") << ", " << property("width") << " x "
                                         << property("height") << "; sound " << property("audio-codec") << " to "
                                         << property("current-ao");
}

// Unknown if the file has just ended; that is reported next.
double MpvProperties::position(mpv_handle* mpv) const
{
    double seconds = std::numeric_limits<double>::quiet_NaN();
    mpv_get_property(mpv, "time-pos", MPV_FORMAT_DOUBLE, &seconds);
    return seconds - m_startTime;
}

} // namespace quillmere
