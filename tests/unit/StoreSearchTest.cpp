#include "Announcements.h"
#include "PendingResult.h"
#include "Rows.h"
#include "StoreFixture.h"
#include "TaskScope.h"
#include "TestMain.h"

namespace quillmere {

namespace {

QStringList titles(const QList<Tape>& tapes)
{
    QStringList all;
    for (const Tape& tape : tapes)
        all.append(tape.title);
    return all;
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
        const auto found = pendingResult(fixture->search(u" zoning "_s));
        fixture.answerTapes({u"Zoning A"_s, u"Zoning B"_s},
                            u"/api/tv/tapes?page=1&per_page=200&market=springfield&q=%20zoning%20"_s);
        QTRY_VERIFY(*found);
        QCOMPARE(titles(**found), (QStringList{u"Zoning A"_s, u"Zoning B"_s}));
        QVERIFY(announcements.received.isEmpty());
    }

    void moreTapesThanRequestedAreReturned_data()
    {
        rows<qsizetype, qsizetype>({"answered", "expected"}, {{"as many as requested", 200, 200},
                                                              {"one more", 201, 201},
                                                              {"the limit", 10'000, 10'000},
                                                              {"above the limit", 10'001, 10'000}});
    }

    void moreTapesThanRequestedAreReturned()
    {
        QFETCH(qsizetype, answered);
        StoreFixture fixture;
        const auto found = pendingResult(fixture->search(u"zoning"_s));
        fixture.answerTapes(QStringList(answered, u"Zoning"_s));
        QTRY_VERIFY(*found);
        QTEST((*found)->size(), "expected");
    }

    void failedSearchFindsNothingAndReportsNoError()
    {
        StoreFixture fixture;
        fixture->setLastError(u"Before."_s);
        const auto unreachable = pendingResult(fixture->search(u"zoning"_s));
        fixture.fail(u"/api/tv/tapes"_s, u"unreachable"_s);
        const auto refused = pendingResult(fixture->search(u"zoning"_s));
        fixture.answer(u"/api/tv/tapes"_s, {}, 500);
        const auto unreadable = pendingResult(fixture->search(u"zoning"_s));
        fixture.answer(u"/api/tv/tapes"_s, "[]");
        QTRY_VERIFY(*unreachable && *refused && *unreadable);
        QVERIFY((*unreachable)->isEmpty() && (*refused)->isEmpty() && (*unreadable)->isEmpty());
        QCOMPARE(fixture->lastErrorText(), u"Before."_s);
    }

    void searchesAnsweredOutOfOrderGetTheirResults()
    {
        StoreFixture fixture;
        const auto zo = pendingResult(fixture->search(u"zo"_s));
        const auto zoning = pendingResult(fixture->search(u"zoning"_s));
        fixture.answerTapes({u"Zoning"_s}, u"/api/tv/tapes?page=1&per_page=200&q=zoning"_s);
        fixture.answerTapes({u"Zoo"_s}, u"/api/tv/tapes?page=1&per_page=200&q=zo"_s);
        QTRY_VERIFY(*zo && *zoning);
        QCOMPARE(titles(**zo), QStringList{u"Zoo"_s});
        QCOMPARE(titles(**zoning), QStringList{u"Zoning"_s});
    }

    void cancelledSearchFindsNothing()
    {
        StoreFixture fixture;
        TaskScope screen;
        const auto waiting = pendingResult(fixture->search(u"zoning"_s, screen.token()));
        const auto decoding = pendingResult(fixture->search(u"parade"_s, screen.token()));
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
        const auto waiting = pendingResult(fixture->search(u"zoning"_s, screen.token()));
        const auto decoding = pendingResult(fixture->search(u"parade"_s));
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
