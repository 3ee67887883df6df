#include "TapeDetailControllerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

/** Tests where a tape starts when it is played from its screen, and which screen covers it. */
class TapeDetailPlayingTest : public TapeDetailControllerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void tapeWithoutPositionStartsAtBeginning();
    void tapeIsResumedOrStartedOver();
    void positionIsReadAgainWhenPlayerCloses();
    void positionSavedWhilePlayerClosesIsShown();
    void positionIsReadAgainWhenScreenAppears();
    void invalidStoredPositionIsIgnored_data();
    void invalidStoredPositionIsIgnored();
    void positionIsThatOfShownTape();
    void startAtKeepsLastValue();
    void readingAndPlayingAreNotifiedOnce();
};

void TapeDetailPlayingTest::tapeWithoutPositionStartsAtBeginning()
{
    QCOMPARE(m_screen->playText(), u"Push it in"_s);
    QVERIFY(!m_screen->canStartOver());
    m_screen->play();
    QVERIFY(m_screen->isPlaying());
    QCOMPARE(m_screen->startAt(), 0.0);
}

void TapeDetailPlayingTest::tapeIsResumedOrStartedOver()
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

void TapeDetailPlayingTest::positionIsReadAgainWhenPlayerCloses()
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

void TapeDetailPlayingTest::positionSavedWhilePlayerClosesIsShown()
{
    m_screen->play();
    connect(m_screen.get(), &TapeDetailController::playingChanged, this, [this] { m_shop->store->saveResume(id, 95); });
    m_screen->setPlaying(false);
    QVERIFY(m_screen->canStartOver());
}

void TapeDetailPlayingTest::positionIsReadAgainWhenScreenAppears()
{
    m_screen->appear();
    m_screen->disappear();
    (*m_shop)->saveResume(id, 125);
    m_screen->appear();
    QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
}

void TapeDetailPlayingTest::invalidStoredPositionIsIgnored_data()
{
    QTest::addColumn<double>("stored");
    QTest::newRow("not a number") << qQNaN();
    QTest::newRow("infinite") << qInf();
    QTest::newRow("negative") << -125.0;
}

void TapeDetailPlayingTest::invalidStoredPositionIsIgnored()
{
    QFETCH(const double, stored);
    m_shop->defaults.setNumber(u"resume.tape.9007199254740993"_s, stored);
    m_screen->appear();
    QCOMPARE(m_screen->playText(), u"Push it in"_s);
    m_screen->play();
    QCOMPARE(m_screen->startAt(), 0.0);
}

void TapeDetailPlayingTest::positionIsThatOfShownTape()
{
    (*m_shop)->saveResume(id, 125);
    (*m_shop)->saveResume(7, 250);
    m_screen->appear();
    QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
    m_shop->answer(m_path, R"({"id": 7})");
    m_shop->waitForDecoding();
    QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
}

void TapeDetailPlayingTest::startAtKeepsLastValue()
{
    (*m_shop)->saveResume(id, 125);
    m_screen->appear();
    m_screen->play();
    (*m_shop)->saveResume(id, 500);
    m_screen->setPlaying(false);
    QCOMPARE(m_screen->startAt(), 125.0);
}

void TapeDetailPlayingTest::readingAndPlayingAreNotifiedOnce()
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

QUILLMERE_TEST(TapeDetailPlayingTest, QCoreApplication)

} // namespace quillmere

#include "TapeDetailPlayingTest.moc"
