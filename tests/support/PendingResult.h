#pragma once

#include <QCoroTask>

#include <memory>
#include <optional>

namespace quillmere {

/** Where the result of a task will be stored. */
template<typename T>
using PendingResult = std::shared_ptr<std::optional<T>>;

template<typename T>
QCoro::Task<> storeResult(QCoro::Task<T> task, PendingResult<T> result)
{
    *result = co_await task;
}

/** Starts the task and returns where its result will be stored. */
template<typename T>
PendingResult<T> pendingResult(QCoro::Task<T> task)
{
    auto result = std::make_shared<std::optional<T>>();
    storeResult(std::move(task), result);
    return result;
}

} // namespace quillmere
