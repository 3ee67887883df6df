#include "CountedRecording.h"
#include "SampleHub.h"
#include "TestMain.h"
#include "VideoFixture.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

const QString channel = u"/live/council/"_s;
const QString playlist = channel + u"index.m3u8"_s;

} // namespace

/** The real player with the sample hub's live channel, whose playlist has six segments of 4 seconds. */
class VideoLiveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
        m_hub = std::make_unique<SampleHub>();
    }

    void init()
    {
        m_hub->reset();
        m_hub->post(u"/log/clear"_s);
    }

    void playbackStartsAtLiveEdgeAndContinues()
    {
        VideoFixture fixture(certificates());
        const int newest = newestSegment();
        fixture.play(QUrl(SampleHub::urlOf(playlist)), 0, PlayerItem::Kind::Live);
        QVERIFY(fixture.waitForPicture());
        const int first = requestedSegments().value(0);
        QVERIFY2(first >= newest - 2, qPrintable(u"%1 of %2"_s.arg(first).arg(newest)));
        QVERIFY(!fixture.player->isSeekable());
        QCOMPARE(fixture.player->duration(), 0.0);
        // Farther than the end of the first playlist.
        const double joined = fixture.player->position();
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > joined + 16, 60'000);
        QCOMPARE(fixture.shown.count(), 1);
        QVERIFY(fixture.newPictures() >= 5);
    }

    void playbackResumesWhenHubReturns()
    {
        VideoFixture fixture(certificates());
        fixture.play(QUrl(SampleHub::urlOf(playlist)), 0, PlayerItem::Kind::Live);
        QVERIFY(fixture.waitForPicture());
        m_hub->stop();
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->isWaiting(), 60'000);
        m_hub->start();
        QTRY_COMPARE_WITH_TIMEOUT(fixture.shown.count(), 2, 90'000);
        QTRY_COMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Playing);
        QVERIFY(!fixture.hasFailed());
    }

    void failingPlaylistIsRetriedUntilItemIsRemoved()
    {
        m_hub->addFault(playlist, u"error"_s);
        VideoFixture fixture(certificates());
        QElapsedTimer time;
        time.start();
        fixture.play(QUrl(SampleHub::urlOf(playlist)), 0, PlayerItem::Kind::Live);
        QTRY_COMPARE_WITH_TIMEOUT(playlistRequestCount(), 3, 60'000);
        QVERIFY2(time.elapsed() >= 16'000, qPrintable(QString::number(time.elapsed())));
        QVERIFY(!fixture.hasFailed());
        m_hub->reset();
        QVERIFY(fixture.waitForPicture(30'000));
        fixture.player->setItem(nullptr);
        m_hub->addFault(playlist, u"error"_s);
        m_hub->post(u"/log/clear"_s);
        QTest::qWait(9'000);
        QCOMPARE(playlistRequestCount(), 0);
    }

    // Uses its own playlist, which repeats the same segments, as the timestamps of the sample hub's channels never
    // restart.
    void playbackContinuesAcrossDiscontinuity()
    {
        constexpr int segments = 3;
        constexpr int window = 4;
        StreamFolder folder;
        QVERIFY(folder.isReady());
        QVERIFY(CountedRecording::create(folder.path(), u"round"_s, segments * CountedRecording::segmentSeconds,
                                         CountedRecording::Kind::Film));
        StreamServer server(folder.path());
        int newest = window - 1;
        const auto publish = [&] {
            const int first = newest - window + 1;
            QByteArray text = "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:4\n#EXT-X-MEDIA-SEQUENCE:" +
                              QByteArray::number(first) + "\n#EXT-X-DISCONTINUITY-SEQUENCE:" +
                              QByteArray::number((first + segments - 1) / segments) + '\n';
            for (int segment = first; segment <= newest; ++segment) {
                if (segment % segments == 0)
                    text += "#EXT-X-DISCONTINUITY\n";
                text += "#EXTINF:4,\nround" + QByteArray::number(segment % segments) + ".ts\n";
            }
            server.setBody(u"/round.m3u8"_s, text);
            ++newest;
        };
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, publish);
        timer.start(CountedRecording::segmentSeconds * 1000);
        publish();
        VideoFixture fixture(folder.read(u"authority.pem"_s));
        fixture.play(server.url(u"/round.m3u8"_s), 0, PlayerItem::Kind::Live);
        QVERIFY(fixture.waitForPicture());
        int loops = 0;
        int last = 0;
        QElapsedTimer time;
        time.start();
        while (loops < 2 && time.elapsed() < 60'000) {
            QTest::qWait(250);
            const int second = CountedRecording::secondShown(fixture.picture());
            loops += second < last;
            last = second;
        }
        QCOMPARE(loops, 2);
        QVERIFY2(time.elapsed() < 40'000, qPrintable(QString::number(time.elapsed())));
        QCOMPARE(fixture.shown.count(), 1);
        QVERIFY(!fixture.hasFailed());
    }

private:
    QList<int> requestedSegments()
    {
        QList<int> numbers;
        const QRegularExpression segment(QRegularExpression::escape(channel) + u"segment-(\\d+)\\.ts"_s);
        const QJsonArray requests = m_hub->requestLog();
        for (const auto& request : requests) {
            if (const auto match = segment.match(request[u"target"_s].toString()); match.hasMatch())
                numbers << match.captured(1).toInt();
        }
        return numbers;
    }

    int newestSegment()
    {
        const QString text = QString::fromLatin1(m_hub->fetchBody(playlist));
        return text.section(u"segment-"_s, -1).section(u'.', 0, 0).toInt();
    }

    qsizetype playlistRequestCount()
    {
        const QJsonArray requests = m_hub->requestLog();
        return std::count_if(requests.begin(), requests.end(),
                             [](const auto& request) { return request[u"target"_s].toString() == playlist; });
    }

    QByteArray certificates() const { return readFile(QStringLiteral(QUILLMERE_HUB_CA)); }

    std::unique_ptr<SampleHub> m_hub;
};

QUILLMERE_TEST(VideoLiveTest, QGuiApplication)

} // namespace quillmere

#include "VideoLiveTest.moc"
