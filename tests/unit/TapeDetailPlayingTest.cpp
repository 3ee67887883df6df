#include "TapeDetailOnScript.h"

#include <QSignalSpy>

/** Where a tape starts when it is played from its screen, and what covers the screen. */
class TapeDetailPlayingTest : public TapeDetailOnScript
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAPositionTheTapeStartsAtItsTop();
    void aPositionIsResumedOrStartedOver();
    void thePositionIsReadAgainWhenThePlayerCloses();
    void aPositionThatThePlayerKeepsInGoingIsShown();
    void thePositionIsReadAgainOnAppearing();
    void aDamagedPositionIsNone_data();
    void aDamagedPositionIsNone();
    void thePositionIsThatOfTheTapeOnScreen();
    void startAtKeepsItsLastValue();
    void readingAndPlayingAreToldOnce();
};

void TapeDetailPlayingTest::withoutAPositionTheTapeStartsAtItsTop()
{
    QCOMPARE(m_screen->playText(), u"Push it in"_s);
    QVERIFY(!m_screen->canStartOver());
    m_screen->play();
    QVERIFY(m_screen->isPlaying());
    QCOMPARE(m_screen->startAt(), 0.0);
}

void TapeDetailPlayingTest::aPositionIsResumedOrStartedOver()
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

void TapeDetailPlayingTest::thePositionIsReadAgainWhenThePlayerCloses()
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

void TapeDetailPlayingTest::aPositionThatThePlayerKeepsInGoingIsShown()
{
    m_screen->play();
    connect(m_screen.get(), &TapeDetailController::playingChanged, this, [this] { m_shop->store->saveResume(id, 95); });
    m_screen->setPlaying(false);
    QVERIFY(m_screen->canStartOver());
}

void TapeDetailPlayingTest::thePositionIsReadAgainOnAppearing()
{
    m_screen->appear();
    m_screen->disappear();
    (*m_shop)->saveResume(id, 125);
    m_screen->appear();
    QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
}

void TapeDetailPlayingTest::aDamagedPositionIsNone_data()
{
    QTest::addColumn<double>("kept");
    QTest::newRow("no number") << qQNaN();
    QTest::newRow("without end") << qInf();
    QTest::newRow("before the top") << -125.0;
}

void TapeDetailPlayingTest::aDamagedPositionIsNone()
{
    QFETCH(const double, kept);
    m_shop->defaults.setNumber(u"resume.tape.9007199254740993"_s, kept);
    m_screen->appear();
    QCOMPARE(m_screen->playText(), u"Push it in"_s);
    m_screen->play();
    QCOMPARE(m_screen->startAt(), 0.0);
}

void TapeDetailPlayingTest::thePositionIsThatOfTheTapeOnScreen()
{
    (*m_shop)->saveResume(id, 125);
    (*m_shop)->saveResume(7, 250);
    m_screen->appear();
    QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
    m_shop->answer(m_path, R"({"id": 7})");
    m_shop->settle();
    QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
}

void TapeDetailPlayingTest::startAtKeepsItsLastValue()
{
    (*m_shop)->saveResume(id, 125);
    m_screen->appear();
    m_screen->play();
    (*m_shop)->saveResume(id, 500);
    m_screen->setPlaying(false);
    QCOMPARE(m_screen->startAt(), 125.0);
}

void TapeDetailPlayingTest::readingAndPlayingAreToldOnce()
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

QTEST_GUILESS_MAIN(TapeDetailPlayingTest)
#include "TapeDetailPlayingTest.moc"
