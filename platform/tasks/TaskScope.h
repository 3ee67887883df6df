#pragma once

#include "CancelToken.h"

/**
 * The lifetime of an object's tasks: whoever starts some holds one as its last member, so that they end before
 * anything else of it goes. A task takes `token()` when it starts and re-checks it after every co_await.
 * Screen thread only.
 */
class TaskScope
{
public:
    TaskScope();
    ~TaskScope();
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    /** A token that is cancelled with this scope. */
    CancelToken token() const;

    /** A token that is cancelled with this scope or with `caller`, whichever goes first. */
    CancelToken token(const CancelToken& caller) const;

    /** Ends every task started so far; later tokens are fresh. */
    void cancel();

private:
    CancelToken m_token;
};
