#pragma once

#include <QList>

#include <functional>
#include <memory>
#include <utility>

/**
 * Calls that an object owes to others, kept until its state is whole again and then made in order. A callee may do what
 * it likes with the object, destroying it included: what was not made by then is not made. Screen thread only; a member
 * of the object that announces.
 */
class Announcements
{
    struct State
    {
        QList<std::function<void()>> calls;
        int changes = 0; ///< under way, calls being made included
    };

public:
    Announcements() = default;
    ~Announcements() { m_state->calls.clear(); }
    Announcements(const Announcements&) = delete;
    Announcements& operator=(const Announcements&) = delete;

    void add(std::function<void()> call) { m_state->calls.append(std::move(call)); }

    /** A change of the object: the end of the outermost makes the calls. It may outlive the object. */
    class Change
    {
    public:
        explicit Change(const Announcements& announcements) : m_state(announcements.m_state) { ++m_state->changes; }
        ~Change()
        {
            while (m_state->changes == 1 && !m_state->calls.isEmpty())
                m_state->calls.takeFirst()();
            --m_state->changes;
        }
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;

    private:
        std::shared_ptr<State> m_state;
    };

private:
    std::shared_ptr<State> m_state = std::make_shared<State>();
};
