#include "MpvCore.h"

#include "Logging.h"
#include "MpvOptions.h"
#include "MpvTracks.h"
#include "RunningCores.h"

#include <cmath>
#include <string_view>
#include <thread>
#include <utility>

namespace quillmere {

namespace {

constexpr std::string_view playlistEntryKey = "playlist_entry_id";

int64_t playlistEntryId(const mpv_node& result)
{
    for (int i = 0; result.format == MPV_FORMAT_NODE_MAP && i < result.u.list->num; ++i) {
        if (result.u.list->keys[i] == playlistEntryKey)
            return result.u.list->values[i].u.int64;
    }
    return 0;
}

} // namespace

std::shared_ptr<MpvCore> MpvCore::start(const VideoOptions& options, const Messenger<VideoEngineListener>& listener)
{
    auto core = std::make_shared<MpvCore>(options, listener);
    RunningCores::add(core.get());
    std::thread([core] {
        core->run();
        RunningCores::remove(core.get());
    }).detach();
    return core;
}

MpvCore::MpvCore(VideoOptions options, const Messenger<VideoEngineListener>& listener)
    : m_options(std::move(options)), m_listener(listener), m_properties(listener)
{}

void MpvCore::post(Task task)
{
    const std::lock_guard lock(m_mutex);
    m_tasks.push_back(std::move(task));
    if (m_wakeupHandle)
        mpv_wakeup(m_wakeupHandle);
}

void MpvCore::end()
{
    const std::lock_guard lock(m_mutex);
    m_ending = true;
    if (m_wakeupHandle)
        mpv_wakeup(m_wakeupHandle);
}

void MpvCore::run()
{
    pthread_setname_np(pthread_self(), "video-core");
    RunningCores::waitForTurn(this);
    if (create()) {
        m_listener.post([](VideoEngineListener& listener) { listener.onEngineReady(); });
        runEventLoop();
    } else {
        m_listener.post([](VideoEngineListener& listener) {
            listener.onEngineFailed({VideoFailure::Cause::NoPlugin, 0, QStringLiteral("libmpv does not start")});
        });
    }
    {
        const std::lock_guard lock(m_mutex);
        m_wakeupHandle = nullptr;
    }
    if (m_mpv)
        mpv_terminate_destroy(m_mpv);
}

bool MpvCore::create()
{
    m_mpv = mpv_create();
    if (!m_mpv || !MpvOptions::apply(m_mpv, m_options) || mpv_initialize(m_mpv) < 0)
        return false;
    mpv_request_log_messages(m_mpv, "warn");
    MpvProperties::observe(m_mpv);
    mpv_hook_add(m_mpv, 0, "on_preloaded", 0);
    const std::lock_guard lock(m_mutex);
    m_wakeupHandle = m_mpv;
    return true;
}

void MpvCore::runEventLoop()
{
    while (runTasks()) {
        // Log messages arrive after the events that they explain, so these are reported when the queue is empty.
        const mpv_event* const event = mpv_wait_event(m_mpv, m_pendingEnd || m_picturePending ? 0 : -1);
        if (event->event_id == MPV_EVENT_SHUTDOWN)
            return;
        if (event->event_id == MPV_EVENT_NONE && std::exchange(m_picturePending, false))
            handlePictureShown();
        if (event->event_id == MPV_EVENT_NONE && m_pendingEnd)
            reportEnd(*std::exchange(m_pendingEnd, std::nullopt));
        handleEvent(*event);
    }
}

bool MpvCore::runTasks()
{
    while (true) {
        std::vector<Task> tasks;
        {
            const std::lock_guard lock(m_mutex);
            if (m_ending)
                return false;
            tasks.swap(m_tasks);
        }
        if (tasks.empty())
            return true;
        for (const Task& task : tasks)
            task(*this);
    }
}

void MpvCore::load(const VideoLoad& load)
{
    m_loadId = load.id;
    m_isLive = load.isLive;
    m_log = {};
    m_pendingEnd.reset();
    m_dataSkipReported = false;
    m_seek = {};
    m_properties.reset(load.id, load.isLive);
    setPaused(load.isPaused);
    m_loadUrl = MpvOptions::setForLoad(m_mpv, load);
    open();
}

// Opens the stream of the current load again, after its picture was shown.
void MpvCore::reopenAt(double seconds)
{
    setOption("start", MpvOptions::startOption(seconds).constData());
    open();
}

void MpvCore::open()
{
    m_opening = true;
    m_fileStarted = false;
    m_picturePending = false;
    const char* command[] = {"loadfile", m_loadUrl.constData(), "replace", nullptr};
    mpv_node result{};
    if (mpv_command_ret(m_mpv, command, &result) < 0) {
        m_listener.post([loadId = m_loadId](VideoEngineListener& listener) { listener.onLoadFailed(loadId, {}); });
        return;
    }
    m_playlistEntryId = playlistEntryId(result);
    mpv_free_node_contents(&result);
}

void MpvCore::seek(int loadId, int seekId, double seconds, SeekTolerance tolerance)
{
    if (loadId != m_loadId)
        return;
    if (m_opening) {
        reopenAt(seconds);
        m_seek = {seekId, SeekStep::Started};
        return;
    }
    if (!m_fileStarted)
        return;
    m_seek = {seekId, SeekStep::Requested};
    const QByteArray target = QByteArray::number(m_properties.timestampAt(seconds), 'f', 3);
    const char* const mode = tolerance == SeekTolerance::Nearest ? "absolute+keyframes" : "absolute+exact";
    const char* command[] = {"seek", target.constData(), mode, nullptr};
    mpv_command_async(m_mpv, uint64_t(seekId), command);
}

void MpvCore::selectTrack(MediaTrack::Kind kind, int id)
{
    const bool isNone = id == MediaTrack::none;
    setOption(MpvTracks::option(kind), isNone ? "no" : QByteArray::number(id).constData());
    if (isNone || m_isLive || !m_fileStarted)
        return;
    if (kind == MediaTrack::Kind::Subtitle && !MpvTracks::isSubtitlePlaylist(m_mpv))
        return;
    if (kind == MediaTrack::Kind::Subtitle) {
        // The reader needs the stream opened again, otherwise the subtitles of a playlist chosen later never appear.
        if (const double at = m_properties.position(m_mpv); std::isfinite(at))
            reopenAt(at);
        return;
    }
    // The data read ahead does not contain this track; without a seek the stream would end after that data.
    const char* command[] = {"seek", "0", "relative+exact", nullptr};
    mpv_command(m_mpv, command);
}

void MpvCore::setWaitsForData(bool waits)
{
    setOption("cache-pause", waits ? "yes" : "no");
}

void MpvCore::setPaused(bool paused)
{
    int flag = paused;
    mpv_set_property(m_mpv, "pause", MPV_FORMAT_FLAG, &flag);
}

void MpvCore::stop()
{
    m_playlistEntryId = 0;
    m_opening = false;
    m_fileStarted = false;
    m_pendingEnd.reset();
    const char* command[] = {"stop", nullptr};
    mpv_command(m_mpv, command);
}

void MpvCore::useSoftwareRenderer()
{
    setOption("hwdec", "no");
}

void MpvCore::useOpenGLRenderer()
{
    setOption("hwdec", "auto-safe");
    // The scene graph's render thread does not wait for the frame's display time.
    setOption("video-timing-offset", "0");
}

void MpvCore::setOption(const char* name, const char* value)
{
    mpv_set_property_string(m_mpv, name, value);
}

void MpvCore::handleEvent(const mpv_event& event)
{
    switch (event.event_id) {
    case MPV_EVENT_START_FILE:
        m_fileStarted = static_cast<const mpv_event_start_file*>(event.data)->playlist_entry_id == m_playlistEntryId;
        break;
    case MPV_EVENT_END_FILE:
        handleEndOfFile(*static_cast<const mpv_event_end_file*>(event.data));
        break;
    case MPV_EVENT_HOOK:
        if (m_fileStarted) {
            m_properties.updateStartTime(m_mpv);
            m_properties.reportDuration(m_mpv);
            m_properties.reportSeekable(m_mpv);
        }
        mpv_hook_continue(m_mpv, static_cast<const mpv_event_hook*>(event.data)->id);
        break;
    case MPV_EVENT_COMMAND_REPLY:
    case MPV_EVENT_SEEK:
        handleSeekEvent(event);
        break;
    case MPV_EVENT_PLAYBACK_RESTART:
        m_picturePending = true;
        break;
    case MPV_EVENT_PROPERTY_CHANGE:
        if (m_fileStarted)
            m_properties.handleChange(event.reply_userdata, *static_cast<const mpv_event_property*>(event.data));
        break;
    case MPV_EVENT_LOG_MESSAGE:
        handleLogMessage(*static_cast<const mpv_event_log_message*>(event.data));
        break;
    default:
        break;
    }
}

void MpvCore::handleEndOfFile(const mpv_event_end_file& end)
{
    if (end.playlist_entry_id != m_playlistEntryId || end.reason == MPV_END_FILE_REASON_STOP)
        return;
    m_opening = false;
    m_fileStarted = false;
    // The log messages that explain the end arrive after this event.
    m_pendingEnd = end;
}

void MpvCore::reportEnd(const mpv_event_end_file& end)
{
    VideoFailure failure = m_log.failure();
    const bool isUnexplained = failure.cause == VideoFailure::Cause::Unknown;
    // After a picture was shown, the messages may concern an earlier problem that was overcome.
    if (end.reason == MPV_END_FILE_REASON_EOF && (isUnexplained || m_properties.isPictureShown())) {
        m_listener.post([loadId = m_loadId](VideoEngineListener& listener) { listener.onEndOfFile(loadId); });
        return;
    }
    const bool isUnplayable = end.error == MPV_ERROR_UNKNOWN_FORMAT || end.error == MPV_ERROR_NOTHING_TO_PLAY;
    if (isUnexplained && isUnplayable)
        failure.cause = VideoFailure::Cause::Unplayable;
    m_listener.post(
        [loadId = m_loadId, failure](VideoEngineListener& listener) { listener.onLoadFailed(loadId, failure); });
}

// A picture that arrives before libmpv starts this seek belongs to an earlier one.
void MpvCore::handleSeekEvent(const mpv_event& event)
{
    const bool isReply = event.event_id == MPV_EVENT_COMMAND_REPLY;
    if (isReply && m_seek.step == SeekStep::Requested && event.reply_userdata == uint64_t(m_seek.id)) {
        m_seek.step = SeekStep::Accepted;
        if (event.error < 0)
            finishSeek();
    } else if (!isReply && m_seek.step == SeekStep::Accepted) {
        m_seek.step = SeekStep::Started;
        m_picturePending = false;
    }
}

void MpvCore::handlePictureShown()
{
    if (!m_fileStarted)
        return;
    m_opening = false;
    if (!m_properties.isPictureShown()) {
        m_properties.reportPictureShown(m_mpv);
        MpvProperties::logDecoders(m_mpv);
    }
    if (m_seek.step == SeekStep::Started)
        finishSeek();
}

void MpvCore::handleLogMessage(const mpv_event_log_message& message)
{
    const char* const text = message.text;
    qCInfo(logVideo).noquote().nospace() << message.prefix << ": "
                                         << logging::withoutQueries(QString::fromUtf8(text).trimmed());
    m_log.add(text);
    if (m_dataSkipReported || !LoadLog::reportsSkippedSegment(text))
        return;
    m_dataSkipReported = true;
    m_listener.post([loadId = m_loadId](VideoEngineListener& listener) { listener.onDataSkipped(loadId); });
}

void MpvCore::finishSeek()
{
    m_properties.reportSeekFinished(m_mpv, m_seek.id);
    m_seek = {};
}

} // namespace quillmere
