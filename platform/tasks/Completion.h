#pragma once

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>

/**
 * A result that comes later and is awaited once: `co_await completion` in one place, `resolve(value)` in another.
 * A copy shares the state. Whoever makes one resolves it in the end, or the waiting coroutine stays for ever.
 * Screen thread only; resolving resumes the waiting coroutine inside the call.
 */
template<typename T>
class Completion
{
public:
    /** The first call counts, later ones are ignored. */
    void resolve(T value) const
    {
        if (m_state->resolved)
            return;
        m_state->resolved = true;
        m_state->value.emplace(std::move(value));
        if (const auto waiter = std::exchange(m_state->waiter, {}))
            waiter.resume();
    }

    bool isResolved() const { return m_state->resolved; }

    bool await_ready() const noexcept { return m_state->resolved; }
    void await_suspend(std::coroutine_handle<> waiter) const noexcept { m_state->waiter = waiter; }
    T await_resume() const { return std::move(*m_state->value); }

private:
    struct State
    {
        bool resolved = false;
        std::optional<T> value;
        std::coroutine_handle<> waiter;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};
