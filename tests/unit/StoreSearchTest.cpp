#include "StoreOnScript.h"

#include <QCoroTask>

#include "TaskScope.h"

namespace {

/** What a search came to; absent while it runs. */
using Found = std::shared_ptr<std::optional<QStringList>>;

QCoro::Task<> find(Store& store, QString query, CancelToken token, Found found)
{
    const QList<Tape> tapes = co_await store.search(std::move(query), std::move(token));
    QStringList titles;
    for (const Tape& tape : tapes)
        titles.append(tape.title);
    *found = titles;
}

Found search(const StoreOnScript& stage, const QString& query, const CancelToken& token = {})
{
    auto found = std::make_shared<std::optional<QStringList>>();
    find(*stage.store, query, token, found);
    return found;
}

} // namespace

class StoreSearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSearchAsksWithinTheMarketAndChangesNothing()
    {
        StoreOnScript stage;
        stage->setMarket(u"springfield"_s);
        const Announcements announcements(*stage.store);
        const Found found = search(stage, u" zoning "_s);
        stage.answerTapes({u"Zoning A"_s, u"Zoning B"_s},
                          u"/api/tv/tapes?page=1&per_page=200&market=springfield&q=%20zoning%20"_s);
        QTRY_VERIFY(*found);
        QCOMPARE(**found, (QStringList{u"Zoning A"_s, u"Zoning B"_s}));
        QVERIFY(announcements.heard.isEmpty());
    }

    void moreTapesThanWereAskedForAreFoundToo_data()
    {
        QTest::addColumn<int>("answered");
        QTest::addColumn<int>("expected");
        QTest::newRow("as many as were asked for") << 200 << 200;
        QTest::newRow("one more") << 201 << 201;
        QTest::newRow("the most") << 10'000 << 10'000;
        QTest::newRow("more than any hub has") << 10'001 << 10'000;
    }
    void moreTapesThanWereAskedForAreFoundToo()
    {
        QFETCH(int, answered);
        StoreOnScript stage;
        const Found found = search(stage, u"zoning"_s);
        stage.answerTapes(QStringList(answered, u"Zoning"_s));
        QTRY_VERIFY(*found);
        QTEST(int((*found)->size()), "expected");
    }

    void aSearchThatFailsFindsNothingAndIsForgotten()
    {
        StoreOnScript stage;
        stage->setLastError(u"Before."_s);
        const Found unreachable = search(stage, u"zoning"_s);
        stage.fail(u"/api/tv/tapes"_s, u"unreachable"_s);
        const Found refused = search(stage, u"zoning"_s);
        stage.answer(u"/api/tv/tapes"_s, {}, 500);
        const Found unreadable = search(stage, u"zoning"_s);
        stage.answer(u"/api/tv/tapes"_s, "[]");
        QTRY_VERIFY(*unreachable && *refused && *unreadable);
        QVERIFY((*unreachable)->isEmpty() && (*refused)->isEmpty() && (*unreadable)->isEmpty());
        QCOMPARE(stage->lastErrorText(), u"Before."_s);
    }

    void searchesAnsweredOutOfOrderEachGetTheirOwn()
    {
        StoreOnScript stage;
        const Found zo = search(stage, u"zo"_s);
        const Found zoning = search(stage, u"zoning"_s);
        stage.answerTapes({u"Zoning"_s}, u"/api/tv/tapes?page=1&per_page=200&q=zoning"_s);
        stage.answerTapes({u"Zoo"_s}, u"/api/tv/tapes?page=1&per_page=200&q=zo"_s);
        QTRY_VERIFY(*zo && *zoning);
        QCOMPARE(**zo, QStringList{u"Zoo"_s});
        QCOMPARE(**zoning, QStringList{u"Zoning"_s});
    }

    void aCancelledSearchFindsNothing()
    {
        StoreOnScript stage;
        TaskScope screen;
        const Found waiting = search(stage, u"zoning"_s, screen.token());
        const Found decoding = search(stage, u"parade"_s, screen.token());
        stage.answerTapes({u"Parade"_s}, u"/api/tv/tapes?page=1&per_page=200&q=parade"_s);
        screen.cancel();
        QVERIFY(stage.http.wasCancelled(0));
        stage.settle();
        QVERIFY(*waiting && *decoding);
        QVERIFY((*waiting)->isEmpty() && (*decoding)->isEmpty());
    }

    void aStoreMayGoWhileASearchWaits()
    {
        StoreOnScript stage;
        const TaskScope screen;
        const Found waiting = search(stage, u"zoning"_s, screen.token());
        const Found decoding = search(stage, u"parade"_s);
        stage.answerTapes({u"Parade"_s}, u"/api/tv/tapes?page=1&per_page=200&q=parade"_s);
        stage.store.reset();
        stage.settle();
        QVERIFY(*waiting && *decoding);
        QVERIFY((*waiting)->isEmpty() && (*decoding)->isEmpty());
    }
};

QTEST_GUILESS_MAIN(StoreSearchTest)
#include "StoreSearchTest.moc"
