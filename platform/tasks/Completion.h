#pragma once

// First, because moc of Qt 6.4 fails in <coroutine> otherwise.
#include <QtGlobal>

#include <coroutine>
#include <memory>
#include <optional>
#include <utility>

namespace quillmere {

/**
 * A result that is provided later and awaited once: `co_await completion` waits for `resolve(value)`. Copies share
 * their state. Whoever creates one must resolve it, else the waiting coroutine is never resumed. Screen thread only;
 * resolve() resumes the coroutine before it returns.
 */
template<typename T>
class Completion
{
public:
    /** Sets the result. Later calls are ignored. */
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

} // namespace quillmere
