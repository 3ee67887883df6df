#include "Rows.h"
#include "TapeDetailFixture.h"
#include "TestMain.h"

namespace quillmere {

/** The screen of a tape: texts and actions. */
class TapeDetailViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_fixture.reset(); }

    void allTextsOfTapeAreShown()
    {
        open(TapeDetailFixture::rich());
        const QStringList expected{
            u"City Council Regular Meeting"_s,
            u"CHAMBER DRAMA"_s,
            u"P.G."_s,
            u"49 MIN"_s,
            u"SP MODE"_s,
            u"◈ AGENDA ENCLOSED"_s,
            m_fixture->controller->tagline(),
            m_fixture->controller->synopsis(),
            u"Push it in"_s,
            u"Read the transcript"_s,
            u"BODY"_s,
            u"City Council"_s,
            u"RECORDED"_s,
            u"March 5, 2024"_s,
            u"MARKET"_s,
            u"Springfield"_s,
            u"LOCATION"_s,
            u"Town Hall"_s,
            u"TAPE SIZE"_s,
            u"1.0 GB · self-hosted"_s,
            u"TRANSCRIPT"_s,
            u"Searchable transcript on file (CC)"_s,
            u"BONUS MATERIALS"_s,
            u"Agenda · Minutes · Staff report +2 more"_s,
            u"Cat. RW 1130 · SP · PUBLIC GOVERNANCE — all citizens admitted"_s,
        };
        QCOMPARE(m_fixture->shown(), expected);
    }

    void badgesAreInOrder_data()
    {
        const QStringList plain{u"CHAMBER DRAMA"_s, u"P.G."_s, u"49 MIN"_s, u"SP MODE"_s};
        rows<Tape, QStringList>({"tape", "badges"}, {{"without an agenda", TapeDetailFixture::ordinary(), plain},
                                                     {"with an agenda", TapeDetailFixture::rich(),
                                                      plain + QStringList{u"◈ AGENDA ENCLOSED"_s}}});
    }

    void badgesAreInOrder()
    {
        QFETCH(const Tape, tape);
        open(tape);
        QTEST(m_fixture->badges(), "badges");
        qreal end = 0;
        for (const QQuickItem* badge : TestScreen::all(m_fixture->view, "TapeBadge")) {
            if (!badge->isVisible())
                continue;
            QVERIFY(m_fixture->areaOnPage(badge).left() > end);
            end = m_fixture->areaOnPage(badge).right();
        }
    }

    void buttonsMatchStateOfTape_data()
    {
        rows<bool, double, QStringList>(
            {"hasTranscript", "position", "buttons"},
            {{"neither", false, 0.0, QStringList{u"Push it in"_s}},
             {"with a transcript", true, 0.0, QStringList{u"Push it in"_s, u"Read the transcript"_s}},
             {"with a resume position", false, 3725.0, QStringList{u"Resume at 1:02:05"_s, u"Start over"_s}},
             {"both", true, 125.0, QStringList{u"Resume at 2:05"_s, u"Start over"_s, u"Read the transcript"_s}}});
    }

    void buttonsMatchStateOfTape()
    {
        QFETCH(const bool, hasTranscript);
        QFETCH(const double, position);
        Tape tape = TapeDetailFixture::ordinary();
        tape.hasTranscript = hasTranscript;
        open(tape, position);
        QTEST(m_fixture->buttons(), "buttons");
    }

    void factsAreInOrder_data()
    {
        const QString body = u"BODY=City Council"_s;
        const QString size = u"TAPE SIZE=1.0 GB · self-hosted"_s;
        const QString none = u"TRANSCRIPT=None harvested"_s;
        const QStringList all{body, u"RECORDED=March 5, 2024"_s, u"MARKET=Springfield"_s, u"LOCATION=Town Hall"_s, size,
                              none};
        Tape bare = TapeDetailFixture::ordinary();
        bare.meetingDate.reset();
        bare.market.name.clear();
        bare.location.clear();
        rows<Tape, QStringList>({"tape", "facts"}, {{"all but documents", TapeDetailFixture::ordinary(), all},
                                                    {"only required facts", bare, {body, size, none}}});
    }

    void factsAreInOrder()
    {
        QFETCH(const Tape, tape);
        open(tape);
        QTEST(m_fixture->facts(), "facts");
        qreal end = 0;
        for (const QQuickItem* row : TestScreen::all(m_fixture->view, "FactRow")) {
            QVERIFY(m_fixture->areaOnPage(row).top() >= end);
            end = m_fixture->areaOnPage(row).bottom();
        }
    }

    void textsOfHubAreNotParsedAsMarkup()
    {
        Tape tape = TapeDetailFixture::ordinary();
        tape.title = u"<b>Budget</b> &amp; <img src='https://elsewhere.example/x.png'>"_s;
        tape.location = u"<i>Hall</i>"_s;
        open(tape);
        QVERIFY(m_fixture->shown().contains(tape.title));
        QVERIFY(TestScreen::textsArePlain(m_fixture->view));
    }

    void fullRecordIsShownWhenItArrives()
    {
        open(TapeDetailFixture::ordinary());
        m_fixture->answer(R"({"id": 42, "title": "In full", "has_transcript": true, "location": "Harbour House"})");
        QTRY_VERIFY(m_fixture->shown().contains(u"In full"_s));
        QVERIFY(m_fixture->shown().contains(u"Harbour House"_s));
        QCOMPARE(m_fixture->buttons(), QStringList({u"Push it in"_s, u"Read the transcript"_s}));
        QCOMPARE(TestScreen::first(m_fixture->view, "VHSBoxFront")->property("cover").value<VHSCover>().title,
                 u"In full"_s);
        QCOMPARE(m_fixture->focusedName(), u"Push it in"_s);
    }

    void failedRequestShowsNoMessage()
    {
        open(TapeDetailFixture::rich());
        const QStringList before = m_fixture->shown();
        m_fixture->answer({}, 503);
        QTRY_COMPARE(m_fixture->request(), -1);
        m_fixture->waitUntilIdle();
        QCOMPARE(m_fixture->shown(), before);
    }

    void selectOpensPlayerAndBackReturnsToButton()
    {
        open(TapeDetailFixture::rich(), 125);
        m_fixture->press({Qt::Key_Right, Qt::Key_Select});
        QVERIFY(m_fixture->controller->isPlaying());
        QVERIFY(m_fixture->player() && m_fixture->player()->hasActiveFocus());
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Right, Qt::Key_Back}), u"Start over"_s);
        QVERIFY(!m_fixture->controller->isPlaying());
        QTRY_VERIFY(!m_fixture->player());
        QCOMPARE(m_fixture->focusedName(), u"Start over"_s);
        QCOMPARE(m_fixture->http.count(), 1 + m_fixture->request());
    }

    void playerGetsTapeAndStartPosition()
    {
        open(TapeDetailFixture::rich(), 125);
        m_fixture->press(Qt::Key_Select);
        QVERIFY(m_fixture->player());
        QCOMPARE(m_fixture->player()->property("tape").value<Tape>().streamURLPath, u"/media/42/index.m3u8"_s);
        QCOMPARE(m_fixture->player()->property("detail").value<TapeDetailController*>()->startAt(), 125.0);
    }

    void resumeButtonIsUpdatedWhenPlayerCloses()
    {
        open(TapeDetailFixture::rich());
        m_fixture->press(Qt::Key_Select);
        m_fixture->store->saveResume(42, 3600);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Back), u"Resume at 1:00:00"_s);
        QCOMPARE(m_fixture->buttons(),
                 QStringList({u"Resume at 1:00:00"_s, u"Start over"_s, u"Read the transcript"_s}));
        m_fixture->waitUntilIdle();
        m_fixture->press({Qt::Key_Right, Qt::Key_Select});
        m_fixture->store->removeResume(42);
        m_fixture->press(Qt::Key_Back);
        QCOMPARE(m_fixture->buttons(), QStringList({u"Push it in"_s, u"Read the transcript"_s}));
        // The button that was pressed no longer exists.
        QTRY_COMPARE(m_fixture->focusedName(), u"Push it in"_s);
    }

    void transcriptButtonOnlySetsFlagWithoutTranscriptScreen()
    {
        open(TapeDetailFixture::rich());
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Right, Qt::Key_Select}), u"Read the transcript"_s);
        QVERIFY(m_fixture->controller->isReadingTranscript());
        QVERIFY(!m_fixture->controller->isPlaying());
    }

    void requestIsCancelledWhenScreenDisappears()
    {
        open(TapeDetailFixture::rich());
        const int call = m_fixture->request();
        QVERIFY(call >= 0);
        Q_EMIT m_fixture->view->disappeared();
        QVERIFY(m_fixture->http.wasCancelled(call));
    }

private:
    void open(const Tape& tape, double resumePosition = 0)
    {
        m_fixture = std::make_unique<TapeDetailFixture>(tape, resumePosition);
    }

    std::unique_ptr<TapeDetailFixture> m_fixture;
};

QUILLMERE_TEST(TapeDetailViewTest, QGuiApplication)

} // namespace quillmere

#include "TapeDetailViewTest.moc"
