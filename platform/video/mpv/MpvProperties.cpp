#include "MpvProperties.h"

#include "Logging.h"
#include "MpvTracks.h"

#include <cmath>
#include <limits>

namespace {

// The library tells of every few packets; a viewer sees no smaller step of the buffered part.
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

void MpvProperties::begin(int load, bool isLive)
{
    m_load = load;
    m_start = 0;
    m_isLive = isLive;
    m_pictureShown = false;
    m_bufferedTo = -bufferedStep;
}

void MpvProperties::changed(uint64_t property, const mpv_event_property& value)
{
    if (value.format == MPV_FORMAT_NONE)
        return;
    switch (property) {
    case Position:
        if (m_pictureShown)
            report(&VideoEngineListener::positionMoved, *static_cast<const double*>(value.data) - m_start);
        break;
    case Buffered:
        takeBuffered(*static_cast<const double*>(value.data) - m_start);
        break;
    case Waiting:
        report(&VideoEngineListener::waitingChanged, *static_cast<const int*>(value.data) != 0);
        break;
    case Seekable:
        report(&VideoEngineListener::seekableKnown, !m_isLive && *static_cast<const int*>(value.data) != 0);
        break;
    case Tracks:
        report(&VideoEngineListener::tracksKnown, MpvTracks::read(*static_cast<const mpv_node*>(value.data)));
        break;
    default:
        break;
    }
}

void MpvProperties::takeBuffered(double seconds)
{
    if (std::abs(seconds - m_bufferedTo) < bufferedStep)
        return;
    m_bufferedTo = seconds;
    report(&VideoEngineListener::dataBuffered, seconds);
}

// Where it is not known the timestamps are the positions.
void MpvProperties::updateStart(mpv_handle* mpv)
{
    double seconds = 0;
    if (mpv_get_property(mpv, "demuxer-start-time", MPV_FORMAT_DOUBLE, &seconds) >= 0 && std::isfinite(seconds))
        m_start = seconds;
}

// Once packets are read, the library takes the last one's time for a duration that the list does not tell.
void MpvProperties::takeDuration(mpv_handle* mpv)
{
    double seconds = 0;
    if (mpv_get_property(mpv, "duration", MPV_FORMAT_DOUBLE, &seconds) >= 0)
        report(&VideoEngineListener::durationKnown, seconds);
}

// Unknown when the file has ended meanwhile; then what was told before stands.
void MpvProperties::takeSeekable(mpv_handle* mpv)
{
    int seekable = 0;
    if (mpv_get_property(mpv, "seekable", MPV_FORMAT_FLAG, &seekable) >= 0)
        report(&VideoEngineListener::seekableKnown, !m_isLive && seekable != 0);
}

// A value that is the same as that of the load before may not have been told as a change.
void MpvProperties::showPicture(mpv_handle* mpv)
{
    takeSeekable(mpv);
    mpv_node tracks{};
    if (mpv_get_property(mpv, "track-list", MPV_FORMAT_NODE, &tracks) >= 0) {
        report(&VideoEngineListener::tracksKnown, MpvTracks::read(tracks));
        mpv_free_node_contents(&tracks);
    }
    m_pictureShown = true;
    report(&VideoEngineListener::pictureShown, position(mpv));
}

void MpvProperties::finishSeek(mpv_handle* mpv, int seek)
{
    report(&VideoEngineListener::seekDone, seek, position(mpv));
}

void MpvProperties::logDecoders(mpv_handle* mpv)
{
    if (!logVideo().isInfoEnabled())
        return;
    const auto property = [mpv](const char* name) {
        char* const value = mpv_get_property_string(mpv, name);
        const QByteArray words = value ? value : "none";
        mpv_free(value);
        return words;
    };
    qCInfo(logVideo).noquote().nospace() << "video " << property("video-codec") << ", hardware "
                                         << property("hwdec-current") << ", " << property("width") << " x "
                                         << property("height") << "; sound " << property("audio-codec") << " to "
                                         << property("current-ao");
}

// Unknown when the file has just ended, which is told next.
double MpvProperties::position(mpv_handle* mpv) const
{
    double seconds = std::numeric_limits<double>::quiet_NaN();
    mpv_get_property(mpv, "time-pos", MPV_FORMAT_DOUBLE, &seconds);
    return seconds - m_start;
}
