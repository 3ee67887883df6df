#pragma once

#include "Completion.h"

#include <QCoreApplication>
#include <QThreadPool>

/**
 * One background thread that takes pieces of work one after the other and hands each result back on the screen thread.
 * Made and used on the screen thread; its destructor waits for the piece that is running.
 */
class Worker
{
public:
    Worker() { m_pool.setMaxThreadCount(1); }

    /** Runs `work()` on the background thread; the completion is resolved on the screen thread, from its event loop. */
    template<typename Work>
    auto run(Work work) -> Completion<decltype(work())>
    {
        Completion<decltype(work())> completion;
        m_pool.start([work = std::move(work), completion]() mutable {
            auto result = std::make_shared<decltype(work())>(work());
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [completion, result] { completion.resolve(std::move(*result)); },
                Qt::QueuedConnection);
        });
        return completion;
    }

private:
    QThreadPool m_pool;
};
