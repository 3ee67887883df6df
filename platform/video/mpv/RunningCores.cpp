#include "RunningCores.h"

#include <condition_variable>
#include <list>
#include <mutex>

namespace quillmere {

namespace {

// How long a new core waits for released ones to end, as the libraries below send their log messages to one core only.
constexpr std::chrono::seconds turnLimit{1};

struct RunningState
{
    std::mutex mutex;
    std::condition_variable changed;
    std::list<const MpvCore*> cores; ///< oldest first
};

// Never destroyed, as threads may still end while the process exits.
RunningState& runningState()
{
    static auto* const one = new RunningState;
    return *one;
}

} // namespace

void RunningCores::add(const MpvCore* core)
{
    const std::lock_guard lock(runningState().mutex);
    runningState().cores.push_back(core);
}

void RunningCores::remove(const MpvCore* core)
{
    const std::lock_guard lock(runningState().mutex);
    runningState().cores.remove(core);
    runningState().changed.notify_all();
}

void RunningCores::waitForTurn(const MpvCore* core)
{
    std::unique_lock lock(runningState().mutex);
    runningState().changed.wait_for(lock, turnLimit, [core] { return runningState().cores.front() == core; });
}

bool RunningCores::waitForAll(std::chrono::milliseconds limit)
{
    std::unique_lock lock(runningState().mutex);
    return runningState().changed.wait_for(lock, limit, [] { return runningState().cores.empty(); });
}

} // namespace quillmere
