#pragma once

#include <functional>
#include <map>
#include <memory>

/**
 * Says whether the work it was given to is still wanted. A copy shares the state of the original, so a coroutine
 * keeps one in its frame and re-checks it after every co_await, before it touches its object.
 * Screen thread only. A default-made token is never cancelled.
 */
class CancelToken
{
public:
    /** Takes its callback back when it goes out of scope. */
    class Registration;

    bool isCancelled() const;

    /** Calls `callback` once, inside the cancelling call; never, if the registration goes first; at once, if cancelled. */
    [[nodiscard]] Registration onCancel(std::function<void()> callback) const;

private:
    friend class TaskScope;
    struct State
    {
        bool cancelled = false;
        int nextKey = 0;
        std::map<int, std::function<void()>> callbacks;
    };
    static void cancel(const std::shared_ptr<State>& state);

    std::shared_ptr<State> m_state;
};

class CancelToken::Registration
{
public:
    Registration() = default;
    Registration(Registration&& other) noexcept;
    Registration& operator=(Registration&& other) noexcept;
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration();

private:
    friend class CancelToken;
    Registration(std::weak_ptr<State> state, int key);
    void release();

    std::weak_ptr<State> m_state;
    int m_key = 0;
};
