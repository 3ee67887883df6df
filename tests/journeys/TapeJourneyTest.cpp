#include "Picture.h"
#include "Shop.h"
#include "TapeVisit.h"
#include "TestMain.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

/**
 * A tape is resumed, paused, looked up in the information panel, dismissed, and played to its end. Uses the real
 * program and the sample hub.
 */
class TapeJourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tapeResumesAtSavedPosition();
    void positionIsSavedEveryTenSeconds();
    void selectPausesTape();
    void transportDisappearsFourSecondsAfterPlaybackContinues();
    void downOpensInformationPanel();
    void firstBackClosesInformationPanel();
    void dismissedTapeOffersLastSavedPosition();
    void startOverPlaysFromBeginning();
    void positionInFirstMinuteIsRemoved();
    void positionIsRemovedWhenTapeEnds();
    void endedTapeShowsLastPicturePaused();
    void endedTapeOffersPlayFromBeginning();

private:
    static constexpr qint64 tape = 7237; // id of the tape "the library roof"
    static constexpr int length = 330;   // of the tape, in seconds
    static constexpr double resumePosition = 125;

    TapeVisit m_visit;
};

void TapeJourneyTest::tapeResumesAtSavedPosition()
{
    QVERIFY(m_visit.open(tape, resumePosition));
    QVERIFY(m_visit.waitForText(shop::detailFacts, u"Resume at 2:05"_s));
    m_visit.viewer().press(u"select"_s);
    const auto first = m_visit.waitForNextSecond();
    QVERIFY(first);
    QVERIFY2(*first >= resumePosition && *first <= resumePosition + 1, qPrintable(QString::number(*first)));
}

void TapeJourneyTest::positionIsSavedEveryTenSeconds()
{
    QCOMPARE(m_visit.savedPosition(), std::optional(resumePosition));
    QTRY_VERIFY_WITH_TIMEOUT(m_visit.savedPosition() != resumePosition, 30'000);
    const double firstSaved = m_visit.savedPosition().value_or(0);
    QVERIFY2(std::abs(firstSaved - resumePosition - 10) < 1, qPrintable(QString::number(firstSaved)));
    QTRY_VERIFY_WITH_TIMEOUT(m_visit.savedPosition() != firstSaved, 30'000);
    const double secondSaved = m_visit.savedPosition().value_or(0);
    QVERIFY2(std::abs(secondSaved - firstSaved - 10) < 0.5, qPrintable(QString::number(secondSaved)));
}

void TapeJourneyTest::selectPausesTape()
{
    m_visit.viewer().press(u"select"_s);
    QVERIFY(m_visit.waitForText(TapeVisit::transport, u"Paused"_s));
    QVERIFY(m_visit.waitForText(TapeVisit::transport, m_visit.expectedTitle()));
    QVERIFY(m_visit.viewer().screen().waitUntilStill(2s, 10s));
}

void TapeJourneyTest::transportDisappearsFourSecondsAfterPlaybackContinues()
{
    QElapsedTimer time;
    time.start();
    m_visit.viewer().press(u"select"_s);
    QVERIFY(m_visit.waitForNextSecond()); // it cannot be read while the transport covers it
    QVERIFY2(time.elapsed() > 3500 && time.elapsed() < 8000, qPrintable(QString::number(time.elapsed())));
}

void TapeJourneyTest::downOpensInformationPanel()
{
    m_visit.viewer().press(u"down"_s);
    QVERIFY(m_visit.waitForText(TapeVisit::information, m_visit.expectedTitle()));
    QVERIFY(m_visit.waitForText(TapeVisit::information, u"Rewindery Home Video"_s));
}

void TapeJourneyTest::firstBackClosesInformationPanel()
{
    m_visit.viewer().press(u"back"_s);
    const auto second = m_visit.waitForNextSecond();
    QVERIFY(second);
    QVERIFY(m_visit.waitForSecond(*second + 2));
    QVERIFY(!m_visit.viewer().read(TapeVisit::information).contains(u"Home Video"_s));
}

void TapeJourneyTest::dismissedTapeOffersLastSavedPosition()
{
    m_visit.viewer().press(u"back"_s);
    QVERIFY(m_visit.waitForText(shop::detailFacts, u"self-hosted"_s));
    QVERIFY(m_visit.savedPosition() > resumePosition);
    const int seconds = int(*m_visit.savedPosition());
    QVERIFY(m_visit.waitForText(shop::detailFacts,
                                u"Resume at %1:%2"_s.arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'))));
}

void TapeJourneyTest::startOverPlaysFromBeginning()
{
    m_visit.viewer().press(u"right"_s);
    m_visit.viewer().press(u"select"_s);
    const auto first = m_visit.waitForNextSecond();
    QVERIFY(first);
    QVERIFY2(*first <= 2, qPrintable(QString::number(*first)));
    QVERIFY(m_visit.savedPosition());
}

void TapeJourneyTest::positionInFirstMinuteIsRemoved()
{
    QVERIFY(m_visit.waitForSecond(9));
    QTRY_VERIFY_WITH_TIMEOUT(!m_visit.savedPosition(), 20'000);
}

void TapeJourneyTest::positionIsRemovedWhenTapeEnds()
{
    constexpr double nearTheEnd = length - 14;
    QVERIFY(m_visit.open(tape, nearTheEnd));
    m_visit.viewer().press(u"select"_s);
    QVERIFY(m_visit.waitForSecond(length - 3));
    QVERIFY(m_visit.savedPosition() > nearTheEnd);
    QTRY_VERIFY_WITH_TIMEOUT(!m_visit.savedPosition(), 20'000);
}

void TapeJourneyTest::endedTapeShowsLastPicturePaused()
{
    QVERIFY(m_visit.waitForText(TapeVisit::transport, u"Paused"_s));
    QVERIFY(m_visit.waitForText(TapeVisit::transport, u"-0:00"_s));
    QVERIFY(m_visit.viewer().screen().waitUntilStill(1s, 10s));
    const QColor background(31, 78, 95); // background of the recording's pictures; the last picture stays visible
    QVERIFY(picture::isLike(picture::colourAt(m_visit.viewer().screen().grab(), {1800, 540}), background, 16));
    QVERIFY(!m_visit.savedPosition());
}

void TapeJourneyTest::endedTapeOffersPlayFromBeginning()
{
    m_visit.viewer().press(u"back"_s);
    QVERIFY(m_visit.waitForText(shop::detailFacts, u"Push it in"_s));
    QVERIFY(!m_visit.savedPosition());
}

QUILLMERE_TEST(TapeJourneyTest, QCoreApplication)

} // namespace quillmere

#include "TapeJourneyTest.moc"
