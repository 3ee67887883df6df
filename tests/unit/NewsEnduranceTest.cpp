#include "NewsController.h"
#include "NewsControllerFixture.h"
#include "TestMain.h"

#include <QTest>

#include <malloc.h>

namespace quillmere {

namespace {

/** The heap memory in use, in bytes. */
qint64 memoryInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return qint64(heap.uordblks) + qint64(heap.hblkhd);
}

/** A hub that answers at once. The tower is lit at every second probe; some answers are errors or malformed. Requests
 * are not recorded. */
class FaultyHub : public HttpClient
{
public:
    int probes = 0;
    int refreshes = 0;

    QCoro::Task<HttpResult> get(HttpRequest request, std::stop_token) override
    {
        co_return request.url.path() == NewsControllerFixture::status ? statusAnswer(++refreshes)
                                                                      : probeAnswer(++probes);
    }

private:
    static HttpResult probeAnswer(int number)
    {
        if (number % 2 == 1)
            return HttpResponse{200, "#EXTM3U"};
        if (number % 3 == 0)
            return tl::unexpected(HttpFailure{HttpFailure::Kind::TimedOut, u"nobody answers"_s});
        return HttpResponse{404, {}};
    }

    static HttpResult statusAnswer(int number)
    {
        switch (number % 5) {
        case 0:
            return HttpResponse{200, "[cut sho"};
        case 1:
            return HttpResponse{500, "<html>"};
        case 2:
            return tl::unexpected(HttpFailure{HttpFailure::Kind::Network, u"no route"_s});
        default:
            return HttpResponse{200, NewsControllerFixture::threeStations()};
        }
    }
};

} // namespace

/** Tests two hours of polling in which the tower alternates between lit and dark and the hub sometimes fails. No
 * request is sent twice, and no memory or object is leaked. */
class NewsEnduranceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void twoHoursOfPollingLeakNothing()
    {
        constexpr int passes = 1200;
        constexpr int warmUp = 200;
        constexpr qint64 allowedBytes = 256 * 1024; // a leak of about 260 bytes per pass would exceed this
        FaultyHub http;
        HubAPI hub(http, QUrl(u"https://hub.example"_s));
        MemoryDefaults defaults;
        Store store(hub, defaults);
        ScriptedClock clock;
        int alive = 0;
        int created = 0;
        NewsController screen;
        screen.setStore(&store);
        screen.setProperty("hub", QVariant::fromValue<HubAPI*>(&hub));
        screen.setProperty("clock", QVariant::fromValue<Clock*>(&clock));
        screen.setCreatePlayer([&](Clock&) {
            ++alive;
            ++created;
            auto player = std::make_shared<ScriptedVideoPlayer>();
            connect(player.get(), &QObject::destroyed, this, [&alive] { --alive; });
            return player;
        });
        screen.appear();
        qint64 before = 0;
        for (int pass = 1; pass <= passes; ++pass) {
            // A pass is over when its pause timer has started. The status is decoded on another thread.
            while (clock.pendingTimers() == 0)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            QCOMPARE(http.probes, pass);
            QCOMPARE(http.refreshes, pass);
            QCOMPARE(screen.isLit(), pass % 2 == 1);
            QCOMPARE(alive, pass % 2);
            if (pass == warmUp)
                before = memoryInUse();
            if (pass < passes)
                clock.advance(6s);
        }
        const qint64 after = memoryInUse();
        QVERIFY2(after - before < allowedBytes, qPrintable(u"%1 bytes more"_s.arg(after - before)));
        QCOMPARE(created, passes / 2);
        screen.disappear();
        QCOMPARE(alive, 0);
        QCOMPARE(clock.pendingTimers(), 0);
    }
};

QUILLMERE_TEST(NewsEnduranceTest, QCoreApplication)

} // namespace quillmere

#include "NewsEnduranceTest.moc"
