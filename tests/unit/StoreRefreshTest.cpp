#include "Announcements.h"
#include "Rows.h"
#include "StoreFixture.h"
#include "TestMain.h"

namespace quillmere {

namespace {

const QString unreadable = u"The hub sent something this app couldn't read."_s;

/** The rows of a test whose request fails: the answer's status (0 for none) and body, and the text for the viewer. */
void addFailures()
{
    rows<int, QByteArray, QString>({"status", "body", "text"}, {{"error status", 503, "", u"The hub answered 503."_s},
                                                                {"no network", 0, "", u"The network is down."_s},
                                                                {"no JSON", 200, "<html>", unreadable},
                                                                {"no JSON object", 200, "[]", unreadable}});
}

/** Waits for a request for `path` and lets it fail as the current row says. */
void failAsInRow(StoreFixture& fixture, const QString& path)
{
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(QString, text);
    if (status == 0)
        fixture.fail(path, text);
    else
        fixture.answer(path, body, status);
}

const QString statusPath = u"/api/tv/status"_s;
const QString tapesPath = u"/api/tv/tapes"_s;

} // namespace

class StoreRefreshTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newStoreIsEmpty()
    {
        const StoreFixture fixture;
        QCOMPARE(fixture->status(), TVStatus());
        QVERIFY(fixture->tapes().isEmpty());
        QVERIFY(fixture->shelves().isEmpty());
        QVERIFY(!fixture->isLoading());
        QVERIFY(!fixture->hasLoadedOnce());
        QVERIFY(!fixture->lastError());
        QVERIFY(fixture->market().isEmpty());
        QCOMPARE(&fixture->resumeDefaults(), &fixture.defaults);
        QCOMPARE(fixture.http.count(), 0);
    }

    void onlyRequestedNumberOfTapesIsKept()
    {
        StoreFixture fixture;
        fixture.loadOnce(QStringList(199, u"A"_s) + QStringList{u"Last"_s} + QStringList(100, u"B"_s));
        QCOMPARE(fixture->tapes().size(), 200);
        QCOMPARE(fixture->tapes().constLast().title, u"Last"_s);
        qsizetype covers = 0;
        for (const Shelf& shelf : fixture->shelves())
            covers += shelf.covers.size();
        QCOMPARE(covers, 200);
    }

    void refreshLoadsStatusThenTapes()
    {
        StoreFixture fixture;
        const auto task = fixture->refresh();
        QCOMPARE(fixture.http.count(), 1);
        QCOMPARE(fixture.http.request(0).url, QUrl(u"https://hub.example/api/tv/status"_s));
        fixture.answerStatus(7);
        QTRY_COMPARE(fixture.http.count(), 2);
        QCOMPARE(fixture.http.request(1).url, QUrl(u"https://hub.example/api/tv/tapes?page=1&per_page=200"_s));
        QCOMPARE(fixture->status().rewindery.tapes, 7);
        QVERIFY(!fixture->hasLoadedOnce());
        fixture.answerTapes({u"Zoning"_s, u"Parade"_s});
        QTRY_VERIFY(fixture->hasLoadedOnce());
        QCOMPARE(fixture.titles(), (QStringList{u"Zoning"_s, u"Parade"_s}));
        QCOMPARE(fixture->shelves().size(), 2);
        QCOMPARE(fixture->shelves().first().tapesByID.size(), 2);
        QVERIFY(!fixture->isLoading());
    }

    void refreshAnnouncesEachChangeBeforeIt()
    {
        StoreFixture fixture;
        const Announcements announcements(*fixture.store);
        fixture.loadOnce({u"Zoning"_s, u"Parade"_s});
        QCOMPARE(announcements.received,
                 (QStringList{u"isLoading=true"_s, u"status=7"_s, u"lastError=-"_s, u"tapes=2"_s, u"shelves=2"_s,
                              u"lastError=-"_s, u"hasLoadedOnce=true"_s, u"isLoading=false"_s}));
    }

    void statusFailureIsClearedByTapes_data() { addFailures(); }
    void statusFailureIsClearedByTapes()
    {
        StoreFixture fixture;
        const auto task = fixture->refresh();
        failAsInRow(fixture, statusPath);
        QTRY_VERIFY(fixture->hasError());
        QTEST(fixture->lastErrorText(), "text");
        QCOMPARE(fixture->status(), TVStatus());
        fixture.answerTapes({u"Zoning"_s});
        QTRY_VERIFY(!fixture->isLoading());
        QVERIFY(!fixture->lastError());
        QVERIFY(fixture->hasLoadedOnce());
        QCOMPARE(fixture->status(), TVStatus());
    }

    void statusFailureKeepsOldStatus()
    {
        StoreFixture fixture;
        fixture.loadOnce({});
        const auto task = fixture->refresh();
        fixture.answer(statusPath, {}, 500);
        fixture.answerTapes({});
        QTRY_VERIFY(!fixture->isLoading());
        QCOMPARE(fixture->status().rewindery.tapes, 7);
    }

