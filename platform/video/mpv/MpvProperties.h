#pragma once

#include "Messenger.h"
#include "VideoEngine.h"

#include <algorithm>

#include <mpv/client.h>

/** What libmpv knows of the load that it plays, brought to the listener. On the core's thread; the core owns it. */
class MpvProperties
{
public:
    explicit MpvProperties(const Messenger<VideoEngineListener>& listener) : m_listener(listener) {}

    /** Once: `changed` will hear of them under their numbers. */
    static void observe(mpv_handle* mpv);

    void begin(int load, bool isLive);

    /** One change; positions are held back until `showPicture`. */
    void changed(uint64_t property, const mpv_event_property& value);

    /** The list has been read, and nothing else yet: from which timestamp the positions count. */
    void updateStart(mpv_handle* mpv);
    /** The same moment: tells the duration where the list is whole. */
    void takeDuration(mpv_handle* mpv);
    void takeSeekable(mpv_handle* mpv);

    /** The first picture of the load is there: tells what is known of it, and then that. */
    void showPicture(mpv_handle* mpv);
    bool isPictureShown() const { return m_pictureShown; }

    void finishSeek(mpv_handle* mpv, int seek);

    /** For who looks for a fault: how pictures and sound are decoded. */
    static void logDecoders(mpv_handle* mpv);

    /** Not a number where it is unknown. */
    double position(mpv_handle* mpv) const;
    /** Never negative: the library counts a negative one from the end. */
    double timestampOf(double position) const { return std::max(position + m_start, 0.0); }

private:
    void takeBuffered(double seconds);

    template<typename... Parameters, typename... Values>
    void report(void (VideoEngineListener::*what)(int, Parameters...), Values... values)
    {
        m_listener.post([load = m_load, what, values...](VideoEngineListener& to) { (to.*what)(load, values...); });
    }

    const Messenger<VideoEngineListener> m_listener;
    int m_load = 0;
    double m_start = 0; ///< the stream's first timestamp, in seconds
    bool m_isLive = false;
    bool m_pictureShown = false;
    double m_bufferedTo = 0;
};
