#include "TapeDetailFixture.h"
#include "TestMain.h"

namespace quillmere {

/** The screen of a tape: texts and actions. */
class TapeDetailViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_fixture.reset(); }
    void allTextsOfTapeAreShown();
    void badgesAreInOrder_data();
    void badgesAreInOrder();
    void buttonsMatchStateOfTape_data();
    void buttonsMatchStateOfTape();
    void factsAreInOrder_data();
    void factsAreInOrder();
    void textsOfHubAreNotParsedAsMarkup();
    void fullRecordIsShownWhenItArrives();
    void failedRequestShowsNoMessage();
    void selectOpensPlayerAndBackReturnsToButton();
    void playerGetsTapeAndStartPosition();
    void resumeButtonIsUpdatedWhenPlayerCloses();
    void transcriptButtonOnlySetsFlagWithoutTranscriptScreen();
    void requestIsCancelledWhenScreenDisappears();

private:
    void open(const Tape& tape, double resumePosition = 0)
    {
        m_fixture = std::make_unique<TapeDetailFixture>(tape, resumePosition);
    }

    std::unique_ptr<TapeDetailFixture> m_fixture;
};

void TapeDetailViewTest::allTextsOfTapeAreShown()
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

void TapeDetailViewTest::badgesAreInOrder_data()
{
    QTest::addColumn<Tape>("tape");
    QTest::addColumn<QStringList>("badges");
    const QStringList plain{u"CHAMBER DRAMA"_s, u"P.G."_s, u"49 MIN"_s, u"SP MODE"_s};
    QTest::newRow("without an agenda") << TapeDetailFixture::ordinary() << plain;
    QTest::newRow("with an agenda") << TapeDetailFixture::rich()
                                    << QStringList(plain + QStringList{u"◈ AGENDA ENCLOSED"_s});
}

void TapeDetailViewTest::badgesAreInOrder()
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

void TapeDetailViewTest::buttonsMatchStateOfTape_data()
{
    QTest::addColumn<bool>("hasTranscript");
    QTest::addColumn<double>("position");
    QTest::addColumn<QStringList>("buttons");
    QTest::newRow("neither") << false << 0.0 << QStringList{u"Push it in"_s};
    QTest::newRow("with a transcript") << true << 0.0 << QStringList{u"Push it in"_s, u"Read the transcript"_s};
    QTest::newRow("with a resume position") << false << 3725.0 << QStringList{u"Resume at 1:02:05"_s, u"Start over"_s};
    QTest::newRow("both") << true << 125.0
                          << QStringList{u"Resume at 2:05"_s, u"Start over"_s, u"Read the transcript"_s};
}

void TapeDetailViewTest::buttonsMatchStateOfTape()
{
    QFETCH(const bool, hasTranscript);
    QFETCH(const double, position);
    Tape tape = TapeDetailFixture::ordinary();
    tape.hasTranscript = hasTranscript;
    open(tape, position);
    QTEST(m_fixture->buttons(), "buttons");
}

void TapeDetailViewTest::factsAreInOrder_data()
{
    QTest::addColumn<Tape>("tape");
    QTest::addColumn<QStringList>("facts");
    const QString body = u"BODY=City Council"_s;
    const QString size = u"TAPE SIZE=1.0 GB · self-hosted"_s;
    const QString none = u"TRANSCRIPT=None harvested"_s;
    QTest::newRow("all but documents")
        << TapeDetailFixture::ordinary()
        << QStringList{body, u"RECORDED=March 5, 2024"_s, u"MARKET=Springfield"_s, u"LOCATION=Town Hall"_s, size, none};
    Tape bare = TapeDetailFixture::ordinary();
    bare.meetingDate.reset();
    bare.market.name.clear();
    bare.location.clear();
    QTest::newRow("only required facts") << bare << QStringList{body, size, none};
}

void TapeDetailViewTest::factsAreInOrder()
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

