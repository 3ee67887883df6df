#include "HubURL.h"
#include "NewsController.h"
#include "NewsControllerFixture.h"
#include "Rows.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

namespace quillmere {

namespace {

const QByteArray reordered = R"({"news": {"channels": {"2": {"label": "Two", "path": "two"}}}})";
const QString two = u"/live/two/index.m3u8"_s;

} // namespace

/** Tests which station of the news channel is on screen, and how the viewer changes it. */
class NewsStationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_news = std::make_unique<NewsControllerFixture>(); }
    void cleanup() { m_news.reset(); }

    void withoutChannelsThereIsOneStationAndNoTuner()
    {
        m_news->open(false);
        QCOMPARE(screen().stations(), QList<TunerStation>({{u"5"_s, u"5 O'Clock News"_s, m_news->five}}));
        QCOMPARE(screen().currentStation(), screen().stations().constFirst());
        QVERIFY(!screen().hasTuner());
    }

    void tunerIsShownForTwoStations()
    {
        m_news->open(false, R"({"news": {"channels": {"7": {"label": "Seven", "path": "seven"}}}})");
        QCOMPARE(screen().stations().size(), 2);
        QVERIFY(screen().hasTuner());
        QCOMPARE(m_news->number(), u"5"_s);
    }

    void channelWithoutPathShowsNoTuner()
    {
        m_news->open(false, R"({"news": {"channels": {"7": {"label": "Seven", "path": ""}}}})");
        QVERIFY(!screen().hasTuner());
    }

    void unchangedStationsAreNotNotified()
    {
        openThree(true);
        QSignalSpy stations(&screen(), &NewsController::stationsChanged);
        QSignalSpy station(&screen(), &NewsController::currentStationChanged);
        m_news->pause();
        m_news->pass(true, m_news->five, m_news->threeStations());
        QCOMPARE(stations.count(), 0);
        QCOMPARE(station.count(), 0);
    }

    void pickingStationTunesToIt()
    {
        openThree(true);
        const auto callsBefore = m_news->calls.last();
        pick(1);
        QCOMPARE(callsBefore->last(2), QStringList({u"pause"_s, u"clearItem"_s}));
        QCOMPARE(m_news->state(), u"checking standby"_s);
        QCOMPARE(screen().selected(), screen().stations().at(1));
        QCOMPARE(m_news->number(), u"7"_s);
        QVERIFY(m_news->isWaitingFor(m_news->seven));
        m_news->pass(false, m_news->seven, m_news->threeStations());
        QCOMPARE(m_news->players.size(), 1);
        m_news->pause();
        m_news->probe(true, m_news->seven);
        QCOMPARE(m_news->players.size(), 2);
        QCOMPARE(m_news->player()->item()->url(), *hubURL(m_news->seven));
        QCOMPARE(screen().shownStationNumbers(), QStringList{u"7"_s});
    }

    void pickingCurrentStationChangesNothing()
    {
        openThree(true);
        const int requestCount = m_news->http.count();
        const auto callsBefore = *m_news->calls.last();
        pick(0);
        QCOMPARE(m_news->state(), u"live player lit"_s);
        QVERIFY(!screen().selected());
        QCOMPARE(m_news->http.count(), requestCount);
        QCOMPARE(*m_news->calls.last(), callsBefore);
    }

    void stationWithSameNumberIsSameStation()
    {
        m_news->open(true, R"({"news": {"channels": {"5": {"label": "Another", "path": "another"}}}})");
        QCOMPARE(screen().stations().size(), 2);
        QVERIFY(screen().hasTuner());
        pick(1);
        QVERIFY(screen().isLit());
        QVERIFY(!screen().selected());
        QCOMPARE(screen().currentStation().path, m_news->five);
    }

    void pickingDuringProbeEndsInChecking()
    {
        openThree(true);
        m_news->pause();
        const int probe = m_news->http.waitingFor(m_news->five);
        QStringList seen;
        connect(&screen(), &NewsController::checkingChanged, this,
                [&] { seen.append(screen().isChecking() ? u"checking"_s : u"answered"_s); });
        pick(1);
        QVERIFY(m_news->http.wasCancelled(probe));
        // The cancelled probe answers false, which counts as an answer; then polling of the new station starts.
        QCOMPARE(seen, QStringList({u"checking"_s, u"answered"_s, u"checking"_s}));
        QVERIFY(!screen().isLive());
        QCOMPARE(m_news->requests(m_news->seven), 1);
        m_news->pass(true, m_news->seven, m_news->threeStations());
        QVERIFY(screen().isLit());
        QCOMPARE(m_news->clock.pendingTimers(), 1);
    }

    void pickingDuringRefreshCancelsRefresh()
    {
        openThree(false);
        m_news->pause();
        m_news->probe(true);
        const int refresh = m_news->http.waitingFor(m_news->status);
        pick(2);
        QVERIFY(m_news->http.wasCancelled(refresh));
        QCOMPARE(m_news->state(), u"checking standby"_s);
        m_news->pass(true, m_news->nine, m_news->threeStations());
        QVERIFY(screen().isLit());
        m_news->pause();
        QCOMPARE(m_news->requests(m_news->nine), 2);
        QCOMPARE(m_news->requests(m_news->five), 2);
    }

    void pickingDuringPauseProbesAtOnce()
    {
        openThree(false);
        pick(1);
        QCOMPARE(m_news->clock.pendingTimers(), 0);
        QVERIFY(m_news->isWaitingFor(m_news->seven));
        m_news->clock.advance(1h);
        QCOMPARE(m_news->requests(m_news->five), 1);
    }

    void pickedStationWithSamePathKeepsPolling()
    {
        m_news->open(true, R"({"news": {"channels": {"7": {"label": "Seven", "path": "/live/news/index.m3u8"}}}})");
        const int requestCount = m_news->http.count();
        pick(1);
        QCOMPARE(m_news->number(), u"7"_s);
        QCOMPARE(m_news->state(), u"checking standby"_s);
        QCOMPARE(m_news->http.count(), requestCount);
        m_news->pause();
        m_news->probe(true);
        QCOMPARE(m_news->state(), u"live player lit"_s);
        QCOMPARE(screen().shownStationNumbers(), QStringList{u"7"_s});
    }

    void pickedStationIsKeptWhenStatusOmitsIt()
    {
        openThree(false);
        pick(1);
        m_news->pass(true, m_news->seven, "{}");
        QVERIFY(!screen().hasTuner());
        QCOMPARE(m_news->number(), u"7"_s);
        QVERIFY(screen().isLit());
        m_news->pause();
        QVERIFY(m_news->isWaitingFor(m_news->seven));
    }

    void pickedStationIsForgottenWhenScreenCloses()
    {
        openThree(false);
        pick(1);
        screen().disappear();
        NewsController next;
        next.setStore(m_news->store.get());
        QVERIFY(!next.selected());
        QCOMPARE(next.currentStation().number, u"5"_s);
    }

    void reorderedStationsChangeCurrentStation()
    {
        m_news->open(false, reordered);
        QCOMPARE(m_news->number(), u"2"_s);
        QVERIFY(m_news->isWaitingFor(two));
        QVERIFY(screen().isChecking());
        QVERIFY(!screen().selected());
        QCOMPARE(m_news->clock.pendingTimers(), 0);
    }

    void reorderingWhileLitKeepsPlayerUntilNewTowerIsDark()
    {
        m_news->open(true, reordered);
        QCOMPARE(m_news->state(), u"checking live player lit"_s);
        QCOMPARE(screen().shownStationNumbers(), QStringList{u"2"_s});
        const QPointer<ScriptedVideoPlayer> player = m_news->player();
        m_news->pass(true, two, reordered);
        QCOMPARE(screen().player(), player.data());
        QCOMPARE(m_news->players.size(), 1);
        m_news->pause();
        m_news->pass(false, two, reordered);
        QVERIFY(!player);
        QVERIFY(screen().isOnStandby());
    }

    void statusSetDuringProbeCancelsProbe()
    {
        m_news->open(true);
        m_news->pause();
        const int probe = m_news->http.waitingFor(m_news->five);
        TVStatus status;
        status.news.hlsURL = u"/live/other.m3u8"_s;
        m_news->store->setStatus(status);
        QVERIFY(m_news->http.wasCancelled(probe));
        QCOMPARE(m_news->state(), u"checking standby"_s);
        QVERIFY(m_news->isWaitingFor(u"/live/other.m3u8"_s));
    }

    void reorderingWithSamePathKeepsPolling()
    {
        m_news->open(false, R"({"news": {"channels": {"2": {"label": "Two", "path": "/live/news/index.m3u8"}}}})");
        QCOMPARE(m_news->number(), u"2"_s);
        QVERIFY(!screen().isChecking());
        QCOMPARE(m_news->clock.pendingTimers(), 1);
    }

    void channelKeysStepThroughStationsInCircle()
    {
        openThree(false);
        QStringList seen;
        for (const int key : {Qt::Key_ChannelUp, Qt::Key_ChannelUp, Qt::Key_ChannelUp, Qt::Key_ChannelDown,
                              Qt::Key_ChannelDown, Qt::Key_ChannelDown}) {
            QVERIFY(screen().press(key));
            seen.append(m_news->number());
            QVERIFY(screen().isChecking());
        }
        QCOMPARE(seen, QStringList({u"7"_s, u"9"_s, u"5"_s, u"9"_s, u"7"_s, u"5"_s}));
    }

    void channelKeysSkipStationsThatCannotBePicked()
    {
        m_news->open(false, R"({"news": {"channels": {"5": {"label": "Another", "path": "another"},
            "7": {"label": "Seven", "path": "seven"}}}})");
        QCOMPARE(screen().stations().size(), 3);
        screen().press(Qt::Key_ChannelUp);
        QCOMPARE(screen().currentStation().path, m_news->seven);
        screen().press(Qt::Key_ChannelUp);
        QCOMPARE(screen().currentStation().path, m_news->five);
        screen().press(Qt::Key_ChannelDown);
        screen().press(Qt::Key_ChannelDown);
        QCOMPARE(screen().currentStation().path, u"/live/another/index.m3u8"_s);
    }

    void channelKeysStepFromStationNoLongerListed_data()
    {
        rows<Qt::Key, QString>({"key", "station"},
                               {{"up", Qt::Key_ChannelUp, u"5"_s}, {"down", Qt::Key_ChannelDown, u"9"_s}});
    }

    void channelKeysStepFromStationNoLongerListed()
    {
        QFETCH(const Qt::Key, key);
        openThree(false);
        screen().pick(m_news->station(u"13"_s, u"/live/thirteen.m3u8"_s));
        screen().press(key);
        QTEST(m_news->number(), "station");
    }

    void channelKeysFindStationWithChangedLabel()
    {
        openThree(false);
        screen().pick(m_news->station(u"7"_s, m_news->seven));
        QVERIFY(!screen().stations().contains(screen().currentStation()));
        screen().press(Qt::Key_ChannelUp);
        QCOMPARE(m_news->number(), u"9"_s);
    }

    void channelKeysChangeNothingWithOneStation()
    {
        m_news->open(true);
        QVERIFY(screen().press(Qt::Key_ChannelUp));
        QVERIFY(screen().press(Qt::Key_ChannelDown));
        QVERIFY(screen().isLit());
        QVERIFY(!screen().selected());
    }

    void otherKeysAreNotHandled()
    {
        openThree(true);
        for (const int key : {Qt::Key_Back, Qt::Key_Up, Qt::Key_Left, Qt::Key_Select, Qt::Key_MediaTogglePlayPause})
            QVERIFY(!screen().press(key));
        QVERIFY(screen().isLit());
    }

private:
    NewsController& screen() { return *m_news->screen; }
    void openThree(bool lit) { m_news->open(lit, m_news->threeStations()); }
    void pick(int index) { screen().pick(screen().stations().at(index)); }

    std::unique_ptr<NewsControllerFixture> m_news;
};

QUILLMERE_TEST(NewsStationsTest, QCoreApplication)

} // namespace quillmere

#include "NewsStationsTest.moc"
