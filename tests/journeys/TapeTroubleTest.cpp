#include "Shop.h"
#include "TapeVisit.h"

#include <QElapsedTimer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/** A tape whose hub stalls, goes, comes back or has nothing to give: the real program and hub, and what is kept. */
class TapeTroubleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aStalledSegmentIsWaitedFor();
    void aHubThatComesBackIsPlayedOnFrom();
    void aHubThatStaysAwayIsSaid();
    void aStreamThatIsNotThereIsSaid();
    void aTapeWithoutAStreamIsSaid();

private:
    bool playsIntoAStall();
    bool leavesByTheButton();

    static constexpr qint64 tape = 7237; // "the library roof", in segments of four seconds
    static constexpr qint64 neverCopied = 310;
    static constexpr double left = 125;
    static constexpr int breaks = 132; // seconds: where the held segment begins

    TapeVisit m_visit;
};

void TapeTroubleTest::init()
{
    m_visit.hub().stop(); // it may have been left stopped
    m_visit.hub().start();
}

/** All the rest is read ahead in no time, so the hub holds a segment back. */
bool TapeTroubleTest::playsIntoAStall()
{
    if (!m_visit.open(tape, left))
        return false;
    m_visit.hub().fault(u"/recordings/library-roof/segment-033.ts"_s, u"stall"_s);
    m_visit.room().press(u"select"_s);
    return m_visit.playsTo(breaks - 2) && m_visit.waits();
}

bool TapeTroubleTest::leavesByTheButton()
{
    if (!m_visit.reads(TapeVisit::failureButton, u"Back to the shelves"_s))
        return false;
    m_visit.room().press(u"select"_s);
    return m_visit.reads(shop::detailFacts, u"self-hosted"_s);
}

void TapeTroubleTest::aStalledSegmentIsWaitedFor()
{
    QVERIFY(playsIntoAStall());
    QVERIFY(m_visit.second().value_or(breaks) < breaks);
    QCOMPARE(m_visit.kept(), std::optional(left));
    m_visit.hub().calm();
    QVERIFY(m_visit.playsTo(breaks + 4));
    QTRY_VERIFY_WITH_TIMEOUT(m_visit.kept() > left, 20'000);
}

void TapeTroubleTest::aHubThatComesBackIsPlayedOnFrom()
{
    QVERIFY(playsIntoAStall());
    const auto broken = m_visit.second();
    m_visit.hub().stop();
    QVERIFY(m_visit.waits());
    QCOMPARE(m_visit.second(), broken);
    QCOMPARE(m_visit.kept(), std::optional(left));
    m_visit.hub().start();
    const auto next = m_visit.secondAfter(broken);
    QVERIFY(next);
    QVERIFY2(*next >= broken && *next <= *broken + 2, qPrintable(QString::number(*next)));
    QVERIFY(m_visit.kept() >= left);
    QVERIFY(m_visit.playsTo(int(left) + 12));
    QTRY_VERIFY_WITH_TIMEOUT(m_visit.kept() > left, 20'000);
}

void TapeTroubleTest::aHubThatStaysAwayIsSaid()
{
    QVERIFY(playsIntoAStall());
    m_visit.hub().stop();
    QElapsedTimer time;
    time.start();
    QVERIFY(m_visit.reads(TapeVisit::failureButton, u"Back to the shelves"_s, 60s));
    QVERIFY2(time.elapsed() > 14'000, qPrintable(QString::number(time.elapsed()))); // 1, 2, 4 and 8 seconds
    QVERIFY(m_visit.reads(TapeVisit::failureMessage, u"The connection was refused."_s));
    m_visit.hub().start();
    QVERIFY(leavesByTheButton());
    QCOMPARE(m_visit.kept(), std::optional(left));
    QVERIFY(m_visit.reads(shop::detailFacts, u"Resume at 2:05"_s));
}

void TapeTroubleTest::aStreamThatIsNotThereIsSaid()
{
    QVERIFY(m_visit.open(tape, left));
    m_visit.hub().fault(u"/recordings/library-roof/index.m3u8"_s, u"error"_s, {{u"status"_s, 404}});
    m_visit.room().press(u"select"_s);
    QVERIFY(m_visit.reads(TapeVisit::failure, u"TRACKING"_s));
    QVERIFY(m_visit.reads(TapeVisit::failure, u"The hub answered 404."_s));
    QVERIFY(leavesByTheButton());
    QCOMPARE(m_visit.kept(), std::optional(left));
}

void TapeTroubleTest::aTapeWithoutAStreamIsSaid()
{
    QVERIFY(m_visit.open(neverCopied));
    m_visit.room().press(u"select"_s);
    QVERIFY(m_visit.reads(TapeVisit::failure, u"TRACKING"_s));
    QVERIFY(m_visit.reads(TapeVisit::failure, u"This tape has no playable copy on the shelf."_s));
    QVERIFY(leavesByTheButton());
}

QTEST_GUILESS_MAIN(TapeTroubleTest)
#include "TapeTroubleTest.moc"
