#include "StoreOnScript.h"

namespace {

const QString unreadable = u"The hub sent something this app couldn't read."_s;

/** One way in which a request fails, and the text that the viewer sees of it. */
struct Failing
{
    int status; ///< 0 for no answer at all
    QByteArray body;
    QString text;
};

void addFailings()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("text");
    QTest::newRow("a refusal") << 503 << QByteArray() << u"The hub answered 503."_s;
    QTest::newRow("no network") << 0 << QByteArray() << u"The network is down."_s;
    QTest::newRow("no JSON") << 200 << QByteArray("<html>") << unreadable;
    QTest::newRow("no object") << 200 << QByteArray("[]") << unreadable;
}

Failing failing()
{
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(QString, text);
    return {status, body, text};
}

void failAs(StoreOnScript& stage, const QString& path, const Failing& failing)
{
    if (failing.status == 0)
        stage.fail(path, failing.text);
    else
        stage.answer(path, failing.body, failing.status);
}

const QString statusPath = u"/api/tv/status"_s;
const QString tapesPath = u"/api/tv/tapes"_s;

} // namespace

class StoreRefreshTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewStoreKnowsNothing()
    {
        const StoreOnScript stage;
        QCOMPARE(stage->status(), TVStatus());
        QVERIFY(stage->tapes().isEmpty());
        QVERIFY(stage->shelves().isEmpty());
        QVERIFY(!stage->isLoading());
        QVERIFY(!stage->hasLoadedOnce());
        QVERIFY(!stage->lastError());
        QVERIFY(stage->market().isEmpty());
        QCOMPARE(&stage->resumeDefaults(), &stage.defaults);
        QCOMPARE(stage.http.count(), 0);
    }

    void ofMoreTapesThanWereAskedForTheFirstAreKept()
    {
        StoreOnScript stage;
        stage.loadOnce(QStringList(199, u"A"_s) + QStringList{u"Last"_s} + QStringList(100, u"B"_s));
        QCOMPARE(stage->tapes().size(), 200);
        QCOMPARE(stage->tapes().constLast().title, u"Last"_s);
        qsizetype covers = 0;
        for (const Shelf& shelf : stage->shelves())
            covers += shelf.covers.size();
        QCOMPARE(covers, 200);
    }

    void aRefreshAsksForTheStatusAndThenForTheTapes()
    {
        StoreOnScript stage;
        const auto task = stage->refresh();
        QCOMPARE(stage.http.count(), 1);
        QCOMPARE(stage.http.request(0).url, QUrl(u"https://hub.example/api/tv/status"_s));
        stage.answerStatus(7);
        QTRY_COMPARE(stage.http.count(), 2);
        QCOMPARE(stage.http.request(1).url, QUrl(u"https://hub.example/api/tv/tapes?page=1&per_page=200"_s));
        QCOMPARE(stage->status().rewindery.tapes, 7);
        QVERIFY(!stage->hasLoadedOnce());
        stage.answerTapes({u"Zoning"_s, u"Parade"_s});
        QTRY_VERIFY(stage->hasLoadedOnce());
        QCOMPARE(stage.titles(), (QStringList{u"Zoning"_s, u"Parade"_s}));
        QCOMPARE(stage->shelves().size(), 2);
        QCOMPARE(stage->shelves().first().tapesByID.size(), 2);
        QVERIFY(!stage->isLoading());
    }

    void aRefreshAnnouncesEveryChangeBeforeItHappens()
    {
        StoreOnScript stage;
        const Announcements announcements(*stage.store);
        stage.loadOnce({u"Zoning"_s, u"Parade"_s});
        QCOMPARE(announcements.heard,
                 (QStringList{u"will"_s, u"isLoading=true"_s, u"will"_s, u"status=7"_s, u"will"_s, u"lastError=-"_s,
                              u"will"_s, u"tapes=2"_s, u"will"_s, u"shelves=2"_s, u"will"_s, u"lastError=-"_s,
                              u"will"_s, u"hasLoadedOnce=true"_s, u"will"_s, u"isLoading=false"_s}));
        QVERIFY(announcements.wasAlwaysBefore);
    }

    void aStatusFailureIsClearedByTheTapesThatFollow_data() { addFailings(); }
    void aStatusFailureIsClearedByTheTapesThatFollow()
    {
        StoreOnScript stage;
        const auto task = stage->refresh();
        failAs(stage, statusPath, failing());
        QTRY_VERIFY(stage->hasError());
        QCOMPARE(stage->lastErrorText(), failing().text);
        QCOMPARE(stage->status(), TVStatus());
        stage.answerTapes({u"Zoning"_s});
        QTRY_VERIFY(!stage->isLoading());
        QVERIFY(!stage->lastError());
        QVERIFY(stage->hasLoadedOnce());
        QCOMPARE(stage->status(), TVStatus());
    }

    void aStatusFailureKeepsTheOlderStatus()
    {
        StoreOnScript stage;
        stage.loadOnce({});
        const auto task = stage->refresh();
        stage.answer(statusPath, {}, 500);
        stage.answerTapes({});
        QTRY_VERIFY(!stage->isLoading());
        QCOMPARE(stage->status().rewindery.tapes, 7);
    }

    void ofTwoFailuresTheViewerSeesTheTapes_data() { addFailings(); }
    void ofTwoFailuresTheViewerSeesTheTapes()
    {
        StoreOnScript stage;
        const auto task = stage->refresh();
        stage.answer(statusPath, {}, 404);
        failAs(stage, tapesPath, failing());
        QTRY_VERIFY(!stage->isLoading());
        QCOMPARE(stage->lastErrorText(), failing().text);
        QVERIFY(stage->tapes().isEmpty());
        QVERIFY(stage->shelves().isEmpty());
        QVERIFY(stage->hasLoadedOnce());
    }

    void aTapesFailureIsSilentWhileTapesAreOnHand_data() { addFailings(); }
    void aTapesFailureIsSilentWhileTapesAreOnHand()
    {
        StoreOnScript stage;
        stage.loadOnce({u"Zoning"_s});
        const auto shelves = stage->shelves();
        const auto task = stage->refresh();
        stage.answerStatus(8);
        failAs(stage, tapesPath, failing());
        QTRY_VERIFY(!stage->isLoading());
        QCOMPARE(stage.titles(), QStringList{u"Zoning"_s});
        QCOMPARE(stage->shelves(), shelves);
        QVERIFY(!stage->lastError());
        QCOMPARE(stage->status().rewindery.tapes, 8);
    }

    void aStatusFailureStaysWhenTheTapesFailSilently()
    {
        StoreOnScript stage;
        stage.loadOnce({u"Zoning"_s});
        const auto task = stage->refresh();
        stage.answer(statusPath, {}, 502);
        stage.answer(tapesPath, {}, 503);
        QTRY_VERIFY(!stage->isLoading());
        QCOMPARE(stage->lastErrorText(), u"The hub answered 502."_s);
    }

    void aFresherRecordOfTheSameTapeTakesItsPlace()
    {
        StoreOnScript stage;
        stage.loadOnce({u"Zoning, draft"_s});
        stage.loadOnce({u"Zoning, final"_s});
        QCOMPARE(stage.titles(), QStringList{u"Zoning, final"_s});
        QCOMPARE(stage->shelves().first().tapesByID.value(1).title, u"Zoning, final"_s);
    }

    void theFirstOfTwoRefreshesToEndSaysThatLoadingIsOver()
    {
        StoreOnScript stage;
        const auto first = stage->refresh();
        const auto second = stage->refresh();
        QCOMPARE(stage.http.count(), 2);
        stage.http.answer(1, 200, StoreOnScript::statusOf(2));
        stage.answerTapes({u"Second"_s});
        QTRY_VERIFY(!stage->isLoading());
        QVERIFY(stage->hasLoadedOnce());
        QVERIFY(stage.http.isWaiting(0));
        // The older refresh is answered late and, being independent, has the last word.
        stage.http.answer(0, 200, StoreOnScript::statusOf(1));
        stage.answerTapes({u"First"_s});
        QTRY_COMPARE(stage.titles(), QStringList{u"First"_s});
        QCOMPARE(stage->status().rewindery.tapes, 1);
        QTRY_VERIFY(first.isReady());
        QVERIFY(!stage->isLoading());
    }

    void tapesOfOverlappingRefreshesMayComeOutOfOrder()
    {
        StoreOnScript stage;
        const auto first = stage->refresh();
        stage.answerStatus();
        QTRY_COMPARE(stage.http.count(), 2);
        const auto second = stage->refresh();
        stage.answerStatus();
        QTRY_COMPARE(stage.http.count(), 4);
        stage.http.answer(3, 200, StoreOnScript::pageOf({u"Second"_s}));
        QTRY_COMPARE(stage.titles(), QStringList{u"Second"_s});
        stage.http.fail(1, u"cut"_s);
        stage.settle();
        QVERIFY(first.isReady() && second.isReady());
        QCOMPARE(stage.titles(), QStringList{u"Second"_s});
        QVERIFY(!stage->lastError());
    }

    void aStoreMayGoWhileItsRefreshWaits_data()
    {
        QTest::addColumn<bool>("isStatusAnswered");
        QTest::addColumn<bool>("isLastAnswered");
        QTest::newRow("waiting for the status") << false << false;
        QTest::newRow("decoding the status") << false << true;
        QTest::newRow("waiting for the tapes") << true << false;
        QTest::newRow("decoding the tapes") << true << true;
    }

    void aStoreMayGoWhileItsRefreshWaits()
    {
        QFETCH(bool, isStatusAnswered);
        QFETCH(bool, isLastAnswered);
        StoreOnScript stage;
        const auto task = stage->refresh();
        if (isStatusAnswered) {
            stage.answerStatus();
            QTRY_COMPARE(stage.http.count(), 2);
        }
        const int last = stage.http.count() - 1;
        if (isLastAnswered)
            stage.http.answer(last, 200,
                              isStatusAnswered ? StoreOnScript::pageOf({u"Zoning"_s}) : StoreOnScript::statusOf(1));
        const Announcements announcements(*stage.store);
        stage.store.reset();
        QCOMPARE(stage.http.wasCancelled(last), !isLastAnswered);
        stage.settle();
        QVERIFY(task.isReady());
        QVERIFY(announcements.heard.isEmpty());
        QCOMPARE(stage.http.count(), last + 2);
    }
};

QTEST_GUILESS_MAIN(StoreRefreshTest)
#include "StoreRefreshTest.moc"
