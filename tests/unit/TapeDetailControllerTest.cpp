#include "Rows.h"
#include "TapeDetailControllerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

/** Tests how the tape's screen loads and shows the full record, and its texts. */
class TapeDetailControllerTest : public TapeDetailControllerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void givenTapeIsShownUntilHubAnswers()
    {
        QCOMPARE(m_shop->http.count(), 0);
        m_screen->appear();
        QCOMPARE(m_shop->http.count(), 1);
        QCOMPARE(m_shop->http.request(0).url, QUrl(u"https://hub.example"_s + m_path));
        QVERIFY(!m_screen->detail());
        QCOMPARE(m_screen->shownTape().title, u"Harbour Council"_s);
        QCOMPARE(m_screen->cover().title, u"Harbour Council"_s);
        QCOMPARE(m_screen->agendaBadge(), QString());
        QVERIFY(!m_screen->isPlaying());
        QVERIFY(!m_screen->isReadingTranscript());
        QCOMPARE(m_screen->startAt(), 0.0);
    }

    void fullRecordReplacesTapeUntilScreenIsOpenedAgain()
    {
        QSignalSpy changed(m_screen.get(), &TapeDetailController::shownTapeChanged);
        appearWithRecord();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(m_screen->shownTape().title, u"Harbour Council, in full"_s);
        QCOMPARE(m_screen->title(), u"Harbour Council, in full"_s);
        QCOMPARE(m_screen->cover().title, u"Harbour Council, in full"_s);
        QVERIFY(m_screen->hasTranscript());
        QVERIFY(values().contains(u"Town Hall"_s));
        QVERIFY(values().contains(u"Agenda"_s));
        QCOMPARE(m_screen->tape().title, u"Harbour Council"_s);
        open();
        QVERIFY(!m_screen->detail());
        m_screen->appear();
        QCOMPARE(m_shop->http.count(), 2);
    }

    void newRecordWithSameIdIsShown()
    {
        QSignalSpy changed(m_screen.get(), &TapeDetailController::shownTapeChanged);
        Tape renamed = ordinary();
        renamed.title = u"Renamed"_s;
        QCOMPARE(renamed, ordinary());
        m_screen->setProperty("tape", QVariant::fromValue(renamed));
        QCOMPARE(m_screen->title(), u"Renamed"_s);
        QCOMPARE(changed.count(), 1);
    }

    void fullRecordIsNotMergedWithTape()
    {
        Tape rich = ordinary();
        rich.hasTranscript = true;
        rich.location = u"Town Hall"_s;
        open(rich);
        appearWithRecord(R"({"id": 9007199254740993})");
        QVERIFY(!m_screen->hasTranscript());
        QVERIFY(!values().contains(u"Town Hall"_s));
        QCOMPARE(m_screen->title(), u"Untitled Recording"_s);
    }

    void failureIsSilent_data()
    {
        rows<int, QByteArray>({"status", "body"},
                              {{"error status", 503, {}},
                               {"not found", 404, "{}"},
                               {"no JSON", 200, "<html>"},
                               {"no record", 200, "[]"},
                               {"another tape's record", 200, R"({"id": 9007199254740992, "title": "Budget"})"},
                               {"a record without an id", 200, R"({"title": "Budget"})"},
                               {"no answer", 0, {}}});
    }

    void failureIsSilent()
    {
        QFETCH(const int, status);
        QFETCH(const QByteArray, body);
        QSignalSpy changed(m_screen.get(), &TapeDetailController::shownTapeChanged);
        m_screen->appear();
        if (status == 0)
            m_shop->fail(m_path, u"The network is down."_s);
        else
            m_shop->answer(m_path, body, status);
        m_shop->waitForDecoding();
        QVERIFY(!m_screen->detail());
        QCOMPARE(changed.count(), 0);
        QCOMPARE(m_screen->title(), u"Harbour Council"_s);
        QVERIFY(!(*m_shop)->lastError());
        // Nothing is retried: the second request is the one that waitForDecoding() sends.
        QCOMPARE(m_shop->http.count(), 2);
    }

    void answerAfterDisappearingIsIgnored_data()
    {
        rows<bool>({"isDecoding"}, {{"waiting for the answer", false}, {"being decoded", true}});
    }

    void answerAfterDisappearingIsIgnored()
    {
        QFETCH(const bool, isDecoding);
        m_screen->appear();
        if (isDecoding)
            m_shop->answer(m_path, fullRecord());
        m_screen->disappear();
        QCOMPARE(m_shop->http.wasCancelled(0), !isDecoding);
        m_shop->waitForDecoding();
        QVERIFY(!m_screen->detail());
        QCOMPARE(m_screen->title(), u"Harbour Council"_s);
    }

    void screenMayBeDestroyedWhileFetching()
    {
        m_screen->appear();
        m_shop->answer(m_path, fullRecord());
        m_screen.reset();
        m_shop->waitForDecoding();
        open();
        m_screen->appear();
        m_screen.reset();
        QVERIFY(m_shop->http.wasCancelled(m_shop->http.count() - 1));
    }

    void appearingAgainFetchesAgainAndKeepsRecord()
    {
        appearWithRecord();
        m_screen->disappear();
        m_screen->appear();
        QCOMPARE(m_shop->http.count(), 2);
        QCOMPARE(m_screen->title(), u"Harbour Council, in full"_s);
        m_shop->answer(m_path, {}, 503);
        m_shop->waitForDecoding();
        QCOMPARE(m_screen->title(), u"Harbour Council, in full"_s);
    }

    void coveringScreenFetchesNothing()
    {
        m_screen->appear();
        m_screen->play();
        m_screen->setPlaying(false);
        m_screen->readTranscript();
        m_screen->setReadingTranscript(false);
        QCOMPARE(m_shop->http.count(), 1);
        QVERIFY(m_shop->http.isWaiting(0));
    }

    void transcriptIsOfferedOnlyIfTapeHasOne()
    {
        QVERIFY(!m_screen->hasTranscript());
        Tape tape = ordinary();
        tape.hasTranscript = true;
        open(tape);
        QVERIFY(m_screen->hasTranscript());
        m_screen->readTranscript();
        QVERIFY(m_screen->isReadingTranscript());
        QVERIFY(!m_screen->isPlaying());
    }

    void textsAreThoseOfShownTape()
    {
        Tape tape;
        tape.id = 42;
        tape.title = u"City Council Regular Meeting"_s;
        tape.meetingDate = u"2024-03-05"_s;
        tape.body = TapeBody{u"city-council"_s, u"City Council"_s, u"council"_s};
        tape.hasAgenda = true;
        open(tape);
        QCOMPARE(m_screen->title(), u"City Council Regular Meeting"_s);
        QCOMPARE(m_screen->genreBadge(), u"CHAMBER DRAMA"_s);
        QCOMPARE(m_screen->ratingBadge(), u"P.G."_s);
        QCOMPARE(m_screen->runtimeBadge(), u"49 MIN"_s);
        QCOMPARE(m_screen->speedBadge(), u"SP MODE"_s);
        QCOMPARE(m_screen->agendaBadge(), u"◈ AGENDA ENCLOSED"_s);
        QCOMPARE(m_screen->tagline(), u"“%1”"_s.arg(m_screen->cover().tagline));
        QVERIFY(m_screen->synopsis().startsWith(u"When City Council convenes on March 5, 2024, First Mate Coral"_s));
        QCOMPARE(m_screen->catalogueLine(), u"Cat. RW 1130 · SP · PUBLIC GOVERNANCE — all citizens admitted"_s);
    }

    void factsAreRowsOfLabelAndValue()
    {
        FactList* const facts = m_screen->facts();
        QCOMPARE(facts->roleNames().value(FactList::LabelRole), "label");
        QCOMPARE(facts->roleNames().value(FactList::ValueRole), "value");
        QCOMPARE(facts->data(facts->index(0), FactList::LabelRole), u"BODY"_s);
        QVERIFY(!facts->data(facts->index(99), FactList::ValueRole).isValid());
        QCOMPARE(values(), QStringList({u"Harbour Council"_s, u"0 MB · self-hosted"_s, u"None harvested"_s}));
    }

    void storeChangesDoNotChangeScreen()
    {
        m_screen->appear();
        m_shop->loadOnce({u"Another"_s});
        (*m_shop)->setShelves({});
        QCOMPARE(m_screen->title(), u"Harbour Council"_s);
    }
};

QUILLMERE_TEST(TapeDetailControllerTest, QCoreApplication)

} // namespace quillmere

#include "TapeDetailControllerTest.moc"
