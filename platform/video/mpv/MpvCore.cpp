#include "MpvCore.h"

#include "MpvOptions.h"
#include "MpvTracks.h"
#include "RunningCores.h"

#include <cmath>
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
    open();
}

// The picture of the load has been there before.
void MpvCore::openAt(double seconds)
{
    setOption("start", MpvOptions::startOption(seconds).constData());
    open();
}

void MpvCore::open()
{
    m_opening = true;
    m_started = false;
    m_pictureDue = false;
    const char* command[] = {"loadfile", m_address.constData(), "replace", nullptr};
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
    if (load != m_load)
        return;
    if (m_opening) {
        openAt(seconds);
        m_seek = {seek, SeekStep::Begun};
        return;
    }
    if (!m_started)
        return;
    m_seek = {seek, SeekStep::Asked};
    const QByteArray target = QByteArray::number(m_properties.timestampOf(seconds), 'f', 3);
    const char* const way = tolerance == SeekTolerance::Nearest ? "absolute+keyframes" : "absolute+exact";
    const char* command[] = {"seek", target.constData(), way, nullptr};
    mpv_command_async(m_mpv, uint64_t(seek), command);
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
        if (const double at = m_properties.position(m_mpv); std::isfinite(at))
            openAt(at);
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
    m_opening = false;
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