void TapeDetailViewTest::textsOfHubAreNotParsedAsMarkup()
{
    Tape tape = TapeDetailFixture::ordinary();
    tape.title = u"<b>Budget</b> &amp; <img src='https://elsewhere.example/x.png'>"_s;
    tape.location = u"<i>Hall</i>"_s;
    open(tape);
    QVERIFY(m_fixture->shown().contains(tape.title));
    for (const QQuickItem* text : TestScreen::texts(m_fixture->view))
        QCOMPARE(text->property("textFormat").toInt(), 0);
}

void TapeDetailViewTest::fullRecordIsShownWhenItArrives()
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

void TapeDetailViewTest::failedRequestShowsNoMessage()
{
    open(TapeDetailFixture::rich());
    const QStringList before = m_fixture->shown();
    m_fixture->answer({}, 503);
    QTRY_COMPARE(m_fixture->request(), -1);
    m_fixture->waitUntilIdle();
    QCOMPARE(m_fixture->shown(), before);
}

void TapeDetailViewTest::selectOpensPlayerAndBackReturnsToButton()
{
    open(TapeDetailFixture::rich(), 125);
    m_fixture->press(Qt::Key_Right);
    m_fixture->press(Qt::Key_Select);
    QVERIFY(m_fixture->controller->isPlaying());
    QVERIFY(m_fixture->player());
    QVERIFY(m_fixture->player()->hasActiveFocus());
    m_fixture->press(Qt::Key_Right);
    m_fixture->press(Qt::Key_Back);
    QVERIFY(!m_fixture->controller->isPlaying());
    QCOMPARE(m_fixture->focusedName(), u"Start over"_s);
    QTRY_VERIFY(!m_fixture->player());
    QCOMPARE(m_fixture->focusedName(), u"Start over"_s);
    QCOMPARE(m_fixture->http.count(), 1 + m_fixture->request());
}

void TapeDetailViewTest::playerGetsTapeAndStartPosition()
{
    open(TapeDetailFixture::rich(), 125);
    m_fixture->press(Qt::Key_Select);
    QVERIFY(m_fixture->player());
    QCOMPARE(m_fixture->player()->property("tape").value<Tape>().streamURLPath, u"/media/42/index.m3u8"_s);
    QCOMPARE(m_fixture->player()->property("detail").value<TapeDetailController*>()->startAt(), 125.0);
}

void TapeDetailViewTest::resumeButtonIsUpdatedWhenPlayerCloses()
{
    open(TapeDetailFixture::rich());
    m_fixture->press(Qt::Key_Select);
    m_fixture->store->saveResume(42, 3600);
    m_fixture->press(Qt::Key_Back);
    QCOMPARE(m_fixture->buttons(), QStringList({u"Resume at 1:00:00"_s, u"Start over"_s, u"Read the transcript"_s}));
    QCOMPARE(m_fixture->focusedName(), u"Resume at 1:00:00"_s);
    m_fixture->waitUntilIdle();
    m_fixture->press(Qt::Key_Right);
    m_fixture->press(Qt::Key_Select);
    m_fixture->store->removeResume(42);
    m_fixture->press(Qt::Key_Back);
    QCOMPARE(m_fixture->buttons(), QStringList({u"Push it in"_s, u"Read the transcript"_s}));
    // The button that was pressed no longer exists.
    QTRY_COMPARE(m_fixture->focusedName(), u"Push it in"_s);
}

void TapeDetailViewTest::transcriptButtonOnlySetsFlagWithoutTranscriptScreen()
{
    open(TapeDetailFixture::rich());
    m_fixture->press(Qt::Key_Right);
    m_fixture->press(Qt::Key_Select);
    QVERIFY(m_fixture->controller->isReadingTranscript());
    QVERIFY(!m_fixture->controller->isPlaying());
    QCOMPARE(m_fixture->focusedName(), u"Read the transcript"_s);
}

void TapeDetailViewTest::requestIsCancelledWhenScreenDisappears()
{
    open(TapeDetailFixture::rich());
    const int call = m_fixture->request();
    QVERIFY(call >= 0);
    Q_EMIT m_fixture->view->disappeared();
    QVERIFY(m_fixture->http.wasCancelled(call));
}

QUILLMERE_TEST(TapeDetailViewTest, QGuiApplication)

} // namespace quillmere

#include "TapeDetailViewTest.moc"
