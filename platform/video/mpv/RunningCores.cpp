#include "RunningCores.h"

#include <condition_variable>
#include <list>
#include <mutex>

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

} // namespace

void RunningCores::enter(const MpvCore* core)
{
    const std::lock_guard lock(running().mutex);
    running().cores.push_back(core);
}

void RunningCores::leave(const MpvCore* core)
{
    const std::lock_guard lock(running().mutex);
    running().cores.remove(core);
    running().changed.notify_all();
}

void RunningCores::waitForTurn(const MpvCore* core)
{
    std::unique_lock lock(running().mutex);
    running().changed.wait_for(lock, turn, [core] { return running().cores.front() == core; });
}

bool RunningCores::waitForAll(std::chrono::milliseconds limit)
{
    std::unique_lock lock(running().mutex);
    return running().changed.wait_for(lock, limit, [] { return running().cores.empty(); });
}
