#include "CancelToken.h"

#include <utility>

bool CancelToken::isCancelled() const
{
    return m_state && m_state->cancelled;
}

CancelToken::Registration CancelToken::onCancel(std::function<void()> callback) const
{
    if (!m_state)
        return {};
    if (m_state->cancelled) {
        callback();
        return {};
    }
    const int key = m_state->nextKey++;
    m_state->callbacks.emplace(key, std::move(callback));
    return {m_state, key};
}

void CancelToken::cancel(const std::shared_ptr<State>& state)
{
    if (state->cancelled)
        return;
    state->cancelled = true;
    // One at a time: a callback may resume a coroutine whose end takes back another registration.
    while (!state->callbacks.empty()) {
        const auto callback = std::move(state->callbacks.begin()->second);
        state->callbacks.erase(state->callbacks.begin());
        callback();
    }
}

CancelToken::Registration::Registration(std::weak_ptr<State> state, int key) : m_state(std::move(state)), m_key(key) {}

CancelToken::Registration::Registration(Registration&& other) noexcept
    : m_state(std::exchange(other.m_state, {})), m_key(other.m_key)
{}

CancelToken::Registration& CancelToken::Registration::operator=(Registration&& other) noexcept
{
    if (this != &other) {
        release();
        m_state = std::exchange(other.m_state, {});
        m_key = other.m_key;
    }
    return *this;
}

CancelToken::Registration::~Registration()
{
    release();
}

void CancelToken::Registration::release()
{
    if (const auto state = m_state.lock())
        state->callbacks.erase(m_key);
    m_state.reset();
}
