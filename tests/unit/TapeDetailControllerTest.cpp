#include "TapeDetailController.h"
#include "StoreOnScript.h"

#include <QSignalSpy>

/** The tape's screen without a window, on a hub that answers when and what the test says. */
class TapeDetailControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void untilTheHubAnswersTheTapeIsShownAsItCame();
    void appearingFetchesTheTapeByItsId();
    void theFullRecordReplacesTheTape();
    void aRecordOfTheSameIdIsFresherAllTheSame();
    void theFullRecordIsTakenAsItIs();
    void aFailureIsSilent_data();
    void aFailureIsSilent();
    void anAnswerAfterTheScreenIsGoneChangesNothing_data();
    void anAnswerAfterTheScreenIsGoneChangesNothing();
    void aScreenDestroyedWhileItFetchesHarmsNobody();
    void appearingAgainFetchesAgainAndKeepsTheRecord();
    void coveringTheScreenFetchesNothing();
    void aFreshScreenFetchesAnew();
    void withoutAPositionTheTapeStartsAtItsTop();
    void aPositionIsResumedOrStartedOver();
    void thePositionIsReadAgainWhenThePlayerCloses();
    void aPositionThatThePlayerKeepsInGoingIsShown();
    void thePositionIsReadAgainOnAppearing();
    void aDamagedPositionIsNone_data();
    void aDamagedPositionIsNone();
    void thePositionIsThatOfTheTapeOnScreen();
    void startAtKeepsItsLastValue();
    void theTranscriptIsOfferedOnlyWhereThereIsOne();
    void readingAndPlayingAreToldOnce();
    void theTextsAreThoseOfTheTapeOnScreen();
    void theFactsAreRowsOfLabelAndValue();
    void theStoresNewsChangesNothingHere();

private:
    static Tape ordinary();
    void open(const Tape& tape = ordinary());
    QStringList values() const;
    QByteArray fullRecord() const;

    std::unique_ptr<StoreOnScript> m_shop;
    std::unique_ptr<TapeDetailController> m_screen;
    const QString m_path = u"/api/tv/tape/9007199254740993"_s;
    static constexpr qint64 id = 9007199254740993; // one more than a double can count to
};

void TapeDetailControllerTest::init()
{
    m_shop = std::make_unique<StoreOnScript>();
    open();
}

void TapeDetailControllerTest::cleanup()
{
    m_screen.reset();
    m_shop.reset();
    QCoreApplication::processEvents();
}

Tape TapeDetailControllerTest::ordinary()
{
    Tape tape;
    tape.id = id;
    tape.title = u"Harbour Council"_s;
    return tape;
}

void TapeDetailControllerTest::open(const Tape& tape)
{
    m_screen = std::make_unique<TapeDetailController>();
    m_screen->setProperty("store", QVariant::fromValue(m_shop->store.get()));
    m_screen->setProperty("hub", QVariant::fromValue(&m_shop->hub));
    m_screen->setProperty("tape", QVariant::fromValue(tape));
}

QByteArray TapeDetailControllerTest::fullRecord() const
{
    return R"({"id": 9007199254740993, "title": "Harbour Council, in full", "has_transcript": true,
               "location": "Town Hall", "documents": [{"title": "Agenda"}]})";
}

QStringList TapeDetailControllerTest::values() const
{
    QStringList values;
    FactList* const facts = m_screen->facts();
    for (int row = 0; row < facts->rowCount(); ++row)
        values.append(facts->data(facts->index(row), FactList::ValueRole).toString());
    return values;
}

void TapeDetailControllerTest::untilTheHubAnswersTheTapeIsShownAsItCame()
{
    m_screen->appear();
    QVERIFY(!m_screen->detail());
    QCOMPARE(m_screen->shownTape().title, u"Harbour Council"_s);
    QCOMPARE(m_screen->cover().title, u"Harbour Council"_s);
    QVERIFY(!m_screen->isPlaying());
    QVERIFY(!m_screen->isReadingTranscript());
    QCOMPARE(m_screen->startAt(), 0.0);
}

