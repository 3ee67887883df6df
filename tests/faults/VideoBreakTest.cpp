#include "Rows.h"
#include "TestMain.h"
#include "VideoFixture.h"

using namespace Qt::StringLiterals;

namespace quillmere {

/** The real player with streams that break in the middle. */
class VideoBreakTest : public StreamFixture
{
    Q_OBJECT

private Q_SLOTS:
    void badSegmentIsSkipped_data() { rows<bool>({"isCut"}, {{"missing", false}, {"cut short", true}}); }
    void badSegmentIsSkipped()
    {
        QFETCH(const bool, isCut);
        if (isCut)
            m_server->cut(u"/part4.ts"_s);
        else
            m_server->answer(u"/part4.ts"_s, 404);
        VideoFixture fixture(authority());
        fixture.play(m_stream, 7);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.ended->count(), 1, 20'000);
        QVERIFY(!fixture.hasFailed());
        QVERIFY(m_server->requests().contains(u"/part5.ts"_s));
    }

    void playerWaitsForStalledSegment()
    {
        m_server->stall(u"/part4.ts"_s);
        VideoFixture fixture(authority());
        fixture.play(m_stream, 7);
        QVERIFY(fixture.waitForPicture());
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->isWaiting(), 10'000);
        QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::WaitingToPlay);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.ended->count(), 1, 30'000);
        QVERIFY(!fixture.hasFailed());
    }

    void playbackResumesWhenServerReturns()
    {
        VideoFixture fixture(authority());
        fixture.play(m_stream, 2.5);
        stopServerWhenRequested(u"/part3.ts"_s);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->isWaiting() && fixture.player->position() > 5, 15'000);
        const double breakPosition = fixture.player->position();
        m_server = std::make_unique<StreamServer>(m_folder.path(), u"server"_s, quint16(m_stream.port()));
        QTRY_COMPARE_WITH_TIMEOUT(fixture.shown.count(), 2, 15'000);
        QVERIFY2(std::abs(fixture.player->position() - breakPosition) < 1,
                 qPrintable(QString::number(fixture.player->position())));
        QTRY_VERIFY(fixture.player->position() > breakPosition + 1);
        QVERIFY(!fixture.hasFailed());
        QCOMPARE(fixture.ended->count(), 0);
    }

    void itemFailsWithCauseWhenServerStaysDown()
    {
        VideoFixture fixture(authority());
        fixture.play(m_stream, 4.5);
        stopServerWhenRequested(u"/part3.ts"_s);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.hasFailed(), 40'000);
        QCOMPARE(int(fixture.failure().cause), int(VideoFailure::Cause::Refused));
        QCOMPARE(fixture.ended->count(), 0);
    }

    void livePlaylistThatStopsGrowingIsReloaded()
    {
        m_server->setBody(u"/live.m3u8"_s,
                          "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:2\n#EXT-X-MEDIA-SEQUENCE:3\n"
                          "#EXTINF:2,\npart3.ts\n#EXTINF:2,\npart4.ts\n");
        VideoFixture fixture(authority());
        fixture.play(m_server->url(u"/live.m3u8"_s), 0, PlayerItem::Kind::Live);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.shown.count(), 1, 15'000);
        QVERIFY(!fixture.player->isSeekable());
        QTRY_COMPARE_WITH_TIMEOUT(fixture.shown.count(), 2, 45'000);
        QVERIFY(!fixture.hasFailed());
        QCOMPARE(fixture.ended->count(), 0);
    }

private:
    /** Stops the server when this path is requested, as if its process had been killed. */
    void stopServerWhenRequested(const QString& path)
    {
        m_server->setUnanswered(path);
        QTRY_VERIFY_WITH_TIMEOUT(m_server->requests().contains(path), 15'000);
        m_server.reset();
    }
};

QUILLMERE_TEST(VideoBreakTest, QGuiApplication)

} // namespace quillmere

#include "VideoBreakTest.moc"
