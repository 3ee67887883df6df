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

/**
 * Tells the thread sanitizer what it cannot see, as Qt's own locks are not built with it: what was written before
 * `give` may be read after `take` of the same place. Nothing in other builds.
 */
namespace Handover {

inline void give([[maybe_unused]] void* place)
{
#ifdef QUILLMERE_SANITIZES_THREADS
    __tsan_release(place);
#endif
}

inline void take([[maybe_unused]] void* place)
{
#ifdef QUILLMERE_SANITIZES_THREADS
    __tsan_acquire(place);
#endif
}

} // namespace Handover

/** Where other threads leave work for the thread that this object lives on; what is still there goes with it. */
class Mailbox : public QObject
{
public:
    /** Any thread: calls `work` once, from the event loop of this object's thread, in the order of the posts. */
    template<typename Work>
    void post(Work work)
    {
        auto* const letter = new Letter<Work>(std::move(work));
        Handover::give(letter);
        QCoreApplication::postEvent(this, letter);
    }

    bool event(QEvent* event) override
    {
        Handover::take(event);
        if (event->type() != workType)
            return QObject::event(event);
        static_cast<AnyLetter*>(event)->run();
        return true;
    }

private:
    static constexpr auto workType = QEvent::User;

    class AnyLetter : public QEvent
    {
    public:
        AnyLetter() : QEvent(workType) {}
        virtual void run() = 0;
    };

    template<typename Work>
    class Letter : public AnyLetter
    {
    public:
        explicit Letter(Work work) : m_work(std::move(work)) {}
        ~Letter() override { Handover::take(this); }
        void run() override { m_work(); }

    private:
        Work m_work;
    };
};