void TapeDetailControllerTest::appearingFetchesTheTapeByItsId()
{
    QCOMPARE(m_shop->http.count(), 0);
    m_screen->appear();
    QCOMPARE(m_shop->http.count(), 1);
    QCOMPARE(m_shop->http.request(0).url, QUrl(u"https://hub.example"_s + m_path));
}

void TapeDetailControllerTest::theFullRecordReplacesTheTape()
{
    QSignalSpy changed(m_screen.get(), &TapeDetailController::shownTapeChanged);
    m_screen->appear();
    m_shop->answer(m_path, fullRecord());
    QTRY_VERIFY(m_screen->detail());
    QCOMPARE(changed.count(), 1);
    QCOMPARE(m_screen->shownTape().title, u"Harbour Council, in full"_s);
    QCOMPARE(m_screen->title(), u"Harbour Council, in full"_s);
    QCOMPARE(m_screen->cover().title, u"Harbour Council, in full"_s);
    QVERIFY(m_screen->hasTranscript());
    QVERIFY(values().contains(u"Town Hall"_s));
    QVERIFY(values().contains(u"Agenda"_s));
    QCOMPARE(m_screen->tape().title, u"Harbour Council"_s);
}

void TapeDetailControllerTest::aRecordOfTheSameIdIsFresherAllTheSame()
{
    QSignalSpy changed(m_screen.get(), &TapeDetailController::shownTapeChanged);
    Tape renamed = ordinary();
    renamed.title = u"Renamed"_s;
    QCOMPARE(renamed, ordinary());
    m_screen->setProperty("tape", QVariant::fromValue(renamed));
    QCOMPARE(m_screen->title(), u"Renamed"_s);
    QCOMPARE(changed.count(), 1);
}

void TapeDetailControllerTest::theFullRecordIsTakenAsItIs()
{
    Tape rich = ordinary();
    rich.hasTranscript = true;
    rich.location = u"Town Hall"_s;
    open(rich);
    m_screen->appear();
    m_shop->answer(m_path, "{}");
    QTRY_VERIFY(m_screen->detail());
    QVERIFY(!m_screen->hasTranscript());
    QVERIFY(!values().contains(u"Town Hall"_s));
    QCOMPARE(m_screen->title(), u"Untitled Recording"_s);
}

void TapeDetailControllerTest::aFailureIsSilent_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("refused") << 503 << QByteArray();
    QTest::newRow("not there") << 404 << QByteArray("{}");
    QTest::newRow("no JSON") << 200 << QByteArray("<html>");
    QTest::newRow("no record") << 200 << QByteArray("[]");
    QTest::newRow("no answer") << 0 << QByteArray();
}

void TapeDetailControllerTest::aFailureIsSilent()
{
    QFETCH(const int, status);
    QFETCH(const QByteArray, body);
    QSignalSpy changed(m_screen.get(), &TapeDetailController::shownTapeChanged);
    m_screen->appear();
    if (status == 0)
        m_shop->fail(m_path, u"The network is down."_s);
    else
        m_shop->answer(m_path, body, status);
    m_shop->settle();
    QVERIFY(!m_screen->detail());
    QCOMPARE(changed.count(), 0);
    QCOMPARE(m_screen->title(), u"Harbour Council"_s);
    QVERIFY(!(*m_shop)->lastError());
    // Nothing is tried again: the one more request is the one that settled.
    QCOMPARE(m_shop->http.count(), 2);
}

void TapeDetailControllerTest::anAnswerAfterTheScreenIsGoneChangesNothing_data()
{
    QTest::addColumn<bool>("isDecoding");
    QTest::newRow("on its way") << false;
    QTest::newRow("being decoded") << true;
}

