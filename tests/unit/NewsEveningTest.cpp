#include "NewsController.h"
#include "NewsOnScript.h"

#include <QTest>

#include <malloc.h>

namespace {

/** Bytes that the program has and that are not free. */
qint64 memoryInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return qint64(heap.uordblks) + qint64(heap.hblkhd);
}

/** A hub that answers at once: its tower is lit every other time, and now and then something is wrong. It keeps nothing. */
class FaultyHub : public HttpClient
{
public:
    int probes = 0;
    int refreshes = 0;

    QCoro::Task<HttpResult> get(HttpRequest request, CancelToken) override
    {
        co_return request.url.path() == NewsOnScript::status ? refreshed(++refreshes) : probed(++probes);
    }

private:
    static HttpResult probed(int number)
    {
        if (number % 2 == 1)
            return HttpResponse{200, "#EXTM3U"};
        if (number % 3 == 0)
            return tl::unexpected(HttpFailure{HttpFailure::Kind::TimedOut, u"nobody answers"_s});
        return HttpResponse{404, {}};
    }

    static HttpResult refreshed(int number)
    {
        switch (number % 5) {
        case 0:
            return HttpResponse{200, "[cut sho"};
        case 1:
            return HttpResponse{500, "<html>"};
        case 2:
            return tl::unexpected(HttpFailure{HttpFailure::Kind::Network, u"no route"_s});
        default:
            return HttpResponse{200, NewsOnScript::threeStations()};
        }
    }
};

} // namespace

/** Two hours of watching, alternately lit and dark, with faults: nothing is asked twice, and nothing is left. */
class NewsEveningTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void twoHoursLeaveNothingBehind();
};

void NewsEveningTest::twoHoursLeaveNothingBehind()
{
    constexpr int passes = 1200;
    constexpr int warmUp = 200;
    constexpr qint64 allowed = 256 * 1024; // some hundred bytes a pass would be more
    FaultyHub http;
    HubAPI hub(http, QUrl(u"https://hub.example"_s));
    MemoryDefaults defaults;
    Store store(hub, defaults);
    ScriptedClock clock;
    Timepiece timepiece(clock);
    int alive = 0;
    int made = 0;
    NewsController screen;
    screen.setStore(&store);
    screen.setHub(&hub);
    screen.setTimepiece(&timepiece);
    screen.setMakePlayer([&](Clock&) {
        ++alive;
        ++made;
        auto player = std::make_shared<ScriptedVideoPlayer>();
        connect(player.get(), &QObject::destroyed, this, [&alive] { --alive; });
        return player;
    });
    screen.appear();
    qint64 before = 0;
    for (int pass = 1; pass <= passes; ++pass) {
        // The pass is over when its pause has begun; the status is decoded on a thread.
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
    QVERIFY2(after - before < allowed, qPrintable(u"%1 bytes more"_s.arg(after - before)));
    QCOMPARE(made, passes / 2);
    screen.disappear();
    QCOMPARE(alive, 0);
    QCOMPARE(clock.pendingTimers(), 0);
}

QTEST_GUILESS_MAIN(NewsEveningTest)
#include "NewsEveningTest.moc"
