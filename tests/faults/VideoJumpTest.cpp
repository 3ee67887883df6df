#include "CountedRecording.h"
#include "TestMain.h"
#include "VideoFixture.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

using CountedRecording::secondShown;

/** The real player with missing segments and restarted timestamps. The recording has 12 segments of 4 seconds. */
class VideoJumpTest : public StreamFixture
{
    Q_OBJECT

private Q_SLOTS:
    void temporarilyMissingSegmentsAreRequestedAgain()
    {
        answerMissingSegments(503);
        VideoFixture fixture(authority());
        const auto observer = observe(fixture);
        fixture.play(m_server->url(u"/tape.m3u8"_s), 12);
        QTRY_VERIFY_WITH_TIMEOUT(m_server->requests().contains(u"/tape%1.ts"_s.arg(lastMissing + 1)), 15'000);
        answerMissingSegments(200);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.shown.count(), 2, 30'000);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 18.5, 15'000);
        QVERIFY(fixture.player->position() < 30);
        QVERIFY(std::abs(secondShown(fixture.picture()) - fixture.player->position()) < 2);
        QVERIFY2(longestStep() < 4, qPrintable(QString::number(longestStep())));
    }

    void permanentlyMissingSegmentsAreSkipped()
    {
        answerMissingSegments(404);
        VideoFixture fixture(authority());
        fixture.play(m_server->url(u"/tape.m3u8"_s), 13);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 37.5, 30'000);
        QCOMPARE(fixture.shown.count(), 2);
        QVERIFY(std::abs(secondShown(fixture.picture()) - fixture.player->position()) < 2);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.ended->count(), 1, 30'000);
        QCOMPARE(fixture.shown.count(), 2);
        QVERIFY(!fixture.hasFailed());
    }

    void positionContinuesWhenTimestampsRestart()
    {
        m_server->setBody(u"/restarted.m3u8"_s, playlistOf({{2, 3}, {0, 1}, {9, 10}}));
        VideoFixture fixture(authority());
        const auto observer = observe(fixture);
        fixture.play(m_server->url(u"/restarted.m3u8"_s));
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 11, 30'000);
        QVERIFY(std::abs(secondShown(fixture.picture()) - (fixture.player->position() - 8)) < 2);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 19, 30'000);
        QVERIFY(std::abs(secondShown(fixture.picture()) - (fixture.player->position() + 20)) < 2);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.ended->count(), 1, 30'000);
        QCOMPARE(fixture.shown.count(), 1);
        QCOMPARE(qRound(fixture.player->duration()), 24);
        QVERIFY2(std::abs(m_positions.last() - 23) < 1.5, qPrintable(QString::number(m_positions.last())));
        QVERIFY2(longestStep() < 3, qPrintable(QString::number(longestStep())));
    }

    // Exact only to a segment, as the reader seeks by the playlist and does not know the timestamps within a segment.
    void startAfterRestartedTimestampsIsReached()
    {
        m_server->setBody(u"/restarted.m3u8"_s, playlistOf({{0, 1}, {7, 8, 9}}));
        VideoFixture fixture(authority());
        fixture.play(m_server->url(u"/restarted.m3u8"_s), 14);
        QVERIFY(fixture.waitForPicture());
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 14.5, 15'000);
        QVERIFY(fixture.player->position() < 17);
        const double expected = fixture.player->position() + 20;
        const int second = secondShown(fixture.picture());
        QVERIFY2(std::abs(second - expected) < CountedRecording::segmentSeconds + 2,
                 qPrintable(QString::number(second)));
        QTRY_COMPARE_WITH_TIMEOUT(fixture.ended->count(), 1, 30'000);
    }

private:
    bool createStreams() override
    {
        return CountedRecording::create(m_folder.path(), u"tape"_s, 48, CountedRecording::Kind::Film);
    }

    void answerMissingSegments(int status)
    {
        for (int segment = firstMissing; segment <= lastMissing; ++segment)
            m_server->answer(u"/tape%1.ts"_s.arg(segment), status);
    }

    // A playlist of groups of segments, with a discontinuity between groups.
    QByteArray playlistOf(const QList<QList<int>>& groups) const
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

    /** Records the position each second of play time, as the resume position is saved. */
    std::unique_ptr<TimeObserver> observe(const VideoFixture& fixture)
    {
        m_positions.clear();
        return fixture.player->addPeriodicTimeObserver(1s, [this](double seconds) { m_positions << seconds; });
    }

    double longestStep() const
    {
        double longest = 0;
        for (qsizetype i = 1; i < m_positions.size(); ++i)
            longest = std::max(longest, std::abs(m_positions[i] - m_positions[i - 1]));
        return longest;
    }

    static constexpr int firstMissing = 4;
    static constexpr int lastMissing = 8;
    QList<double> m_positions;
};

QUILLMERE_TEST(VideoJumpTest, QGuiApplication)

} // namespace quillmere

#include "VideoJumpTest.moc"
