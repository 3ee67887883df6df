#include "CancelToken.h"
#include "Completion.h"
#include "TaskScope.h"
#include "Worker.h"

#include <QCoroTask>
#include <QTest>

#include <memory>
#include <optional>

namespace {

/** Waits for `completion` and leaves what it got, and whether the token held at the time, in `seen`. */
QCoro::Task<> wait(Completion<int> completion, CancelToken token, std::shared_ptr<QList<int>> seen)
{
    const int value = co_await completion;
    seen->append(token.isCancelled() ? -value : value);
}

} // namespace

class TasksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTokenOfNobodyIsNeverCancelled()
    {
        const CancelToken token;
        const auto registration = token.onCancel([] { QFAIL("called"); });
        QVERIFY(!token.isCancelled());
    }

    void endingAScopeCancelsItsTokensInsideTheCall()
    {
        int calls = 0;
        auto scope = std::make_optional<TaskScope>();
        const CancelToken token = scope->token();
        const auto registration = token.onCancel([&] { ++calls; });
        scope.reset();
        QCOMPARE(calls, 1);
        QVERIFY(token.isCancelled());
    }

    void aScopeCancelledGivesFreshTokensAfterwards()
    {
        TaskScope scope;
        const CancelToken before = scope.token();
        scope.cancel();
        QVERIFY(before.isCancelled());
        QVERIFY(!scope.token().isCancelled());
    }

    void aRegistrationThatIsGoneIsNotCalled()
    {
        TaskScope scope;
        {
            const auto registration = scope.token().onCancel([] { QFAIL("called"); });
        }
        scope.cancel();
    }

    void aRegistrationMovesWithItsCallback()
    {
        int first = 0;
        int second = 0;
        TaskScope scope;
        CancelToken::Registration kept = scope.token().onCancel([&] { ++first; });
        kept = scope.token().onCancel([&] { ++second; });
        const CancelToken::Registration moved = std::move(kept);
        scope.cancel();
        QCOMPARE(first, 0);
        QCOMPARE(second, 1);
    }

    void registeringWithACancelledTokenCallsAtOnce()
    {
        TaskScope scope;
        const CancelToken token = scope.token();
        scope.cancel();
        int calls = 0;
        const auto registration = token.onCancel([&] { ++calls; });
        QCOMPARE(calls, 1);
    }

    void aCallbackMayTakeAnotherBackAndCancelAgain()
    {
        TaskScope scope;
        const CancelToken token = scope.token();
        std::optional<CancelToken::Registration> second;
        int calls = 0;
        const auto first = token.onCancel([&] {
            ++calls;
            second.reset();
            scope.cancel();
        });
        second = token.onCancel([&] { ++calls; });
        scope.cancel();
        QCOMPARE(calls, 1);
    }

    void aJoinedTokenEndsWithWhicheverGoesFirst_data()
    {
        QTest::addColumn<bool>("callerGoesFirst");
        QTest::newRow("the scope") << false;
        QTest::newRow("the caller") << true;
    }
    void aJoinedTokenEndsWithWhicheverGoesFirst()
    {
        QFETCH(bool, callerGoesFirst);
        TaskScope scope;
        TaskScope caller;
        int calls = 0;
        const CancelToken joined = scope.token(caller.token());
        const auto registration = joined.onCancel([&] { ++calls; });
        (callerGoesFirst ? caller : scope).cancel();
        QVERIFY(joined.isCancelled());
        (callerGoesFirst ? scope : caller).cancel();
        QCOMPARE(calls, 1);
    }

    void joiningWithACancelledCallerIsCancelledAtOnce()
    {
        TaskScope scope;
        TaskScope caller;
        const CancelToken ended = caller.token();
        caller.cancel();
        QVERIFY(scope.token(ended).isCancelled());
        QVERIFY(!scope.token().isCancelled());
    }

    void aJoinedTokenThatIsDroppedLeavesNothingBehind()
    {
        TaskScope scope;
        TaskScope caller;
        auto witness = std::make_shared<int>(0);
        {
            const CancelToken joined = scope.token(caller.token());
            const auto registration = joined.onCancel([witness] { ++*witness; });
            QCOMPARE(witness.use_count(), 2);
        }
        QCOMPARE(witness.use_count(), 1);
        caller.cancel();
        QCOMPARE(*witness, 0);
    }

    void aCompletionResumesInsideResolveAndOnlyOnce()
    {
        const Completion<int> completion;
        const auto seen = std::make_shared<QList<int>>();
        wait(completion, {}, seen);
        QVERIFY(seen->isEmpty());
        completion.resolve(7);
        completion.resolve(8);
        QCOMPARE(*seen, QList<int>{7});
    }

    void aCompletionResolvedEarlyDoesNotSuspend()
    {
        const Completion<int> completion;
        completion.resolve(7);
        const auto seen = std::make_shared<QList<int>>();
        wait(completion, {}, seen);
        QCOMPARE(*seen, QList<int>{7});
    }

    void aTaskSeesThatItsObjectIsGone()
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

    void aWorkerWorksElsewhereInOrderAndAnswersHere()
    {
        Worker worker;
        const auto* const here = QThread::currentThread();
        const auto seen = std::make_shared<QList<int>>();
        QList<Completion<int>> completions;
        for (int piece = 1; piece <= 20; ++piece) {
            completions.append(worker.run([piece, here] { return QThread::currentThread() == here ? -1 : piece; }));
            wait(completions.last(), {}, seen);
        }
        QVERIFY(seen->isEmpty());
        QTRY_COMPARE(seen->size(), 20);
        for (int piece = 1; piece <= 20; ++piece)
            QCOMPARE(seen->at(piece - 1), piece);
    }

    void aWorkerThatIsGoneHasDoneItsPiecesAndStillAnswers()
    {
        std::atomic<int> done = 0;
        const auto seen = std::make_shared<QList<int>>();
        {
            Worker worker;
            for (int piece = 0; piece < 5; ++piece)
                wait(worker.run([&done] { return ++done; }), {}, seen);
        }
        QCOMPARE(done.load(), 5);
        QTRY_COMPARE(seen->size(), 5);
    }
};

QTEST_GUILESS_MAIN(TasksTest)
#include "TasksTest.moc"