    void tapesFailureReplacesStatusFailure_data() { addFailures(); }
    void tapesFailureReplacesStatusFailure()
    {
        StoreFixture fixture;
        const auto task = fixture->refresh();
        fixture.answer(statusPath, {}, 404);
        failAsInRow(fixture, tapesPath);
        QTRY_VERIFY(!fixture->isLoading());
        QTEST(fixture->lastErrorText(), "text");
        QVERIFY(fixture->tapes().isEmpty());
        QVERIFY(fixture->shelves().isEmpty());
        QVERIFY(fixture->hasLoadedOnce());
    }

    void tapesFailureIsSilentIfTapesWereLoaded_data() { addFailures(); }
    void tapesFailureIsSilentIfTapesWereLoaded()
    {
        StoreFixture fixture;
        fixture.loadOnce({u"Zoning"_s});
        const auto shelves = fixture->shelves();
        const auto task = fixture->refresh();
        fixture.answerStatus(8);
        failAsInRow(fixture, tapesPath);
        QTRY_VERIFY(!fixture->isLoading());
        QCOMPARE(fixture.titles(), QStringList{u"Zoning"_s});
        QCOMPARE(fixture->shelves(), shelves);
        QVERIFY(!fixture->lastError());
        QCOMPARE(fixture->status().rewindery.tapes, 8);
    }

    void statusFailureIsKeptIfTapesFailSilently()
    {
        StoreFixture fixture;
        fixture.loadOnce({u"Zoning"_s});
        const auto task = fixture->refresh();
        fixture.answer(statusPath, {}, 502);
        fixture.answer(tapesPath, {}, 503);
        QTRY_VERIFY(!fixture->isLoading());
        QCOMPARE(fixture->lastErrorText(), u"The hub answered 502."_s);
    }

    void newerRecordOfSameTapeReplacesOlder()
    {
        StoreFixture fixture;
        fixture.loadOnce({u"Zoning, draft"_s});
        fixture.loadOnce({u"Zoning, final"_s});
        QCOMPARE(fixture.titles(), QStringList{u"Zoning, final"_s});
        QCOMPARE(fixture->shelves().first().tapesByID.value(1).title, u"Zoning, final"_s);
    }

    void firstFinishedRefreshEndsLoading()
    {
        StoreFixture fixture;
        const auto first = fixture->refresh();
        const auto second = fixture->refresh();
        QCOMPARE(fixture.http.count(), 2);
        fixture.http.answer(1, 200, StoreFixture::statusOf(2));
        fixture.answerTapes({u"Second"_s});
        QTRY_VERIFY(!fixture->isLoading());
        QVERIFY(fixture->hasLoadedOnce());
        QVERIFY(fixture.http.isWaiting(0));
        // The older refresh is independent of the newer one: its late answer replaces the newer data.
        fixture.http.answer(0, 200, StoreFixture::statusOf(1));
        fixture.answerTapes({u"First"_s});
        QTRY_COMPARE(fixture.titles(), QStringList{u"First"_s});
        QCOMPARE(fixture->status().rewindery.tapes, 1);
        QTRY_VERIFY(first.isReady());
        QVERIFY(!fixture->isLoading());
    }

    void tapesOfOverlappingRefreshesMayArriveOutOfOrder()
    {
        StoreFixture fixture;
        const auto first = fixture->refresh();
        fixture.answerStatus();
        QTRY_COMPARE(fixture.http.count(), 2);
        const auto second = fixture->refresh();
        fixture.answerStatus();
        QTRY_COMPARE(fixture.http.count(), 4);
        fixture.http.answer(3, 200, StoreFixture::pageOf({u"Second"_s}));
        QTRY_COMPARE(fixture.titles(), QStringList{u"Second"_s});
        fixture.http.fail(1, u"cut"_s);
        fixture.waitForDecoding();
        QVERIFY(first.isReady() && second.isReady());
        QCOMPARE(fixture.titles(), QStringList{u"Second"_s});
        QVERIFY(!fixture->lastError());
    }

    void storeMayBeDestroyedDuringRefresh_data()
    {
        rows<bool, bool>({"isStatusAnswered", "isLastAnswered"}, {{"waiting for the status", false, false},
                                                                  {"decoding the status", false, true},
                                                                  {"waiting for the tapes", true, false},
                                                                  {"decoding the tapes", true, true}});
    }

    void storeMayBeDestroyedDuringRefresh()
    {
        QFETCH(bool, isStatusAnswered);
        QFETCH(bool, isLastAnswered);
        StoreFixture fixture;
        const auto task = fixture->refresh();
        if (isStatusAnswered) {
            fixture.answerStatus();
            QTRY_COMPARE(fixture.http.count(), 2);
        }
        const int last = fixture.http.count() - 1;
        if (isLastAnswered)
            fixture.http.answer(last, 200,
                                isStatusAnswered ? StoreFixture::pageOf({u"Zoning"_s}) : StoreFixture::statusOf(1));
        const Announcements announcements(*fixture.store);
        fixture.store.reset();
        QCOMPARE(fixture.http.wasCancelled(last), !isLastAnswered);
        fixture.waitForDecoding();
        QVERIFY(task.isReady());
        QVERIFY(announcements.received.isEmpty());
        QCOMPARE(fixture.http.count(), last + 2);
    }
};

QUILLMERE_TEST(StoreRefreshTest, QCoreApplication)

} // namespace quillmere

#include "StoreRefreshTest.moc"