void TapeDetailControllerTest::anAnswerAfterTheScreenIsGoneChangesNothing()
{
    QFETCH(const bool, isDecoding);
    m_screen->appear();
    if (isDecoding)
        m_shop->answer(m_path, fullRecord());
    m_screen->disappear();
    QCOMPARE(m_shop->http.wasCancelled(0), !isDecoding);
    m_shop->settle();
    QVERIFY(!m_screen->detail());
    QCOMPARE(m_screen->title(), u"Harbour Council"_s);
}

void TapeDetailControllerTest::aScreenDestroyedWhileItFetchesHarmsNobody()
{
    m_screen->appear();
    m_shop->answer(m_path, fullRecord());
    m_screen.reset();
    m_shop->settle();
    open();
    m_screen->appear();
    m_screen.reset();
    QVERIFY(m_shop->http.wasCancelled(m_shop->http.count() - 1));
}

void TapeDetailControllerTest::appearingAgainFetchesAgainAndKeepsTheRecord()
{
    m_screen->appear();
    m_shop->answer(m_path, fullRecord());
    QTRY_VERIFY(m_screen->detail());
    m_screen->disappear();
    m_screen->appear();
    QCOMPARE(m_shop->http.count(), 2);
    QCOMPARE(m_screen->title(), u"Harbour Council, in full"_s);
    m_shop->answer(m_path, {}, 503);
    m_shop->settle();
    QCOMPARE(m_screen->title(), u"Harbour Council, in full"_s);
}

void TapeDetailControllerTest::coveringTheScreenFetchesNothing()
{
    m_screen->appear();
    m_screen->play();
    m_screen->setPlaying(false);
    m_screen->readTranscript();
    m_screen->setReadingTranscript(false);
    QCOMPARE(m_shop->http.count(), 1);
    QVERIFY(m_shop->http.isWaiting(0));
}

void TapeDetailControllerTest::aFreshScreenFetchesAnew()
{
    m_screen->appear();
    m_shop->answer(m_path, fullRecord());
    QTRY_VERIFY(m_screen->detail());
    open();
    QVERIFY(!m_screen->detail());
    m_screen->appear();
    QCOMPARE(m_shop->http.count(), 2);
}

void TapeDetailControllerTest::withoutAPositionTheTapeStartsAtItsTop()
{
    QCOMPARE(m_screen->playText(), u"Push it in"_s);
    QVERIFY(!m_screen->canStartOver());
    m_screen->play();
    QVERIFY(m_screen->isPlaying());
    QCOMPARE(m_screen->startAt(), 0.0);
}

void TapeDetailControllerTest::aPositionIsResumedOrStartedOver()
{
    (*m_shop)->saveResume(id, 3725.5);
    m_screen->appear();
    QCOMPARE(m_screen->playText(), u"Resume at 1:02:05"_s);
    QVERIFY(m_screen->canStartOver());
    m_screen->play();
    QVERIFY(m_screen->isPlaying());
    QCOMPARE(m_screen->startAt(), 3725.5);
    m_screen->setPlaying(false);
    m_screen->startOver();
    QVERIFY(m_screen->isPlaying());
    QCOMPARE(m_screen->startAt(), 0.0);
}

void TapeDetailControllerTest::thePositionIsReadAgainWhenThePlayerCloses()
{
    m_screen->appear();
    m_screen->play();
    (*m_shop)->saveResume(id, 125);
    m_screen->setPlaying(false);
    QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
    m_screen->play();
    (*m_shop)->removeResume(id);
    m_screen->setPlaying(false);
    QCOMPARE(m_screen->playText(), u"Push it in"_s);
    QVERIFY(!m_screen->canStartOver());
}

void TapeDetailControllerTest::aPositionThatThePlayerKeepsInGoingIsShown()
{
    m_screen->play();
    connect(m_screen.get(), &TapeDetailController::playingChanged, this, [this] { m_shop->store->saveResume(id, 95); });
    m_screen->setPlaying(false);
    QVERIFY(m_screen->canStartOver());
}

