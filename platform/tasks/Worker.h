#pragma once

#include "CallQueue.h"
#include "Completion.h"

#include <QRunnable>
#include <QThreadPool>

#include <memory>

namespace quillmere {

/**
 * A background thread that runs tasks one after the other and delivers each result on the screen thread. Created and
 * used on the screen thread. The destructor waits for the queued tasks; their results are still delivered.
 */
class Worker
{
public:
    Worker()
    {
        m_pool.setMaxThreadCount(1);
        screenThreadQueue();
    }

    /** Runs `work()` on the background thread; resolves the completion on the screen thread, from its event loop. */
    template<typename Work>
    auto run(Work work) -> Completion<decltype(work())>
    {
        Completion<decltype(work())> completion;
        auto* const task = new Task<Work>(std::move(work), completion);
        HappensBefore::release(task);
        m_pool.start(task);
        return completion;
    }

    /** Waits for the queued tasks. Their results are delivered later, from the event loop. */
    void wait() { m_pool.waitForDone(); }

private:
    template<typename Work>
    class Task : public QRunnable
    {
    public:
        using Result = decltype(std::declval<Work&>()());

        Task(Work work, Completion<Result> completion) : m_work(std::move(work)), m_completion(std::move(completion)) {}

        void run() override
        {
            HappensBefore::acquire(this);
            auto result = std::make_shared<Result>(m_work());
            screenThreadQueue().post(
                [completion = std::move(m_completion), result] { completion.resolve(std::move(*result)); });
        }

    private:
        Work m_work;
        Completion<Result> m_completion;
    };

    /**
     * Created with the first worker and never destroyed before the program ends, so that results outlive their worker.
     */
    static CallQueue& screenThreadQueue()
    {
        static CallQueue queue;
        return queue;
    }

    QThreadPool m_pool;
};

} // namespace quillmere
