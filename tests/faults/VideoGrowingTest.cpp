#include "Rows.h"
#include "TestMain.h"
#include "VideoFixture.h"

using namespace Qt::StringLiterals;

namespace quillmere {

/** The real player with a recording that still grows: its playlist has no end tag and so no duration. */
class VideoGrowingTest : public StreamFixture
{
    Q_OBJECT

private Q_SLOTS:
    void serverFailureIsNotEndOfItem_data()
    {
        rows<QByteArray>({"tag"}, {{"no type", ""}, {"event", "#EXT-X-PLAYLIST-TYPE:EVENT\n"}});
    }
    void serverFailureIsNotEndOfItem()
    {
        QFETCH(const QByteArray, tag);
        serveGrowingPlaylist(tag);
        m_server->setUnanswered(u"/part3.ts"_s);
        VideoFixture fixture(authority());
        fixture.play(m_server->url(u"/growing.m3u8"_s));
        QTRY_VERIFY_WITH_TIMEOUT(m_server->requests().contains(u"/part3.ts"_s), 15'000);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 3, 15'000);
        m_server.reset();
        QTRY_VERIFY_WITH_TIMEOUT(fixture.hasFailed() || fixture.ended->count() > 0, 60'000);
        QCOMPARE(fixture.ended->count(), 0);
        QCOMPARE(int(fixture.failure().cause), int(VideoFailure::Cause::Refused));
    }

    void itemEndsWhenPlaylistIsComplete()
    {
        serveGrowingPlaylist("#EXT-X-PLAYLIST-TYPE:EVENT\n");
        VideoFixture fixture(authority());
        fixture.play(m_server->url(u"/growing.m3u8"_s), 8);
        QVERIFY(fixture.waitForPicture());
        QVERIFY(!fixture.player->isSeekable());
        m_server->setBody(u"/growing.m3u8"_s, m_folder.read(u"index.m3u8"_s));
        QTRY_COMPARE_WITH_TIMEOUT(fixture.ended->count(), 1, 45'000);
        QVERIFY(!fixture.hasFailed());
        QVERIFY(fixture.player->isSeekable());
    }

private:
    /** Serves a playlist with all segments and this type tag, but without end tag. */
    void serveGrowingPlaylist(const QByteArray& tag)
    {
        QByteArray playlist = m_folder.read(u"index.m3u8"_s);
        playlist.replace("#EXT-X-PLAYLIST-TYPE:VOD\n", tag).replace("#EXT-X-ENDLIST\n", "");
        m_server->setBody(u"/growing.m3u8"_s, playlist);
    }
};

QUILLMERE_TEST(VideoGrowingTest, QGuiApplication)

} // namespace quillmere

#include "VideoGrowingTest.moc"
