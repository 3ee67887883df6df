#pragma once

#include "Completion.h"
#include "Mailbox.h"

#include <QRunnable>
#include <QThreadPool>

#include <memory>

/**
 * One background thread that takes pieces of work one after the other and hands each result back on the screen thread.
 * Made and used on the screen thread; its destructor waits for the pieces that it has, and their results still arrive.
 */
class Worker
{
public:
    Worker()
    {
        m_pool.setMaxThreadCount(1);
        screenThread();
    }

    /** Runs `work()` on the background thread; the completion is resolved on the screen thread, from its event loop. */
    template<typename Work>
    auto run(Work work) -> Completion<decltype(work())>
    {
        Completion<decltype(work())> completion;
        auto* const piece = new Piece<Work>(std::move(work), completion);
        Handover::give(piece);
        m_pool.start(piece);
        return completion;
    }

private:
    template<typename Work>
    class Piece : public QRunnable
    {
    public:
        using Result = decltype(std::declval<Work&>()());

        Piece(Work work, Completion<Result> completion) : m_work(std::move(work)), m_completion(std::move(completion))
        {}

        void run() override
        {
            Handover::take(this);
            auto result = std::make_shared<Result>(m_work());
            screenThread().post(
                [completion = std::move(m_completion), result] { completion.resolve(std::move(*result)); });
        }

    private:
        Work m_work;
        Completion<Result> m_completion;
    };

    /** Made with the first worker and never destroyed before the end, so that no result is lost with its worker. */
    static Mailbox& screenThread()
    {
        static Mailbox mailbox;
        return mailbox;
    }

    QThreadPool m_pool;
};
