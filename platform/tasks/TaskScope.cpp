#include "TaskScope.h"

#include <utility>

TaskScope::TaskScope()
{
    m_token.m_state = std::make_shared<CancelToken::State>();
}

TaskScope::~TaskScope()
{
    CancelToken::cancel(m_token.m_state);
}

CancelToken TaskScope::token() const
{
    return m_token;
}

CancelToken TaskScope::token(const CancelToken& caller) const
{
    if (!caller.m_state)
        return m_token;
    CancelToken both;
    both.m_state = std::make_shared<CancelToken::State>();
    // Each parent holds the child weakly and the child holds both registrations, so nothing outlives its use.
    auto links = std::make_shared<std::pair<CancelToken::Registration, CancelToken::Registration>>();
    const std::weak_ptr<CancelToken::State> child = both.m_state;
    const auto cancelChild = [child] {
        if (const auto state = child.lock())
            CancelToken::cancel(state);
    };
    links->first = m_token.onCancel(cancelChild);
    links->second = caller.onCancel(cancelChild);
    if (!both.m_state->cancelled)
        both.m_state->callbacks.emplace(both.m_state->nextKey++, [links] {});
    return both;
}

void TaskScope::cancel()
{
    const auto ending = std::exchange(m_token.m_state, std::make_shared<CancelToken::State>());
    CancelToken::cancel(ending);
}
