#include "MpvCore.h"

#include "MpvOptions.h"
#include "MpvTracks.h"
#include "RunningCores.h"

#include <string_view>
#include <thread>

namespace {

constexpr std::string_view entryMember = "playlist_entry_id";

int64_t entryIn(const mpv_node& result)
{
    for (int i = 0; result.format == MPV_FORMAT_NODE_MAP && i < result.u.list->num; ++i) {
        if (result.u.list->keys[i] == entryMember)
            return result.u.list->values[i].u.int64;
    }
    return 0;
}

} // namespace

std::shared_ptr<MpvCore> MpvCore::start(const VideoOptions& options, const Messenger<VideoEngineListener>& listener)
{
    auto core = std::make_shared<MpvCore>(options, listener);
    RunningCores::enter(core.get());
    std::thread([core] {
        core->run();
        RunningCores::leave(core.get());
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
    if (m_awake)
        mpv_wakeup(m_awake);
}

void MpvCore::end()
{
    const std::lock_guard lock(m_mutex);
    m_ending = true;
    if (m_awake)
        mpv_wakeup(m_awake);
}

void MpvCore::run()
{
    pthread_setname_np(pthread_self(), "video-core");
    RunningCores::waitForTurn(this);
    if (create()) {
        m_listener.post([](VideoEngineListener& listener) { listener.engineReady(); });
        listen();
    } else {
        m_listener.post([](VideoEngineListener& listener) {
            listener.engineFailed({VideoFailure::Cause::NoPlugin, 0, QStringLiteral("libmpv does not start")});
        });
    }
    {
        const std::lock_guard lock(m_mutex);
        m_awake = nullptr;
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
    m_awake = m_mpv;
    return true;
}

void MpvCore::listen()
{
    while (takeTasks()) {
        // Messages come after the events that they led to.
        const mpv_event* const event = mpv_wait_event(m_mpv, m_ended || m_pictureDue ? 0 : -1);
        if (event->event_id == MPV_EVENT_SHUTDOWN)
            return;
        if (event->event_id == MPV_EVENT_NONE && std::exchange(m_pictureDue, false))
            takePicture();
        if (event->event_id == MPV_EVENT_NONE && m_ended)
            reportEnd(*std::exchange(m_ended, std::nullopt));
        take(*event);
    }
}

bool MpvCore::takeTasks()
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

void MpvCore::take(const mpv_event& event)
{
    switch (event.event_id) {
    case MPV_EVENT_START_FILE:
        m_started = static_cast<const mpv_event_start_file*>(event.data)->playlist_entry_id == m_entry;
        break;
    case MPV_EVENT_END_FILE:
        takeEndOfFile(*static_cast<const mpv_event_end_file*>(event.data));
        break;
    case MPV_EVENT_HOOK:
        if (m_started)
            m_properties.takeDuration(m_mpv);
        mpv_hook_continue(m_mpv, static_cast<const mpv_event_hook*>(event.data)->id);
        break;
    case MPV_EVENT_COMMAND_REPLY:
    case MPV_EVENT_SEEK:
        takeSeek(event);
        break;
    case MPV_EVENT_PLAYBACK_RESTART:
        m_pictureDue = true;
        break;
    case MPV_EVENT_PROPERTY_CHANGE:
        if (m_started)
            m_properties.changed(event.reply_userdata, *static_cast<const mpv_event_property*>(event.data));
        break;
    case MPV_EVENT_LOG_MESSAGE:
        takeMessage(static_cast<const mpv_event_log_message*>(event.data)->text);
        break;
    default:
        break;
    }
}

void MpvCore::takeEndOfFile(const mpv_event_end_file& end)
{
    if (end.playlist_entry_id != m_entry || end.reason == MPV_END_FILE_REASON_STOP)
        return;
    m_started = false;
    // The messages that tell why come after it.
    m_ended = end;
}

void MpvCore::reportEnd(const mpv_event_end_file& end)
{
    VideoFailure failure = m_log.failure();
    const bool isUnexplained = failure.cause == VideoFailure::Cause::Unknown;
    // Once it has played, what the messages tell may be a trouble long past.
    if (end.reason == MPV_END_FILE_REASON_EOF && (isUnexplained || m_properties.isPictureShown())) {
        m_listener.post([load = m_load](VideoEngineListener& listener) { listener.endOfFile(load); });
        return;
    }
    const bool strange = end.error == MPV_ERROR_UNKNOWN_FORMAT || end.error == MPV_ERROR_NOTHING_TO_PLAY;
    if (isUnexplained && strange)
        failure.cause = VideoFailure::Cause::Unplayable;
    m_listener.post([load = m_load, failure](VideoEngineListener& listener) { listener.loadFailed(load, failure); });
}

void MpvCore::load(const VideoLoad& load)
{
    m_load = load.number;
    m_isLive = load.isLive;
    m_log = {};
    m_ended.reset();
    m_skippedData = false;
    m_seek = {};
    m_properties.begin(load.number, load.isLive);
    setPaused(load.isPaused);
    m_address = MpvOptions::setForLoad(m_mpv, load);
    open(m_address);
}

void MpvCore::open(const QByteArray& address)
{
    m_started = false;
    m_pictureDue = false;
    const char* command[] = {"loadfile", address.constData(), "replace", nullptr};
    mpv_node result{};
    if (mpv_command_ret(m_mpv, command, &result) < 0) {
        m_listener.post([number = m_load](VideoEngineListener& listener) { listener.loadFailed(number, {}); });
        return;
    }
    m_entry = entryIn(result);
    mpv_free_node_contents(&result);
}

void MpvCore::seek(int load, int seek, double seconds, SeekTolerance tolerance)
{
    if (load != m_load || !m_started)
        return;
    m_seek = {seek, SeekStep::Asked};
    const QByteArray target = QByteArray::number(seconds, 'f', 3);
    const char* const way = tolerance == SeekTolerance::Nearest ? "absolute+keyframes" : "absolute+exact";
    const char* command[] = {"seek", target.constData(), way, nullptr};
    mpv_command_async(m_mpv, uint64_t(seek), command);
}

// A picture that comes before the library has begun this seek is still that of one before it.
void MpvCore::takeSeek(const mpv_event& event)
{
    const bool isReply = event.event_id == MPV_EVENT_COMMAND_REPLY;
    if (isReply && m_seek.step == SeekStep::Asked && event.reply_userdata == uint64_t(m_seek.number)) {
        m_seek.step = SeekStep::Taken;
        if (event.error < 0)
            finishSeek();
    } else if (!isReply && m_seek.step == SeekStep::Taken) {
        m_seek.step = SeekStep::Begun;
        m_pictureDue = false;
    }
}

void MpvCore::takePicture()
{
    if (!m_started)
        return;
    if (!m_properties.isPictureShown())
        m_properties.showPicture(m_mpv);
    if (m_seek.step == SeekStep::Begun)
        finishSeek();
}

void MpvCore::takeMessage(const char* text)
{
    m_log.add(text);
    if (m_skippedData || !LoadLog::tellsOfSkippedData(text))
        return;
    m_skippedData = true;
    m_listener.post([load = m_load](VideoEngineListener& listener) { listener.dataSkipped(load); });
}

void MpvCore::finishSeek()
{
    m_properties.finishSeek(m_mpv, m_seek.number);
    m_seek = {};
}

void MpvCore::selectTrack(MediaTrack::Kind kind, int id)
{
    const bool isNone = id == MediaTrack::none;
    setOption(MpvTracks::option(kind), isNone ? "no" : QByteArray::number(id).constData());
    if (isNone || m_isLive || !m_started)
        return;
    if (kind == MediaTrack::Kind::Subtitle && !MpvTracks::isSubtitlePlaylist(m_mpv))
        return;
    if (kind == MediaTrack::Kind::Subtitle) {
        // Its playlist is read right only from the opening of the stream on.
        setOption("start", QByteArray::number(MpvProperties::position(m_mpv), 'f', 3).constData());
        open(m_address);
        return;
    }
    // What was read ahead holds nothing of the track; read on from there, a stream would break off.
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
    m_entry = 0;
    m_started = false;
    m_ended.reset();
    const char* command[] = {"stop", nullptr};
    mpv_command(m_mpv, command);
}

void MpvCore::drawInMemory()
{
    setOption("hwdec", "no");
}

void MpvCore::drawWithOpenGL()
{
    setOption("hwdec", "auto-safe");
    // The scene graph's render thread never waits for a frame's time.
    setOption("video-timing-offset", "0");
}

void MpvCore::setOption(const char* name, const char* value)
{
    mpv_set_property_string(m_mpv, name, value);
}