void TapeDetailControllerTest::thePositionIsReadAgainOnAppearing()
{
    m_screen->appear();
    m_screen->disappear();
    (*m_shop)->saveResume(id, 125);
    m_screen->appear();
    QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
}

void TapeDetailControllerTest::aDamagedPositionIsNone_data()
{
    QTest::addColumn<double>("kept");
    QTest::newRow("no number") << qQNaN();
    QTest::newRow("without end") << qInf();
    QTest::newRow("before the top") << -125.0;
}

void TapeDetailControllerTest::aDamagedPositionIsNone()
{
    QFETCH(const double, kept);
    m_shop->defaults.setNumber(u"resume.tape.9007199254740993"_s, kept);
    m_screen->appear();
    QCOMPARE(m_screen->playText(), u"Push it in"_s);
    m_screen->play();
    QCOMPARE(m_screen->startAt(), 0.0);
}

void TapeDetailControllerTest::thePositionIsThatOfTheTapeOnScreen()
{
    (*m_shop)->saveResume(id, 125);
    (*m_shop)->saveResume(7, 250);
    m_screen->appear();
    QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
    m_shop->answer(m_path, R"({"id": 7})");
    QTRY_COMPARE(m_screen->playText(), u"Resume at 4:10"_s);
}

void TapeDetailControllerTest::startAtKeepsItsLastValue()
{
    (*m_shop)->saveResume(id, 125);
    m_screen->appear();
    m_screen->play();
    (*m_shop)->saveResume(id, 500);
    m_screen->setPlaying(false);
    QCOMPARE(m_screen->startAt(), 125.0);
}

void TapeDetailControllerTest::theTranscriptIsOfferedOnlyWhereThereIsOne()
{
    QVERIFY(!m_screen->hasTranscript());
    Tape tape = ordinary();
    tape.hasTranscript = true;
    open(tape);
    QVERIFY(m_screen->hasTranscript());
    QCOMPARE(m_screen->readTranscriptText(), u"Read the transcript"_s);
    m_screen->readTranscript();
    QVERIFY(m_screen->isReadingTranscript());
    QVERIFY(!m_screen->isPlaying());
}

void TapeDetailControllerTest::readingAndPlayingAreToldOnce()
{
    QSignalSpy playing(m_screen.get(), &TapeDetailController::playingChanged);
    QSignalSpy reading(m_screen.get(), &TapeDetailController::readingTranscriptChanged);
    m_screen->play();
    m_screen->play();
    m_screen->readTranscript();
    m_screen->readTranscript();
    QCOMPARE(playing.count(), 1);
    QCOMPARE(reading.count(), 1);
}

void TapeDetailControllerTest::theTextsAreThoseOfTheTapeOnScreen()
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
    QCOMPARE(m_screen->startOverText(), u"Start over"_s);
}

void TapeDetailControllerTest::theFactsAreRowsOfLabelAndValue()
{
    FactList* const facts = m_screen->facts();
    QCOMPARE(facts->roleNames().value(FactList::LabelRole), "label");
    QCOMPARE(facts->roleNames().value(FactList::ValueRole), "value");
    QCOMPARE(facts->data(facts->index(0), FactList::LabelRole), u"BODY"_s);
    QCOMPARE(facts->data(facts->index(0), FactList::ValueRole), u"Harbour Council"_s);
    QVERIFY(!facts->data(facts->index(99), FactList::ValueRole).isValid());
    QCOMPARE(values(), QStringList({u"Harbour Council"_s, u"0 MB · self-hosted"_s, u"None harvested"_s}));
}

void TapeDetailControllerTest::theStoresNewsChangesNothingHere()
{
    m_screen->appear();
    m_shop->loadOnce({u"Another"_s});
    (*m_shop)->setShelves({});
    QCOMPARE(m_screen->title(), u"Harbour Council"_s);
}

QTEST_GUILESS_MAIN(TapeDetailControllerTest)
#include "TapeDetailControllerTest.moc"
