#pragma once

#include <QList>

#include <functional>
#include <memory>
#include <utility>

namespace quillmere {

/**
 * Notifications that are queued while an object changes and delivered in order once it is consistent. A callback may
 * change or destroy the object; when it is destroyed, the remaining notifications are dropped. Screen thread only.
 * A member of the object that notifies.
 */
class DeferredNotifications
{
    struct State
    {
        QList<std::function<void()>> calls;
        int openScopes = 0; ///< includes the scope that delivers
    };

public:
    DeferredNotifications() = default;
    ~DeferredNotifications() { m_state->calls.clear(); }
    DeferredNotifications(const DeferredNotifications&) = delete;
    DeferredNotifications& operator=(const DeferredNotifications&) = delete;

    void add(std::function<void()> call) { m_state->calls.append(std::move(call)); }

    /** Open while the object changes. The end of the outermost scope delivers the queue. May outlive the object. */
    class Scope
    {
    public:
        explicit Scope(const DeferredNotifications& notifications) : m_state(notifications.m_state)
        {
            ++m_state->openScopes;
        }
        ~Scope()
        {
            while (m_state->openScopes == 1 && !m_state->calls.isEmpty())
                m_state->calls.takeFirst()();
            --m_state->openScopes;
        }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        std::shared_ptr<State> m_state;
    };

private:
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace quillmere
