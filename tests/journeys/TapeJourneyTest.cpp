#include "Picture.h"
#include "Shop.h"
#include "TapeVisit.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/** A tape taken up where it was left, held, asked about, left again, and played to its end: the real program and hub. */
class TapeJourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTapeGoesOnWhereItWasLeft();
    void thePositionIsKeptEveryTenSecondsOfPlay();
    void selectHoldsThePicture();
    void theTransportGoesFourSecondsAfterTheTapePlaysOn();
    void downTellsWhatPlays();
    void backClosesThePanelBeforeThePlayer();
    void aTapeThatIsLeftOffersItsLastKeptPosition();
    void startOverBeginsAtTheTop();
    void theFirstMinuteForgetsThePosition();
    void aTapePlayedToItsEndIsForgotten();
    void aFinishedTapeStandsAtItsEnd();
    void aFinishedTapeOffersToBePlayedAnew();

private:
    static constexpr qint64 tape = 7237; // "the library roof"
    static constexpr int length = 330;   // seconds
    static constexpr double left = 125;

    TapeVisit m_visit;
};

void TapeJourneyTest::aTapeGoesOnWhereItWasLeft()
{
    QVERIFY(m_visit.open(tape, left));
    QVERIFY(m_visit.reads(shop::detailFacts, u"Resume at 2:05"_s));
    m_visit.room().press(u"select"_s);
    const auto first = m_visit.secondAfter();
    QVERIFY(first);
    QVERIFY2(*first >= left && *first <= left + 1, qPrintable(QString::number(*first)));
}

void TapeJourneyTest::thePositionIsKeptEveryTenSecondsOfPlay()
{
    QCOMPARE(m_visit.kept(), std::optional(left));
    QTRY_VERIFY_WITH_TIMEOUT(m_visit.kept() != left, 30'000);
    const double once = m_visit.kept().value_or(0);
    QVERIFY2(std::abs(once - left - 10) < 1, qPrintable(QString::number(once)));
    QTRY_VERIFY_WITH_TIMEOUT(m_visit.kept() != once, 30'000);
    const double twice = m_visit.kept().value_or(0);
    QVERIFY2(std::abs(twice - once - 10) < 0.5, qPrintable(QString::number(twice)));
}

void TapeJourneyTest::selectHoldsThePicture()
{
    m_visit.room().press(u"select"_s);
    QVERIFY(m_visit.reads(TapeVisit::transport, u"Paused"_s));
    QVERIFY(m_visit.reads(TapeVisit::transport, m_visit.title()));
    QVERIFY(m_visit.room().screen().waitUntilSettled(2s, 10s));
}

void TapeJourneyTest::theTransportGoesFourSecondsAfterTheTapePlaysOn()
{
    QElapsedTimer time;
    time.start();
    m_visit.room().press(u"select"_s);
    QVERIFY(m_visit.secondAfter()); // it cannot be read through the transport
    QVERIFY2(time.elapsed() > 3500 && time.elapsed() < 8000, qPrintable(QString::number(time.elapsed())));
}

void TapeJourneyTest::downTellsWhatPlays()
{
    m_visit.room().press(u"down"_s);
    QVERIFY(m_visit.reads(TapeVisit::information, m_visit.title()));
    QVERIFY(m_visit.reads(TapeVisit::information, u"Rewindery Home Video"_s));
}

void TapeJourneyTest::backClosesThePanelBeforeThePlayer()
{
    m_visit.room().press(u"back"_s);
    const auto second = m_visit.secondAfter();
    QVERIFY(second);
    QVERIFY(m_visit.playsTo(*second + 2));
    QVERIFY(!m_visit.room().read(TapeVisit::information).contains(u"Home Video"_s));
}

void TapeJourneyTest::aTapeThatIsLeftOffersItsLastKeptPosition()
{
    m_visit.room().press(u"back"_s);
    QVERIFY(m_visit.reads(shop::detailFacts, u"self-hosted"_s));
    QVERIFY(m_visit.kept() > left);
    const int seconds = int(*m_visit.kept());
    QVERIFY(
        m_visit.reads(shop::detailFacts, u"Resume at %1:%2"_s.arg(seconds / 60).arg(seconds % 60, 2, 10, QChar(u'0'))));
}

void TapeJourneyTest::startOverBeginsAtTheTop()
{
    m_visit.room().press(u"right"_s);
    m_visit.room().press(u"select"_s);
    const auto first = m_visit.secondAfter();
    QVERIFY(first);
    QVERIFY2(*first <= 2, qPrintable(QString::number(*first)));
    QVERIFY(m_visit.kept());
}

void TapeJourneyTest::theFirstMinuteForgetsThePosition()
{
    QVERIFY(m_visit.playsTo(9));
    QTRY_VERIFY_WITH_TIMEOUT(!m_visit.kept(), 20'000);
}

void TapeJourneyTest::aTapePlayedToItsEndIsForgotten()
{
    constexpr double nearTheEnd = length - 14;
    QVERIFY(m_visit.open(tape, nearTheEnd));
    m_visit.room().press(u"select"_s);
    QVERIFY(m_visit.playsTo(length - 3));
    QVERIFY(m_visit.kept() > nearTheEnd);
    QTRY_VERIFY_WITH_TIMEOUT(!m_visit.kept(), 20'000);
}

void TapeJourneyTest::aFinishedTapeStandsAtItsEnd()
{
    QVERIFY(m_visit.reads(TapeVisit::transport, u"Paused"_s));
    QVERIFY(m_visit.reads(TapeVisit::transport, u"-0:00"_s));
    QVERIFY(m_visit.room().screen().waitUntilSettled(1s, 10s));
    const QColor ground(31, 78, 95); // of the recording's pictures, the last of which stays
    QVERIFY(picture::isLike(picture::colourAt(m_visit.room().screen().look(), {1800, 540}), ground, 16));
    QVERIFY(!m_visit.kept());
}

void TapeJourneyTest::aFinishedTapeOffersToBePlayedAnew()
{
    m_visit.room().press(u"back"_s);
    QVERIFY(m_visit.reads(shop::detailFacts, u"Push it in"_s));
    QVERIFY(!m_visit.kept());
}

QTEST_GUILESS_MAIN(TapeJourneyTest)
#include "TapeJourneyTest.moc"
