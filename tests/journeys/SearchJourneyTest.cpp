#include "LivingRoom.h"
#include "Picture.h"
#include "SampleHub.h"
#include "Shop.h"

#include <QJsonArray>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/** From the shop to what a word finds, by remote and on a keyboard: the real program, the real hub. */
class SearchJourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theShopOpensTheSearch();
    void aWordTypedWithTheRemoteIsFound();
    void aTypedWordIsFound();
    void aResultOpensItsTape();
    void backReturnsToTheSameResult();
    void theTapeOfAResultPlays();
    void theHubFailsASearch();
    void theAnswerThatComesLastIsShown();
    void backIsTheShopAndTheNextSearchIsEmpty();

private:
    QImage rest();
    bool comesBackTo(const QImage& picture);
    bool reads(const QRectF& area, const QString& text);
    void searchFor(const QString& word);
    QString found(const QString& word);

    const QString m_first = u"fog"_s;
    const QString m_second = u"noise"_s;
    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<LivingRoom> m_room;
    QImage m_resultBefore;
};

/** The picture once nothing moves. */
QImage SearchJourneyTest::rest()
{
    m_room->screen().waitUntilSettled(400ms, 5s);
    return m_room->screen().look();
}

bool SearchJourneyTest::comesBackTo(const QImage& picture)
{
    constexpr int blending = 4;           // of 255
    constexpr double drawnInParts = 1e-5; // of the pixels
    const bool same = m_room->screen().waitUntil(
        [&](const QImage& now) { return picture::difference(now, picture, area::everything, blending) < drawnInParts; },
        20s);
    if (!same) {
        picture.save(u"journey-expected.png"_s);
        m_room->screen().look().save(u"journey-seen.png"_s);
    }
    return same;
}

bool SearchJourneyTest::reads(const QRectF& area, const QString& text)
{
    const bool read = m_room->waitForText(area, text, 20s);
    if (!read)
        m_room->screen().look().save(u"journey-seen.png"_s);
    return read;
}

/** Types a word in place of what stands in the field, and submits it. */
void SearchJourneyTest::searchFor(const QString& word)
{
    constexpr int longest = 12; // letters that may stand there
    for (int letter = 0; letter < longest; ++letter)
        m_room->press(u"BackSpace"_s);
    for (const QChar letter : word)
        m_room->press(QString(letter));
    m_room->press(u"Return"_s);
}

/** What the search says when it has found what the hub has for a word. */
QString SearchJourneyTest::found(const QString& word)
{
    const auto page = m_hub->fetch(u"/api/tv/tapes?page=1&per_page=200&q="_s + word);
    return u"%1 tapes found"_s.arg(page.value(u"items"_s).toArray().size());
}

void SearchJourneyTest::initTestCase()
{
    m_hub = std::make_unique<SampleHub>();
    m_room = std::make_unique<LivingRoom>();
    m_room->switchOn();
    QVERIFY(found(m_first) != found(m_second));
}

void SearchJourneyTest::theShopOpensTheSearch()
{
    QVERIFY(shop::open(*m_room));
    m_room->press(u"select"_s);
    QVERIFY(reads(shop::searchHeader, u"titles and spoken transcripts both"_s));
}

void SearchJourneyTest::aWordTypedWithTheRemoteIsFound()
{
    m_room->press(u"select"_s);
    QVERIFY(reads(shop::keyboard, u"Space"_s));
    // From "a" to "f", "o" and "g".
    const QStringList steps{u"right"_s, u"right"_s,  u"right"_s, u"right"_s, u"right"_s, u"select"_s,
                            u"down"_s,  u"select"_s, u"up"_s,    u"right"_s, u"select"_s};
    for (const QString& step : steps)
        m_room->press(step);
    QVERIFY(reads(shop::searchField, m_first));
    m_room->press(u"play/pause"_s);
    QVERIFY(reads(shop::searchOutcome, found(m_first)));
}

void SearchJourneyTest::aTypedWordIsFound()
{
    searchFor(m_second);
    QVERIFY(reads(shop::searchOutcome, found(m_second)));
    QVERIFY(reads(shop::searchField, m_second));
}

void SearchJourneyTest::aResultOpensItsTape()
{
    m_room->press(u"down"_s);
    m_room->press(u"right"_s);
    m_resultBefore = rest();
    m_room->press(u"select"_s);
    QVERIFY(reads(shop::detailFacts, u"self-hosted"_s));
}

void SearchJourneyTest::backReturnsToTheSameResult()
{
    m_room->press(u"back"_s);
    QVERIFY(comesBackTo(m_resultBefore));
}

void SearchJourneyTest::theTapeOfAResultPlays()
{
    m_room->press(u"select"_s);
    QVERIFY(reads(shop::detailFacts, u"self-hosted"_s));
    m_room->press(u"select"_s);
    QVERIFY(m_room->screen().waitUntil(
        [](const QImage& picture) { return picture::recordedSeconds(picture).value_or(0) >= 1; }, 30s));
    m_room->press(u"back"_s);
    QVERIFY(reads(shop::detailFacts, u"self-hosted"_s));
    m_room->press(u"back"_s);
    QVERIFY(comesBackTo(m_resultBefore));
}

void SearchJourneyTest::theHubFailsASearch()
{
    m_room->press(u"up"_s);
    m_hub->fault(u"/api/tv/tapes"_s, u"error"_s);
    searchFor(m_second);
    QVERIFY(reads(shop::searchOutcome, u"No tapes match “%1”. Try a different word."_s.arg(m_second)));
    m_hub->calm();
    m_room->press(u"x"_s);
    searchFor(m_second);
    QVERIFY(reads(shop::searchOutcome, found(m_second)));
}

void SearchJourneyTest::theAnswerThatComesLastIsShown()
{
    const QString late = found(m_first);
    m_hub->fault(u"/api/tv/tapes.*q="_s + m_first, u"delay"_s, {{u"ms"_s, 120000}});
    searchFor(m_first);
    searchFor(m_second);
    QVERIFY(reads(shop::searchOutcome, found(m_second)));
    m_hub->calm();
    QVERIFY(reads(shop::searchOutcome, late));
    QVERIFY(reads(shop::searchField, m_second));
}

void SearchJourneyTest::backIsTheShopAndTheNextSearchIsEmpty()
{
    m_room->press(u"back"_s);
    QVERIFY(reads(shop::header, u"tapes in stock"_s));
    m_room->press(u"select"_s);
    QVERIFY(reads(shop::searchHeader, u"titles and spoken transcripts both"_s));
    QVERIFY(reads(shop::searchField, u"Search"_s));
}

QTEST_GUILESS_MAIN(SearchJourneyTest)
#include "SearchJourneyTest.moc"
