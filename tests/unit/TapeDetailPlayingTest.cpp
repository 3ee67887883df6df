#include "Rows.h"
#include "TapeDetailControllerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

/** Tests where a tape starts when it is played from its screen, and which screen covers it. */
class TapeDetailPlayingTest : public TapeDetailControllerFixture
{
    Q_OBJECT

private Q_SLOTS:
    void tapeWithoutPositionStartsAtBeginning()
    {
        QCOMPARE(m_screen->playText(), u"Push it in"_s);
        QVERIFY(!m_screen->canStartOver());
        m_screen->play();
        QVERIFY(m_screen->isPlaying());
        QCOMPARE(m_screen->startAt(), 0.0);
    }

    void tapeIsResumedOrStartedOver()
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

    void positionIsReadAgainWhenPlayerCloses()
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
        QCOMPARE(m_screen->startAt(), 125.0); // of the last play
    }

    void positionSavedWhilePlayerClosesIsShown()
    {
        m_screen->play();
        connect(m_screen.get(), &TapeDetailController::playingChanged, this,
                [this] { m_shop->store->saveResume(id, 95); });
        m_screen->setPlaying(false);
        QVERIFY(m_screen->canStartOver());
    }

    void positionIsReadAgainWhenScreenAppears()
    {
        m_screen->appear();
        m_screen->disappear();
        (*m_shop)->saveResume(id, 125);
        m_screen->appear();
        QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
    }

    void invalidStoredPositionIsIgnored_data()
    {
        rows<double>({"stored"}, {{"not a number", qQNaN()}, {"infinite", qInf()}, {"negative", -125.0}});
    }

    void invalidStoredPositionIsIgnored()
    {
        QFETCH(const double, stored);
        m_shop->defaults.setNumber(u"resume.tape.9007199254740993"_s, stored);
        m_screen->appear();
        QCOMPARE(m_screen->playText(), u"Push it in"_s);
        m_screen->play();
        QCOMPARE(m_screen->startAt(), 0.0);
    }

    void positionIsThatOfShownTape()
    {
        (*m_shop)->saveResume(id, 125);
        (*m_shop)->saveResume(7, 250);
        m_screen->appear();
        QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
        m_shop->answer(m_path, R"({"id": 7})");
        m_shop->waitForDecoding();
        QCOMPARE(m_screen->playText(), u"Resume at 2:05"_s);
    }

    void readingAndPlayingAreNotifiedOnce()
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
};

QUILLMERE_TEST(TapeDetailPlayingTest, QCoreApplication)

} // namespace quillmere

#include "TapeDetailPlayingTest.moc"
