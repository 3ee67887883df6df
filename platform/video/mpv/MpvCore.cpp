#include "MpvCore.h"

#include "MpvOptions.h"

#include <condition_variable>
#include <list>
#include <thread>

namespace {

// How long a new core waits for one that was let go of: the libraries below tell their troubles to one core alone.
constexpr std::chrono::seconds turn{1};

struct Running
{
    std::mutex mutex;
    std::condition_variable changed;
    std::list<const MpvCore*> cores; ///< the oldest first
};

// Kept for good: threads may still report their end while the process leaves.
Running& running()
{
    static auto* const one = new Running;
    return *one;
}

void enter(const MpvCore* core)
{
    const std::lock_guard lock(running().mutex);
    running().cores.push_back(core);
}

void leave(const MpvCore* core)
{
    const std::lock_guard lock(running().mutex);
    running().cores.remove(core);
    running().changed.notify_all();
}

void waitForTurn(const MpvCore* core)
{
    std::unique_lock lock(running().mutex);
    running().changed.wait_for(lock, turn, [core] { return running().cores.front() == core; });
}

enum Property : uint64_t { Position = 1, Duration, Waiting };

} // namespace

std::shared_ptr<MpvCore> MpvCore::start(const VideoOptions& options, const Messenger<VideoEngineListener>& listener)
{
    auto core = std::make_shared<MpvCore>(options, listener);
    enter(core.get());
    std::thread([core] {
        core->run();
        leave(core.get());
    }).detach();
    return core;
}

bool MpvCore::waitForAll(std::chrono::milliseconds limit)
{
    std::unique_lock lock(running().mutex);
    return running().changed.wait_for(lock, limit, [] { return running().cores.empty(); });
}

MpvCore::MpvCore(VideoOptions options, const Messenger<VideoEngineListener>& listener)
    : m_options(std::move(options)), m_listener(listener)
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
    waitForTurn(this);
    if (open()) {
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

bool MpvCore::open()
{
    m_mpv = mpv_create();
    if (!m_mpv || !MpvOptions::apply(m_mpv, m_options) || mpv_initialize(m_mpv) < 0)
        return false;
    mpv_request_log_messages(m_mpv, "warn");
    mpv_observe_property(m_mpv, Position, "time-pos", MPV_FORMAT_DOUBLE);
    mpv_observe_property(m_mpv, Duration, "duration", MPV_FORMAT_DOUBLE);
    mpv_observe_property(m_mpv, Waiting, "paused-for-cache", MPV_FORMAT_FLAG);
    const std::lock_guard lock(m_mutex);
    m_awake = m_mpv;
    return true;
}

void MpvCore::listen()
{
    while (takeTasks()) {
        const mpv_event* const event = mpv_wait_event(m_mpv, m_failing ? 0 : -1);
        if (event->event_id == MPV_EVENT_SHUTDOWN)
            return;
        if (event->event_id == MPV_EVENT_NONE && std::exchange(m_failing, false))
            reportFailure();
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
    case MPV_EVENT_PLAYBACK_RESTART:
        if (m_started)
            m_listener.post([load = m_load](VideoEngineListener& listener) { listener.pictureShown(load); });
        break;
    case MPV_EVENT_PROPERTY_CHANGE:
        takeProperty(*static_cast<const mpv_event_property*>(event.data));
        break;
    case MPV_EVENT_LOG_MESSAGE:
        m_log.add(static_cast<const mpv_event_log_message*>(event.data)->text);
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
    if (end.reason == MPV_END_FILE_REASON_EOF) {
        m_listener.post([load = m_load](VideoEngineListener& listener) { listener.endOfFile(load); });
        return;
    }
    // The messages that tell why come after it.
    m_failing = true;
    m_error = end.error;
}

void MpvCore::reportFailure()
{
    VideoFailure failure = m_log.failure();
    const bool strange = m_error == MPV_ERROR_UNKNOWN_FORMAT || m_error == MPV_ERROR_NOTHING_TO_PLAY;
    if (failure.cause == VideoFailure::Cause::Unknown && strange)
        failure.cause = VideoFailure::Cause::Unplayable;
    m_listener.post([load = m_load, failure](VideoEngineListener& listener) { listener.loadFailed(load, failure); });
}

void MpvCore::takeProperty(const mpv_event_property& property)
{
    if (!m_started || property.format == MPV_FORMAT_NONE)
        return;
    const std::string_view name = property.name;
    if (name == "paused-for-cache") {
        const bool waiting = *static_cast<const int*>(property.data) != 0;
        m_listener.post(
            [load = m_load, waiting](VideoEngineListener& listener) { listener.waitingChanged(load, waiting); });
        return;
    }
    const double seconds = *static_cast<const double*>(property.data);
    const auto report = name == "duration" ? &VideoEngineListener::durationKnown : &VideoEngineListener::positionMoved;
    m_listener.post(
        [load = m_load, seconds, report](VideoEngineListener& listener) { (listener.*report)(load, seconds); });
}

void MpvCore::load(int load, const QByteArray& url, double startAt)
{
    m_load = load;
    m_log = {};
    m_failing = false;
    m_started = false;
    m_entry = 0;
    MpvOptions::allowProtocols(m_mpv, url);
    // An option, as the place of a load's own options in the command differs between versions of the library.
    setOption("start", startAt > 0 ? QByteArray::number(startAt, 'f', 3).constData() : "none");
    const char* command[] = {"loadfile", url.constData(), "replace", nullptr};
    mpv_node result{};
    if (mpv_command_ret(m_mpv, command, &result) < 0) {
        m_listener.post([load](VideoEngineListener& listener) { listener.loadFailed(load, {}); });
        return;
    }
    for (int i = 0; result.format == MPV_FORMAT_NODE_MAP && i < result.u.list->num; ++i) {
        if (std::string_view(result.u.list->keys[i]) == "playlist_entry_id")
            m_entry = result.u.list->values[i].u.int64;
    }
    mpv_free_node_contents(&result);
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
    m_failing = false;
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
