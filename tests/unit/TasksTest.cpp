#include "Completion.h"
#include "Rows.h"
#include "TaskScope.h"
#include "TestMain.h"
#include "Worker.h"

#include <QCoroTask>
#include <QTest>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace quillmere {

namespace {

/** Awaits `completion` and appends its value to `seen`, negated if the token was cancelled by then. */
QCoro::Task<> wait(Completion<int> completion, std::stop_token token, std::shared_ptr<QList<int>> seen)
{
    const int value = co_await completion;
    seen->append(token.stop_requested() ? -value : value);
}

} // namespace

class TasksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void destroyingScopeCancelsItsTokensAtOnce()
    {
        int calls = 0;
        auto scope = std::make_optional<TaskScope>();
        const std::stop_token token = scope->token();
        const std::stop_callback registration(token, [&] { ++calls; });
        scope.reset();
        QCOMPARE(calls, 1);
        QVERIFY(token.stop_requested());
    }

    void cancelledScopeGivesNewTokens()
    {
        TaskScope scope;
        const std::stop_token before = scope.token();
        scope.cancel();
        QVERIFY(before.stop_requested());
        QVERIFY(!scope.token().stop_requested());
    }

    void callbackMayCancelAgain()
    {
        TaskScope scope;
        int calls = 0;
        const std::stop_callback registration(scope.token(), [&] {
            ++calls;
            scope.cancel();
        });
        scope.cancel();
        QCOMPARE(calls, 1);
    }

    void linkedTokenIsStoppedByEitherScope_data()
    {
        rows<bool>({"callerIsFirst"}, {{"the scope", false}, {"the caller", true}});
    }
    void linkedTokenIsStoppedByEitherScope()
    {
        QFETCH(bool, callerIsFirst);
        TaskScope scope;
        TaskScope caller;
        int calls = 0;
        const LinkedStopSource linked(scope.token(), caller.token());
        const std::stop_callback registration(linked.token(), [&] { ++calls; });
        (callerIsFirst ? caller : scope).cancel();
        QVERIFY(linked.token().stop_requested());
        (callerIsFirst ? scope : caller).cancel();
        QCOMPARE(calls, 1);
    }

    void tokenLinkedToStoppedTokenIsStopped()
    {
        TaskScope scope;
        TaskScope caller;
        const std::stop_token stopped = caller.token();
        caller.cancel();
        QVERIFY(LinkedStopSource(scope.token(), stopped).token().stop_requested());
        QVERIFY(!scope.token().stop_requested());
    }

    void linkedSourceMayBeDestroyedWhileItStops()
    {
        TaskScope scope;
        TaskScope caller;
        auto linked = std::make_unique<LinkedStopSource>(scope.token(), caller.token());
        std::optional<std::stop_callback<std::function<void()>>> registration;
        int calls = 0;
        registration.emplace(linked->token(), [&] {
            ++calls;
            linked.reset();
        });
        scope.cancel();
        caller.cancel();
        QCOMPARE(calls, 1);
    }

    void completionResumesInsideResolveOnlyOnceAndLaterDoesNotSuspend()
    {
        const Completion<int> completion;
        const auto seen = std::make_shared<QList<int>>();
        wait(completion, {}, seen);
        QVERIFY(seen->isEmpty());
        completion.resolve(7);
        completion.resolve(8);
        QCOMPARE(*seen, QList<int>{7});
        wait(completion, {}, seen);
        QCOMPARE(*seen, (QList<int>{7, 7}));
    }

    void taskSeesThatItsScopeIsDestroyed()
    {
        const Completion<int> completion;
        const auto seen = std::make_shared<QList<int>>();
        {
            const TaskScope scope;
            wait(completion, scope.token(), seen);
        }
        completion.resolve(7);
        QCOMPARE(*seen, QList<int>{-7});
    }

    void workerRunsInOrderOnItsThreadAndCompletesOnCallers()
    {
        Worker worker;
        const auto* const here = QThread::currentThread();
        const auto seen = std::make_shared<QList<int>>();
        QList<Completion<int>> completions;
        for (int number = 1; number <= 20; ++number) {
            completions.append(worker.run([number, here] { return QThread::currentThread() == here ? -1 : number; }));
            wait(completions.last(), {}, seen);
        }
        QVERIFY(seen->isEmpty());
        QTRY_COMPARE(seen->size(), 20);
        for (int number = 1; number <= 20; ++number)
            QCOMPARE(seen->at(number - 1), number);
    }

    void waitingForWorkerRunsAllAndCompletesLater()
    {
        std::atomic<int> done = 0;
        const auto seen = std::make_shared<QList<int>>();
        Worker worker;
        for (int number = 0; number < 5; ++number)
            wait(worker.run([&done] { return ++done; }), {}, seen);
        worker.wait();
        QCOMPARE(done.load(), 5);
        QVERIFY(seen->isEmpty());
        QTRY_COMPARE(seen->size(), 5);
    }

    void destroyedWorkerHasRunAllAndStillCompletes()
    {
        std::atomic<int> done = 0;
        const auto seen = std::make_shared<QList<int>>();
        {
            Worker worker;
            for (int number = 0; number < 5; ++number)
                wait(worker.run([&done] { return ++done; }), {}, seen);
        }
        QCOMPARE(done.load(), 5);
        QTRY_COMPARE(seen->size(), 5);
    }
};

QUILLMERE_TEST(TasksTest, QCoreApplication)

} // namespace quillmere

#include "TasksTest.moc"
