#pragma once

#include "LoadLog.h"
#include "Messenger.h"
#include "MpvProperties.h"
#include "VideoEngine.h"
#include "VideoOptions.h"

#include <mpv/client.h>

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

/**
 * libmpv's core on a thread of its own, which makes it, feeds it, listens to it and destroys it. Other threads only
 * post to it. The thread holds it until it has ended, so nobody waits for the end.
 */
class MpvCore
{
public:
    using Task = std::function<void(MpvCore&)>;

    static std::shared_ptr<MpvCore> start(const VideoOptions& options, const Messenger<VideoEngineListener>& listener);

    MpvCore(VideoOptions options, const Messenger<VideoEngineListener>& listener);

    /** Any thread; tasks run on the core's thread, in order, until `end`. */
    void post(Task task);

    /** Any thread; after this no render context may be left. */
    void end();

    const Messenger<VideoEngineListener>& listener() const { return m_listener; }

    /** Set from `engineReady` until `end`. For render contexts alone. */
    mpv_handle* handle() const { return m_mpv; }

    // On the core's thread, from tasks:
    void load(const VideoLoad& load);
    void stop();
    void setPaused(bool paused);
    void setWaitsForData(bool waits);
    void seek(int load, int seek, double seconds, SeekTolerance tolerance);
    void selectTrack(MediaTrack::Kind kind, int id);

    /** Before the first load: how frames will be drawn. */
    void drawInMemory();
    void drawWithOpenGL();

private:
    enum class SeekStep {
        None,
        Asked, ///< the library has not taken it yet
        Taken,
        Begun ///< the next picture is its own
    };
    struct Seek
    {
        int number = 0;
        SeekStep step = SeekStep::None;
    };

    void run();
    bool create();
    void open();
    void openAt(double seconds);
    void listen();
    bool takeTasks();

    // What libmpv tells: MpvCoreEvents.cpp.
    void take(const mpv_event& event);
    void takeEndOfFile(const mpv_event_end_file& end);
    void reportEnd(const mpv_event_end_file& end);
    void takeSeek(const mpv_event& event);
    void takePicture();
    void takeMessage(const mpv_event_log_message& message);
    void finishSeek();

    void setOption(const char* name, const char* value);

    const VideoOptions m_options;
    const Messenger<VideoEngineListener> m_listener;

    std::mutex m_mutex; ///< guards the three below
    std::vector<Task> m_tasks;
    bool m_ending = false;
    mpv_handle* m_awake = nullptr; ///< whom to wake for a new task

    mpv_handle* m_mpv = nullptr; ///< the rest: the core's thread only
    int m_load = 0;
    bool m_isLive = false;
    QByteArray m_address;
    int64_t m_entry = 0;    ///< libmpv's number of the load
    bool m_opening = false; ///< until a picture; anew for a choice of subtitles
    bool m_started = false;
    std::optional<mpv_event_end_file> m_ended; ///< its messages are still to come
    bool m_pictureDue = false;                 ///< so are those of before a picture
    bool m_skippedData = false;
    MpvProperties m_properties;
    Seek m_seek;
    LoadLog m_log;
};
