#pragma once

#include "Messenger.h"
#include "VideoEngine.h"

#include <algorithm>

#include <mpv/client.h>

namespace quillmere {

/** Reports the properties of the current load to the listener. Only on the core's thread; a member of the core. */
class MpvProperties
{
public:
    explicit MpvProperties(const Messenger<VideoEngineListener>& listener) : m_listener(listener) {}

    /** Subscribes to the properties, once. Each change must be passed to `handleChange`. */
    static void observe(mpv_handle* mpv);

    void reset(int loadId, bool isLive);

    /** Reports one change; positions not before `reportPictureShown`. */
    void handleChange(uint64_t property, const mpv_event_property& value);

    /** Reads the first timestamp, to which positions are relative. After the playlist is read, before any segment. */
    void updateStartTime(mpv_handle* mpv);
    /** Reports the duration if the playlist is complete. To be called at the same moment. */
    void reportDuration(mpv_handle* mpv);
    void reportSeekable(mpv_handle* mpv);

    /** Reports the current properties, then the first picture of the load. */
    void reportPictureShown(mpv_handle* mpv);
    bool isPictureShown() const { return m_pictureShown; }

    void reportSeekFinished(mpv_handle* mpv, int seekId);

    /** Logs how video and audio are decoded. */
    static void logDecoders(mpv_handle* mpv);

    /** In seconds; NaN if unknown. */
    double position(mpv_handle* mpv) const;
    /** Never negative, as libmpv takes a negative time relative to the end. */
    double timestampAt(double position) const { return std::max(position + m_startTime, 0.0); }

private:
    void reportBuffered(double seconds);

    template<typename... Parameters, typename... Values>
    void report(void (VideoEngineListener::*callback)(int, Parameters...), Values... values)
    {
        m_listener.post([loadId = m_loadId, callback, values...](VideoEngineListener& listener) {
            (listener.*callback)(loadId, values...);
        });
    }

    const Messenger<VideoEngineListener> m_listener;
    int m_loadId = 0;
    double m_startTime = 0; ///< first timestamp of the stream, in seconds
    bool m_isLive = false;
    bool m_pictureShown = false;
    double m_bufferedTo = 0;
};

} // namespace quillmere
