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

namespace quillmere {

/**
 * A libmpv instance and its thread. The thread creates the instance, sends it commands, handles its events and destroys
 * it. Other threads only post tasks to the thread. The thread shares ownership until it ends, so nothing waits for it.
 */
class MpvCore
{
public:
    using Task = std::function<void(MpvCore&)>;

    static std::shared_ptr<MpvCore> start(const VideoOptions& options, const Messenger<VideoEngineListener>& listener);

    MpvCore(VideoOptions options, const Messenger<VideoEngineListener>& listener);

    /** Any thread. Tasks run on the core's thread, in order, until `end` is called. */
    void post(Task task);

    /** Ends the thread. All render contexts must have been freed. Any thread. */
    void end();

    const Messenger<VideoEngineListener>& listener() const { return m_listener; }

    /** Valid from `onEngineReady` until `end`. Only to create render contexts. */
    mpv_handle* handle() const { return m_mpv; }

    // Only on the core's thread, from tasks:
    void load(const VideoLoad& load);
    void stop();
    void setPaused(bool paused);
    void setWaitsForData(bool waits);
    void seek(int loadId, int seekId, double seconds, SeekTolerance tolerance);
    void selectTrack(MediaTrack::Kind kind, int id);

    /** Before the first load, sets how frames are decoded and timed for the renderer. */
    void useSoftwareRenderer();
    void useOpenGLRenderer();

private:
    enum class SeekStep {
        None,
        Requested, ///< libmpv has not replied to the command yet
        Accepted,
        Started ///< the next picture is this seek's
    };
    struct Seek
    {
        int id = 0;
        SeekStep step = SeekStep::None;
    };

    void run();
    bool create();
    void open();
    void reopenAt(double seconds);
    void runEventLoop();
    bool runTasks();

    // Events of libmpv.
    void handleEvent(const mpv_event& event);
    void handleEndOfFile(const mpv_event_end_file& end);
    void reportEnd(const mpv_event_end_file& end);
    void handleSeekEvent(const mpv_event& event);
    void handlePictureShown();
    void handleLogMessage(const mpv_event_log_message& message);
    void finishSeek();

    void setOption(const char* name, const char* value);

    const VideoOptions m_options;
    const Messenger<VideoEngineListener> m_listener;

    std::mutex m_mutex; ///< guards the three below
    std::vector<Task> m_tasks;
    bool m_ending = false;
    mpv_handle* m_wakeupHandle = nullptr; ///< woken up for a new task; null while the thread handles no events

    mpv_handle* m_mpv = nullptr; ///< from here on: only on the core's thread
    int m_loadId = 0;
    bool m_isLive = false;
    QByteArray m_loadUrl;
    int64_t m_playlistEntryId = 0; ///< libmpv's id of the load
    bool m_opening = false;        ///< until the picture is shown; selecting subtitles opens the stream again
    bool m_fileStarted = false;
    std::optional<mpv_event_end_file> m_pendingEnd; ///< reported when all queued log messages are handled
    bool m_picturePending = false;                  ///< a picture, reported when all queued log messages are handled
    bool m_dataSkipReported = false;
    MpvProperties m_properties;
    Seek m_seek;
    LoadLog m_log;
};

} // namespace quillmere
