#include "Picture.h"
#include "SampleHub.h"
#include "Shop.h"
#include "SimulatedViewer.h"
#include "TestMain.h"

#include <QJsonArray>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

/**
 * From the shop to search results, typed with the remote and with a keyboard. Uses the real program and the sample hub.
 */
class SearchJourneyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void searchOpensFromShop();
    void wordTypedWithRemoteIsFound();
    void wordTypedOnKeyboardIsFound();
    void selectedResultOpensItsTape();
    void backReturnsToSameResult();
    void tapeOfResultPlays();
    void failedSearchShowsNoMatch();
    void lastAnswerToArriveIsShown();
    void backReturnsToShopAndNextSearchIsEmpty();

private:
    QImage pictureAtRest();
    bool becomesEqualTo(const QImage& picture);
    bool waitForText(const QRectF& area, const QString& text);
    void searchFor(const QString& word);
    QString expectedOutcome(const QString& word);

    const QString m_first = u"fog"_s;
    const QString m_second = u"noise"_s;
    std::unique_ptr<SampleHub> m_hub;
    std::unique_ptr<SimulatedViewer> m_viewer;
    QImage m_resultBefore;
};

/** The picture once it no longer changes. */
QImage SearchJourneyTest::pictureAtRest()
{
    m_viewer->screen().waitUntilStill(400ms, 5s);
    return m_viewer->screen().grab();
}

bool SearchJourneyTest::becomesEqualTo(const QImage& picture)
{
    constexpr int blending = 4;             // of 255, in any colour channel
    constexpr double toleratedShare = 1e-5; // share of the pixels that may differ more
    const bool same = m_viewer->screen().waitUntil(
        [&](const QImage& now) {
            return picture::difference(now, picture, area::everything, blending) < toleratedShare;
        },
        20s);
    if (!same) {
        picture.save(u"journey-expected.png"_s);
        m_viewer->screen().grab().save(u"journey-seen.png"_s);
    }
    return same;
}

bool SearchJourneyTest::waitForText(const QRectF& area, const QString& text)
{
    const bool read = m_viewer->waitForText(area, text, 20s);
    if (!read)
        m_viewer->screen().grab().save(u"journey-seen.png"_s);
    return read;
}

/** Replaces the text of the search field and submits it. */
void SearchJourneyTest::searchFor(const QString& word)
{
    constexpr int longest = 12; // maximum number of letters in the field
    for (int letter = 0; letter < longest; ++letter)
        m_viewer->press(u"BackSpace"_s);
    for (const QChar letter : word)
        m_viewer->press(QString(letter));
    m_viewer->press(u"Return"_s);
}

/** The text that the search shows when it has found the hub's tapes for a word. */
QString SearchJourneyTest::expectedOutcome(const QString& word)
{
    const auto page = m_hub->fetch(u"/api/tv/tapes?page=1&per_page=200&q="_s + word);
    return u"%1 tapes found"_s.arg(page.value(u"items"_s).toArray().size());
}

void SearchJourneyTest::initTestCase()
{
    m_hub = std::make_unique<SampleHub>();
    m_viewer = std::make_unique<SimulatedViewer>();
    m_viewer->switchOn();
    QVERIFY(expectedOutcome(m_first) != expectedOutcome(m_second));
}

void SearchJourneyTest::searchOpensFromShop()
{
    QVERIFY(shop::open(*m_viewer));
    m_viewer->press(u"select"_s);
    QVERIFY(waitForText(shop::searchHeader, u"titles and spoken transcripts both"_s));
}

void SearchJourneyTest::wordTypedWithRemoteIsFound()
{
    m_viewer->press(u"select"_s);
    QVERIFY(waitForText(shop::keyboard, u"Space"_s));
    // Moves from "a" to "f", "o" and "g" and selects each.
    const QStringList steps{u"right"_s, u"right"_s,  u"right"_s, u"right"_s, u"right"_s, u"select"_s,
                            u"down"_s,  u"select"_s, u"up"_s,    u"right"_s, u"select"_s};
    for (const QString& step : steps)
        m_viewer->press(step);
    QVERIFY(waitForText(shop::searchField, m_first));
    m_viewer->press(u"play/pause"_s);
    QVERIFY(waitForText(shop::searchOutcome, expectedOutcome(m_first)));
}

void SearchJourneyTest::wordTypedOnKeyboardIsFound()
{
    searchFor(m_second);
    QVERIFY(waitForText(shop::searchOutcome, expectedOutcome(m_second)));
    QVERIFY(waitForText(shop::searchField, m_second));
}

void SearchJourneyTest::selectedResultOpensItsTape()
{
    m_viewer->press(u"down"_s);
    m_viewer->press(u"right"_s);
    m_resultBefore = pictureAtRest();
    m_viewer->press(u"select"_s);
    QVERIFY(waitForText(shop::detailFacts, u"self-hosted"_s));
}

void SearchJourneyTest::backReturnsToSameResult()
{
    m_viewer->press(u"back"_s);
    QVERIFY(becomesEqualTo(m_resultBefore));
}

void SearchJourneyTest::tapeOfResultPlays()
{
    m_viewer->press(u"select"_s);
    QVERIFY(waitForText(shop::detailFacts, u"self-hosted"_s));
    m_viewer->press(u"select"_s);
    QVERIFY(m_viewer->screen().waitUntil(
        [](const QImage& picture) { return picture::recordedSeconds(picture).value_or(0) >= 1; }, 30s));
    m_viewer->press(u"back"_s);
    QVERIFY(waitForText(shop::detailFacts, u"self-hosted"_s));
    m_viewer->press(u"back"_s);
    QVERIFY(becomesEqualTo(m_resultBefore));
}

void SearchJourneyTest::failedSearchShowsNoMatch()
{
    m_viewer->press(u"up"_s);
    m_hub->addFault(u"/api/tv/tapes"_s, u"error"_s);
    searchFor(m_second);
    QVERIFY(waitForText(shop::searchOutcome, u"No tapes match “%1”. Try a different word."_s.arg(m_second)));
    m_hub->reset();
    m_viewer->press(u"x"_s);
    searchFor(m_second);
    QVERIFY(waitForText(shop::searchOutcome, expectedOutcome(m_second)));
}

void SearchJourneyTest::lastAnswerToArriveIsShown()
{
    const QString late = expectedOutcome(m_first);
    m_hub->addFault(u"/api/tv/tapes.*q="_s + m_first, u"delay"_s, {{u"ms"_s, 120000}});
    searchFor(m_first);
    searchFor(m_second);
    QVERIFY(waitForText(shop::searchOutcome, expectedOutcome(m_second)));
    m_hub->reset();
    QVERIFY(waitForText(shop::searchOutcome, late));
    QVERIFY(waitForText(shop::searchField, m_second));
}

void SearchJourneyTest::backReturnsToShopAndNextSearchIsEmpty()
{
    m_viewer->press(u"back"_s);
    QVERIFY(waitForText(shop::header, u"tapes in stock"_s));
    m_viewer->press(u"select"_s);
    QVERIFY(waitForText(shop::searchHeader, u"titles and spoken transcripts both"_s));
    QVERIFY(waitForText(shop::searchField, u"Search"_s));
}

QUILLMERE_TEST(SearchJourneyTest, QCoreApplication)

} // namespace quillmere

#include "SearchJourneyTest.moc"
