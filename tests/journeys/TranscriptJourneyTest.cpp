#include "Shop.h"
#include "TapeVisit.h"

#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/** What was said on a tape, read with the remote from its beginning to its end; and a hub that fails meanwhile. */
class TranscriptJourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTranscriptOpensAtItsBeginning();
    void pagesLeadToItsEnd();
    void theEndIsTheEnd();
    void anArrowHeldDownReadsOnTillItIsLetGo();
    void backReturnsToTheTape();
    void aHubThatFailsIsTold();
    void theButtonLeadsBackToTheTape();
    void theNextTimeItIsThere();

private:
    static constexpr QRectF header{90, 40, 1740, 160};
    static constexpr QRectF passages{100, 200, 1720, 880};
    static constexpr QRectF message{200, 480, 1520, 260};
    static constexpr qint64 tape = 7237;

    /** The picture once nothing moves any more. */
    QImage rest()
    {
        m_visit.room().screen().waitUntilSettled(400ms, 20s);
        return m_visit.room().screen().look();
    }

    TapeVisit m_visit;
    QString m_text; ///< as the hub has it
};

void TranscriptJourneyTest::theTranscriptOpensAtItsBeginning()
{
    QVERIFY(m_visit.open(tape));
    const QJsonObject record = m_visit.hub().fetch(u"/api/meetings/%1/transcript"_s.arg(tape));
    m_text = record.value(u"text"_s).toString().simplified();
    QVERIFY(m_text.size() > 10000);
    m_visit.room().press(u"right"_s);
    m_visit.room().press(u"select"_s);
    QVERIFY(m_visit.reads(header, u"THE SPOKEN RECORD"_s));
    QVERIFY(m_visit.reads(header, m_visit.title()));
    QVERIFY(m_visit.reads(header, QLocale(QLocale::English).toString(record.value(u"words"_s).toInt()) + u" words"_s));
    QVERIFY(m_visit.reads(passages, m_text.first(40)));
}

void TranscriptJourneyTest::pagesLeadToItsEnd()
{
    QImage before;
    int pages = 0;
    for (QImage now = rest(); now != before && pages < 100; ++pages) {
        before = now;
        m_visit.room().press(u"play/pause"_s);
        now = rest();
    }
    QVERIFY2(pages > 5 && pages < 100, qPrintable(QString::number(pages)));
    QVERIFY(m_visit.reads(passages, m_text.last(25)));
    QVERIFY(m_visit.reads(header, m_visit.title()));
}

void TranscriptJourneyTest::theEndIsTheEnd()
{
    const QImage before = rest();
    m_visit.room().press(u"down"_s);
    QCOMPARE(rest(), before);
}

void TranscriptJourneyTest::anArrowHeldDownReadsOnTillItIsLetGo()
{
    const QImage end = rest();
    m_visit.room().remote().pushDown(u"up"_s);
    QVERIFY(m_visit.reads(passages, m_text.first(40), 60s));
    m_visit.room().remote().letGo(u"up"_s);
    const QImage beginning = rest();
    QVERIFY(beginning != end);
    m_visit.room().press(u"up"_s);
    QCOMPARE(rest(), beginning);
}

void TranscriptJourneyTest::backReturnsToTheTape()
{
    m_visit.room().press(u"back"_s);
    QVERIFY(m_visit.reads(shop::detailFacts, u"Read the transcript"_s));
}

void TranscriptJourneyTest::aHubThatFailsIsTold()
{
    m_visit.hub().fault(u"/api/meetings/"_s, u"error"_s);
    m_visit.room().press(u"select"_s); // the focus is where it was left
    QVERIFY(m_visit.reads(message, u"Couldn't reach the transcript."_s));
    QVERIFY(m_visit.reads(message, u"503"_s));
}

void TranscriptJourneyTest::theButtonLeadsBackToTheTape()
{
    QVERIFY(m_visit.reads(message, u"Back to the tape"_s));
    m_visit.room().press(u"select"_s);
    QVERIFY(m_visit.reads(shop::detailFacts, u"Read the transcript"_s));
}

void TranscriptJourneyTest::theNextTimeItIsThere()
{
    m_visit.hub().calm();
    m_visit.room().press(u"select"_s);
    QVERIFY(m_visit.reads(passages, m_text.first(40)));
}

QTEST_GUILESS_MAIN(TranscriptJourneyTest)
#include "TranscriptJourneyTest.moc"
