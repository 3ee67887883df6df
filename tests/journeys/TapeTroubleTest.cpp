#include "Shop.h"
#include "TapeVisit.h"
#include "TestMain.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

/**
 * A tape when the hub stalls, stops, returns, or has no stream: messages, and the saved position. Uses the real program
 * and the sample hub.
 */
class TapeTroubleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void playbackContinuesAfterStalledSegment();
    void playbackContinuesWhenHubReturns();
    void failureIsShownWhenHubDoesNotReturn();
    void failureIsShownWhenStreamIsMissing();
    void failureIsShownForTapeWithoutStream();

private:
    bool playIntoStalledSegment();
    bool dismissWithButton();

    static constexpr qint64 tape = 7237; // id of the tape "the library roof", which has segments of four seconds
    static constexpr qint64 tapeWithoutStream = 310;
    static constexpr double resumePosition = 125;
    static constexpr int stallStart = 132; // seconds; begin of the stalled segment

    TapeVisit m_visit;
};

void TapeTroubleTest::init()
{
    m_visit.hub().stop(); // a failed test may have left it stopped
    m_visit.hub().start();
}

/** Plays until a segment that the hub stalls. Without the fault, the rest of the tape would be buffered at once. */
bool TapeTroubleTest::playIntoStalledSegment()
{
    if (!m_visit.open(tape, resumePosition))
        return false;
    m_visit.hub().addFault(u"/recordings/library-roof/segment-033.ts"_s, u"stall"_s);
    m_visit.viewer().press(u"select"_s);
    return m_visit.waitForSecond(stallStart - 2) && m_visit.waitForSpinner();
}

bool TapeTroubleTest::dismissWithButton()
{
    if (!m_visit.waitForText(TapeVisit::failureButton, u"Back to the shelves"_s))
        return false;
    m_visit.viewer().press(u"select"_s);
    return m_visit.waitForText(shop::detailFacts, u"self-hosted"_s);
}

void TapeTroubleTest::playbackContinuesAfterStalledSegment()
{
    QVERIFY(playIntoStalledSegment());
    QVERIFY(m_visit.shownSecond().value_or(stallStart) < stallStart);
    QCOMPARE(m_visit.savedPosition(), std::optional(resumePosition));
    m_visit.hub().reset();
    QVERIFY(m_visit.waitForSecond(stallStart + 4));
    QTRY_VERIFY_WITH_TIMEOUT(m_visit.savedPosition() > resumePosition, 20'000);
}

void TapeTroubleTest::playbackContinuesWhenHubReturns()
{
    QVERIFY(playIntoStalledSegment());
    const auto secondAtStop = m_visit.shownSecond();
    m_visit.hub().stop();
    QVERIFY(m_visit.waitForSpinner());
    QCOMPARE(m_visit.shownSecond(), secondAtStop);
    QCOMPARE(m_visit.savedPosition(), std::optional(resumePosition));
    m_visit.hub().start();
    const auto next = m_visit.waitForNextSecond(secondAtStop);
    QVERIFY(next);
    QVERIFY2(*next >= secondAtStop && *next <= *secondAtStop + 2, qPrintable(QString::number(*next)));
    QVERIFY(m_visit.savedPosition() >= resumePosition);
    QVERIFY(m_visit.waitForSecond(int(resumePosition) + 12));
    QTRY_VERIFY_WITH_TIMEOUT(m_visit.savedPosition() > resumePosition, 20'000);
}

void TapeTroubleTest::failureIsShownWhenHubDoesNotReturn()
{
    QVERIFY(playIntoStalledSegment());
    m_visit.hub().stop();
    QElapsedTimer time;
    time.start();
    QVERIFY(m_visit.waitForText(TapeVisit::failureButton, u"Back to the shelves"_s, 60s));
    QVERIFY2(time.elapsed() > 14'000,
             qPrintable(QString::number(time.elapsed()))); // the reconnection delays of 1, 2, 4 and 8 seconds
    QVERIFY(m_visit.waitForText(TapeVisit::failureMessage, u"The connection was refused."_s));
    m_visit.hub().start();
    QVERIFY(dismissWithButton());
    QCOMPARE(m_visit.savedPosition(), std::optional(resumePosition));
    QVERIFY(m_visit.waitForText(shop::detailFacts, u"Resume at 2:05"_s));
}

void TapeTroubleTest::failureIsShownWhenStreamIsMissing()
{
    QVERIFY(m_visit.open(tape, resumePosition));
    m_visit.hub().addFault(u"/recordings/library-roof/index.m3u8"_s, u"error"_s, {{u"status"_s, 404}});
    m_visit.viewer().press(u"select"_s);
    QVERIFY(m_visit.waitForText(TapeVisit::failure, u"TRACKING"_s));
    QVERIFY(m_visit.waitForText(TapeVisit::failure, u"The hub answered 404."_s));
    QVERIFY(dismissWithButton());
    QCOMPARE(m_visit.savedPosition(), std::optional(resumePosition));
}

void TapeTroubleTest::failureIsShownForTapeWithoutStream()
{
    QVERIFY(m_visit.open(tapeWithoutStream));
    m_visit.viewer().press(u"select"_s);
    QVERIFY(m_visit.waitForText(TapeVisit::failure, u"TRACKING"_s));
    QVERIFY(m_visit.waitForText(TapeVisit::failure, u"This tape has no playable copy on the shelf."_s));
    QVERIFY(dismissWithButton());
}

QUILLMERE_TEST(TapeTroubleTest, QCoreApplication)

} // namespace quillmere

#include "TapeTroubleTest.moc"
