#include "CountedRecording.h"
#include "TestMain.h"
#include "VideoFixture.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

using CountedRecording::secondShown;

/** The real player with missing segments and restarted timestamps. The recording has 12 segments of 4 seconds. */
class VideoJumpTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void temporarilyMissingSegmentsAreRequestedAgain();
    void permanentlyMissingSegmentsAreSkipped();
    void positionContinuesWhenTimestampsRestart();
    void startAfterRestartedTimestampsIsReached();

private:
    void answerMissingSegments(int status);
    QByteArray playlistOf(const QList<QList<int>>& groups) const;
    QByteArray authority() const { return m_folder.read(u"authority.pem"_s); }

    /** Records the position each second of play time, as the resume position is saved. */
    std::unique_ptr<TimeObserver> observe(const VideoFixture& fixture)
    {
        m_positions.clear();
        return fixture.player->addPeriodicTimeObserver(1s, [this](double seconds) { m_positions << seconds; });
    }
    double longestStep() const;

    static constexpr int firstMissing = 4;
    static constexpr int lastMissing = 8;

    StreamFolder m_folder;
    std::unique_ptr<StreamServer> m_server;
    QList<double> m_positions;
};

void VideoJumpTest::initTestCase()
{
    QVERIFY(m_folder.isReady());
    QVERIFY(CountedRecording::create(m_folder.path(), u"tape"_s, 48, CountedRecording::Kind::Film));
    VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
}

void VideoJumpTest::init()
{
    m_server = std::make_unique<StreamServer>(m_folder.path());
}

void VideoJumpTest::answerMissingSegments(int status)
{
    for (int segment = firstMissing; segment <= lastMissing; ++segment)
        m_server->answer(u"/tape%1.ts"_s.arg(segment), status);
}

// A playlist of groups of segments, with a discontinuity between groups.
QByteArray VideoJumpTest::playlistOf(const QList<QList<int>>& groups) const
{
    QByteArray playlist = "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:4\n#EXT-X-PLAYLIST-TYPE:VOD\n";
    for (const QList<int>& group : groups) {
        if (group != groups.first())
            playlist += "#EXT-X-DISCONTINUITY\n";
        for (const int segment : group)
            playlist += "#EXTINF:4,\ntape" + QByteArray::number(segment) + ".ts\n";
    }
    return playlist + "#EXT-X-ENDLIST\n";
}

double VideoJumpTest::longestStep() const
{
    double longest = 0;
    for (qsizetype i = 1; i < m_positions.size(); ++i)
        longest = std::max(longest, std::abs(m_positions[i] - m_positions[i - 1]));
    return longest;
}

void VideoJumpTest::temporarilyMissingSegmentsAreRequestedAgain()
{
    answerMissingSegments(503);
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    QSignalSpy shown(fixture.player.get(), &VideoPlayer::pictureShown);
    const auto observer = observe(fixture);
    fixture.play(m_server->url(u"/tape.m3u8"_s), 12);
    QTRY_VERIFY_WITH_TIMEOUT(m_server->requests().contains(u"/tape%1.ts"_s.arg(lastMissing + 1)), 15'000);
    answerMissingSegments(200);
    QTRY_COMPARE_WITH_TIMEOUT(shown.count(), 2, 30'000);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 18.5, 15'000);
    QVERIFY(fixture.player->position() < 30);
    QVERIFY(std::abs(secondShown(fixture.window.grabWindow()) - fixture.player->position()) < 2);
    QVERIFY2(longestStep() < 4, qPrintable(QString::number(longestStep())));
}

void VideoJumpTest::permanentlyMissingSegmentsAreSkipped()
{
    answerMissingSegments(404);
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    QSignalSpy shown(fixture.player.get(), &VideoPlayer::pictureShown);
    fixture.play(m_server->url(u"/tape.m3u8"_s), 13);
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 37.5, 30'000);
    QCOMPARE(shown.count(), 2);
    QVERIFY(std::abs(secondShown(fixture.window.grabWindow()) - fixture.player->position()) < 2);
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 30'000);
    QCOMPARE(shown.count(), 2);
    QVERIFY(!fixture.hasFailed());
}

void VideoJumpTest::positionContinuesWhenTimestampsRestart()
{
    m_server->setBody(u"/restarted.m3u8"_s, playlistOf({{2, 3}, {0, 1}, {9, 10}}));
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    QSignalSpy shown(fixture.player.get(), &VideoPlayer::pictureShown);
    const auto observer = observe(fixture);
    fixture.play(m_server->url(u"/restarted.m3u8"_s));
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 11, 30'000);
    QVERIFY(std::abs(secondShown(fixture.window.grabWindow()) - (fixture.player->position() - 8)) < 2);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 19, 30'000);
    QVERIFY(std::abs(secondShown(fixture.window.grabWindow()) - (fixture.player->position() + 20)) < 2);
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 30'000);
    QCOMPARE(shown.count(), 1);
    QCOMPARE(qRound(fixture.player->duration()), 24);
    QVERIFY2(std::abs(m_positions.last() - 23) < 1.5, qPrintable(QString::number(m_positions.last())));
    QVERIFY2(longestStep() < 3, qPrintable(QString::number(longestStep())));
}

// Exact only to a segment, as the reader seeks by the playlist and does not know the timestamps within a segment.
void VideoJumpTest::startAfterRestartedTimestampsIsReached()
{
    m_server->setBody(u"/restarted.m3u8"_s, playlistOf({{0, 1}, {7, 8, 9}}));
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_server->url(u"/restarted.m3u8"_s), 14);
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    QVERIFY(fixture.waitForPicture());
    QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 14.5, 15'000);
    QVERIFY(fixture.player->position() < 17);
    const double expected = fixture.player->position() + 20;
    const int second = secondShown(fixture.window.grabWindow());
    QVERIFY2(std::abs(second - expected) < CountedRecording::segmentSeconds + 2, qPrintable(QString::number(second)));
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 30'000);
}

QUILLMERE_TEST(VideoJumpTest, QGuiApplication)

} // namespace quillmere

#include "VideoJumpTest.moc"
