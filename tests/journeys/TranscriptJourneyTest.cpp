#include "Shop.h"
#include "TapeVisit.h"
#include "TestMain.h"

#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

/**
 * The transcript of a tape, read with the remote from beginning to end, and a hub that fails. Uses the real program and
 * the sample hub.
 */
class TranscriptJourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void transcriptOpensAtItsBeginning();
    void pageKeysReachEnd();
    void downAtEndHasNoEffect();
    void heldArrowScrollsToBeginning();
    void backReturnsToTape();
    void failedRequestShowsMessage();
    void buttonReturnsToTape();
    void transcriptIsShownWhenHubRecovers();

private:
    static constexpr QRectF header{90, 40, 1740, 160};
    static constexpr QRectF passages{100, 200, 1720, 880};
    static constexpr QRectF message{200, 480, 1520, 260};
    static constexpr qint64 tape = 7237;

    /** The picture once it no longer changes. */
    QImage pictureAtRest()
    {
        m_visit.viewer().screen().waitUntilStill(400ms, 20s);
        return m_visit.viewer().screen().grab();
    }

    TapeVisit m_visit;
    QString m_text; ///< the transcript's text from the hub
};

void TranscriptJourneyTest::transcriptOpensAtItsBeginning()
{
    QVERIFY(m_visit.open(tape));
    const QJsonObject record = m_visit.hub().fetch(u"/api/meetings/%1/transcript"_s.arg(tape));
    m_text = record.value(u"text"_s).toString().simplified();
    QVERIFY(m_text.size() > 10000);
    m_visit.viewer().press(u"right"_s);
    m_visit.viewer().press(u"select"_s);
    QVERIFY(m_visit.waitForText(header, u"THE SPOKEN RECORD"_s));
    QVERIFY(m_visit.waitForText(header, m_visit.expectedTitle()));
    QVERIFY(m_visit.waitForText(header,
                                QLocale(QLocale::English).toString(record.value(u"words"_s).toInt()) + u" words"_s));
    QVERIFY(m_visit.waitForText(passages, m_text.first(40)));
}

void TranscriptJourneyTest::pageKeysReachEnd()
{
    QImage before;
    int pages = 0;
    for (QImage now = pictureAtRest(); now != before && pages < 100; ++pages) {
        before = now;
        m_visit.viewer().press(u"play/pause"_s);
        now = pictureAtRest();
    }
    QVERIFY2(pages > 5 && pages < 100, qPrintable(QString::number(pages)));
    QVERIFY(m_visit.waitForText(passages, m_text.last(25)));
    QVERIFY(m_visit.waitForText(header, m_visit.expectedTitle()));
}

void TranscriptJourneyTest::downAtEndHasNoEffect()
{
    const QImage before = pictureAtRest();
    m_visit.viewer().press(u"down"_s);
    QCOMPARE(pictureAtRest(), before);
}

void TranscriptJourneyTest::heldArrowScrollsToBeginning()
{
    const QImage end = pictureAtRest();
    m_visit.viewer().remote().keyDown(u"up"_s);
    QVERIFY(m_visit.waitForText(passages, m_text.first(40), 60s));
    m_visit.viewer().remote().keyUp(u"up"_s);
    const QImage beginning = pictureAtRest();
    QVERIFY(beginning != end);
    m_visit.viewer().press(u"up"_s);
    QCOMPARE(pictureAtRest(), beginning);
}

void TranscriptJourneyTest::backReturnsToTape()
{
    m_visit.viewer().press(u"back"_s);
    QVERIFY(m_visit.waitForText(shop::detailFacts, u"Read the transcript"_s));
}

void TranscriptJourneyTest::failedRequestShowsMessage()
{
    m_visit.hub().addFault(u"/api/meetings/"_s, u"error"_s);
    m_visit.viewer().press(u"select"_s); // the focus is still on the transcript button
    QVERIFY(m_visit.waitForText(message, u"Couldn't reach the transcript."_s));
    QVERIFY(m_visit.waitForText(message, u"503"_s));
}

void TranscriptJourneyTest::buttonReturnsToTape()
{
    QVERIFY(m_visit.waitForText(message, u"Back to the tape"_s));
    m_visit.viewer().press(u"select"_s);
    QVERIFY(m_visit.waitForText(shop::detailFacts, u"Read the transcript"_s));
}

void TranscriptJourneyTest::transcriptIsShownWhenHubRecovers()
{
    m_visit.hub().reset();
    m_visit.viewer().press(u"select"_s);
    QVERIFY(m_visit.waitForText(passages, m_text.first(40)));
}

QUILLMERE_TEST(TranscriptJourneyTest, QCoreApplication)

} // namespace quillmere

#include "TranscriptJourneyTest.moc"
