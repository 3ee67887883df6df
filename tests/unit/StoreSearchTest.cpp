#include "Announcements.h"
#include "StoreFixture.h"

#include <QCoroTask>

#include "TaskScope.h"
#include "TestMain.h"

namespace quillmere {

namespace {

/** The titles found by a search; empty optional while it runs. */
using Found = std::shared_ptr<std::optional<QStringList>>;

QCoro::Task<> find(Store& store, QString query, std::stop_token token, Found found)
{
    const QList<Tape> tapes = co_await store.search(std::move(query), std::move(token));
    QStringList titles;
    for (const Tape& tape : tapes)
        titles.append(tape.title);
    *found = titles;
}

Found search(const StoreFixture& fixture, const QString& query, const std::stop_token& token = {})
{
    auto found = std::make_shared<std::optional<QStringList>>();
    find(*fixture.store, query, token, found);
    return found;
}

} // namespace

class StoreSearchTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void searchUsesMarketAndChangesNothing()
    {
        StoreFixture fixture;
        fixture->setMarket(u"springfield"_s);
        const Announcements announcements(*fixture.store);
        const Found found = search(fixture, u" zoning "_s);
        fixture.answerTapes({u"Zoning A"_s, u"Zoning B"_s},
                            u"/api/tv/tapes?page=1&per_page=200&market=springfield&q=%20zoning%20"_s);
        QTRY_VERIFY(*found);
        QCOMPARE(**found, (QStringList{u"Zoning A"_s, u"Zoning B"_s}));
        QVERIFY(announcements.received.isEmpty());
    }

    void moreTapesThanRequestedAreReturned_data()
    {
        QTest::addColumn<int>("answered");
        QTest::addColumn<int>("expected");
        QTest::newRow("as many as requested") << 200 << 200;
        QTest::newRow("one more") << 201 << 201;
        QTest::newRow("the limit") << 10'000 << 10'000;
        QTest::newRow("above the limit") << 10'001 << 10'000;
    }
    void moreTapesThanRequestedAreReturned()
    {
        QFETCH(int, answered);
        StoreFixture fixture;
        const Found found = search(fixture, u"zoning"_s);
        fixture.answerTapes(QStringList(answered, u"Zoning"_s));
        QTRY_VERIFY(*found);
        QTEST(int((*found)->size()), "expected");
    }

    void failedSearchFindsNothingAndReportsNoError()
    {
        StoreFixture fixture;
        fixture->setLastError(u"Before."_s);
        const Found unreachable = search(fixture, u"zoning"_s);
        fixture.fail(u"/api/tv/tapes"_s, u"unreachable"_s);
        const Found refused = search(fixture, u"zoning"_s);
        fixture.answer(u"/api/tv/tapes"_s, {}, 500);
        const Found unreadable = search(fixture, u"zoning"_s);
        fixture.answer(u"/api/tv/tapes"_s, "[]");
        QTRY_VERIFY(*unreachable && *refused && *unreadable);
        QVERIFY((*unreachable)->isEmpty() && (*refused)->isEmpty() && (*unreadable)->isEmpty());
        QCOMPARE(fixture->lastErrorText(), u"Before."_s);
    }

    void searchesAnsweredOutOfOrderGetTheirResults()
    {
        StoreFixture fixture;
        const Found zo = search(fixture, u"zo"_s);
        const Found zoning = search(fixture, u"zoning"_s);
        fixture.answerTapes({u"Zoning"_s}, u"/api/tv/tapes?page=1&per_page=200&q=zoning"_s);
        fixture.answerTapes({u"Zoo"_s}, u"/api/tv/tapes?page=1&per_page=200&q=zo"_s);
        QTRY_VERIFY(*zo && *zoning);
        QCOMPARE(**zo, QStringList{u"Zoo"_s});
        QCOMPARE(**zoning, QStringList{u"Zoning"_s});
    }

    void cancelledSearchFindsNothing()
    {
        StoreFixture fixture;
        TaskScope screen;
        const Found waiting = search(fixture, u"zoning"_s, screen.token());
        const Found decoding = search(fixture, u"parade"_s, screen.token());
        fixture.answerTapes({u"Parade"_s}, u"/api/tv/tapes?page=1&per_page=200&q=parade"_s);
        screen.cancel();
        QVERIFY(fixture.http.wasCancelled(0));
        fixture.waitForDecoding();
        QVERIFY(*waiting && *decoding);
        QVERIFY((*waiting)->isEmpty() && (*decoding)->isEmpty());
    }

    void storeMayBeDestroyedDuringSearch()
    {
        StoreFixture fixture;
        const TaskScope screen;
        const Found waiting = search(fixture, u"zoning"_s, screen.token());
        const Found decoding = search(fixture, u"parade"_s);
        fixture.answerTapes({u"Parade"_s}, u"/api/tv/tapes?page=1&per_page=200&q=parade"_s);
        fixture.store.reset();
        fixture.waitForDecoding();
        QVERIFY(*waiting && *decoding);
        QVERIFY((*waiting)->isEmpty() && (*decoding)->isEmpty());
    }
};

QUILLMERE_TEST(StoreSearchTest, QCoreApplication)

} // namespace quillmere

#include "StoreSearchTest.moc"
