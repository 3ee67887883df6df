#pragma once

#include <stop_token>
#include <utility>

namespace quillmere {

/**
 * Stops the tasks of an object when it is destroyed. It is the object's last member, so that tasks end before other
 * members are destroyed. A task gets `token()` when it starts and checks it after every co_await. The order in
 * which tasks are stopped is not defined. Screen thread only.
 */
class TaskScope
{
public:
    TaskScope() = default;
    ~TaskScope() { m_source.request_stop(); }
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    std::stop_token token() const { return m_source.get_token(); }

    /** Stops all tasks started so far. Tokens created later are not stopped. */
    void cancel() { std::exchange(m_source, std::stop_source()).request_stop(); }

private:
    std::stop_source m_source;
};

/** Its token is stopped when either of two tokens is. A task keeps it in its frame. Screen thread only. */
class LinkedStopSource
{
public:
    LinkedStopSource(const std::stop_token& first, const std::stop_token& second)
        : m_onFirst(first, Forward{m_source}), m_onSecond(second, Forward{m_source})
    {}

    std::stop_token token() const { return m_source.get_token(); }

private:
    struct Forward
    {
        void operator()() const
        {
            // A copy: stopping may end the task, which destroys this.
            std::stop_source kept = source;
            kept.request_stop();
        }

        std::stop_source source;
    };

    std::stop_source m_source;
    std::stop_callback<Forward> m_onFirst;
    std::stop_callback<Forward> m_onSecond;
};

} // namespace quillmere
