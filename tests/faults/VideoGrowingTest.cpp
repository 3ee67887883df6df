#include "TestMain.h"
#include "VideoFixture.h"

using namespace Qt::StringLiterals;

namespace quillmere {

/** The real player with a recording that still grows: its playlist has no end tag and so no duration. */
class VideoGrowingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void serverFailureIsNotEndOfItem_data();
    void serverFailureIsNotEndOfItem();
    void itemEndsWhenPlaylistIsComplete();

private:
    QByteArray growingPlaylist(const QByteArray& type) const;
    QByteArray authority() const { return m_folder.read(u"authority.pem"_s); }

    StreamFolder m_folder;
    std::unique_ptr<StreamServer> m_server;
    QUrl m_stream;
};

void VideoGrowingTest::initTestCase()
{
    QVERIFY(m_folder.isReady());
    VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
}

void VideoGrowingTest::init()
{
    m_server = std::make_unique<StreamServer>(m_folder.path());
    m_stream = m_server->url(u"/growing.m3u8"_s);
}

/** The playlist with all segments, but without end tag; `type` is the value of its type tag, empty for no tag. */
QByteArray VideoGrowingTest::growingPlaylist(const QByteArray& type) const
{
    const QByteArray tag = type.isEmpty() ? QByteArray() : "#EXT-X-PLAYLIST-TYPE:" + type + '\n';
    return m_folder.read(u"index.m3u8"_s)
        .replace("#EXT-X-PLAYLIST-TYPE:VOD\n", tag)
        .replace("#EXT-X-ENDLIST\n", QByteArray());
}

void VideoGrowingTest::serverFailureIsNotEndOfItem_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("no type") << QByteArray();
    QTest::newRow("event") << QByteArray("EVENT");
}

void VideoGrowingTest::serverFailureIsNotEndOfItem()
{
    QFETCH(const QByteArray, type);
    m_server->setBody(u"/growing.m3u8"_s, growingPlaylist(type));
    m_server->setUnanswered(u"/part3.ts"_s);
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_stream);
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    QTRY_VERIFY_WITH_TIMEOUT(m_server->requests().contains(u"/part3.ts"_s), 15'000);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 3, 15'000);
    m_server.reset();
    QTRY_VERIFY_WITH_TIMEOUT(fixture.hasFailed() || ended.count() > 0, 60'000);
    QCOMPARE(ended.count(), 0);
    QCOMPARE(int(fixture.failure().cause), int(VideoFailure::Cause::Refused));
}

void VideoGrowingTest::itemEndsWhenPlaylistIsComplete()
{
    m_server->setBody(u"/growing.m3u8"_s, growingPlaylist("EVENT"));
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_stream, 8);
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    QVERIFY(fixture.waitForPicture());
    QVERIFY(!fixture.player->isSeekable());
    m_server->setBody(u"/growing.m3u8"_s, m_folder.read(u"index.m3u8"_s));
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 45'000);
    QVERIFY(!fixture.hasFailed());
    QVERIFY(fixture.player->isSeekable());
}

QUILLMERE_TEST(VideoGrowingTest, QGuiApplication)

} // namespace quillmere

#include "VideoGrowingTest.moc"
