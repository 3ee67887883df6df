#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <utility>

#if defined(__SANITIZE_THREAD__)
#define QUILLMERE_SANITIZES_THREADS
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define QUILLMERE_SANITIZES_THREADS
#endif
#endif
#ifdef QUILLMERE_SANITIZES_THREADS
#include <sanitizer/tsan_interface.h>
#endif

namespace quillmere {

/**
 * Annotations for ThreadSanitizer, which does not see Qt's locks because Qt is not built with it: writes before
 * `release` are visible after `acquire` of the same address. No effect in other builds.
 */
namespace HappensBefore {

inline void release([[maybe_unused]] void* address)
{
#ifdef QUILLMERE_SANITIZES_THREADS
    __tsan_release(address);
#endif
}

inline void acquire([[maybe_unused]] void* address)
{
#ifdef QUILLMERE_SANITIZES_THREADS
    __tsan_acquire(address);
#endif
}

} // namespace HappensBefore

/**
 * Runs calls posted by other threads on the thread of this object. Pending calls are discarded when it is destroyed.
 */
class CallQueue : public QObject
{
public:
    /** Any thread: runs `call` once, from the event loop of this object's thread. Calls run in the order of posting. */
    template<typename Call>
    void post(Call call)
    {
        auto* const event = new CallEventFor<Call>(std::move(call));
        HappensBefore::release(event);
        QCoreApplication::postEvent(this, event);
    }

    bool event(QEvent* event) override
    {
        HappensBefore::acquire(event);
        if (event->type() != callType)
            return QObject::event(event);
        static_cast<CallEvent*>(event)->run();
        return true;
    }

private:
    static constexpr auto callType = QEvent::User;

    class CallEvent : public QEvent
    {
    public:
        CallEvent() : QEvent(callType) {}
        virtual void run() = 0;
    };

    template<typename Call>
    class CallEventFor : public CallEvent
    {
    public:
        explicit CallEventFor(Call call) : m_call(std::move(call)) {}
        ~CallEventFor() override { HappensBefore::acquire(this); }
        void run() override { m_call(); }

    private:
        Call m_call;
    };
};

} // namespace quillmere
