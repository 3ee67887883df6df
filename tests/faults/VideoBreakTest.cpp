#include "TestMain.h"
#include "VideoFixture.h"

using namespace Qt::StringLiterals;

namespace quillmere {

/** The real player with streams that break in the middle. The stream has six segments of two seconds. */
class VideoBreakTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void badSegmentIsSkipped_data();
    void badSegmentIsSkipped();
    void playerWaitsForStalledSegment();
    void playbackResumesWhenServerReturns();
    void itemFailsWithCauseWhenServerStaysDown();
    void livePlaylistThatStopsGrowingIsReloaded();

private:
    void stopServerWhenRequested(const QString& path);
    QByteArray authority() const { return m_folder.read(u"authority.pem"_s); }

    StreamFolder m_folder;
    std::unique_ptr<StreamServer> m_server;
    QUrl m_stream;
};

void VideoBreakTest::initTestCase()
{
    QVERIFY(m_folder.isReady());
    VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
}

void VideoBreakTest::init()
{
    m_server = std::make_unique<StreamServer>(m_folder.path());
    m_stream = m_server->url(u"/index.m3u8"_s);
}

void VideoBreakTest::badSegmentIsSkipped_data()
{
    QTest::addColumn<bool>("isCut");
    QTest::newRow("missing") << false;
    QTest::newRow("cut short") << true;
}

void VideoBreakTest::badSegmentIsSkipped()
{
    QFETCH(const bool, isCut);
    if (isCut)
        m_server->cut(u"/part4.ts"_s);
    else
        m_server->answer(u"/part4.ts"_s, 404);
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_stream, 7);
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 20'000);
    QVERIFY(!fixture.hasFailed());
    QVERIFY(m_server->requests().contains(u"/part5.ts"_s));
}

void VideoBreakTest::playerWaitsForStalledSegment()
{
    m_server->stall(u"/part4.ts"_s);
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_stream, 7);
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    QVERIFY(fixture.waitForPicture());
    QTRY_VERIFY_WITH_TIMEOUT(fixture.player->isWaiting(), 10'000);
    QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::WaitingToPlay);
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 30'000);
    QVERIFY(!fixture.hasFailed());
}

/** Stops the server when this path is requested, as if its process had been killed. */
void VideoBreakTest::stopServerWhenRequested(const QString& path)
{
    m_server->setUnanswered(path);
    QTRY_VERIFY_WITH_TIMEOUT(m_server->requests().contains(path), 15'000);
    m_server.reset();
}

void VideoBreakTest::playbackResumesWhenServerReturns()
{
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_stream, 2.5);
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    QSignalSpy shown(fixture.player.get(), &VideoPlayer::pictureShown);
    stopServerWhenRequested(u"/part3.ts"_s);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.player->isWaiting() && fixture.player->position() > 5, 15'000);
    const double breakPosition = fixture.player->position();
    m_server = std::make_unique<StreamServer>(m_folder.path(), u"server"_s, quint16(m_stream.port()));
    QTRY_COMPARE_WITH_TIMEOUT(shown.count(), 2, 15'000);
    QVERIFY2(std::abs(fixture.player->position() - breakPosition) < 1,
             qPrintable(QString::number(fixture.player->position())));
    QTRY_VERIFY(fixture.player->position() > breakPosition + 1);
    QVERIFY(!fixture.hasFailed());
    QCOMPARE(ended.count(), 0);
}

void VideoBreakTest::itemFailsWithCauseWhenServerStaysDown()
{
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_stream, 4.5);
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    stopServerWhenRequested(u"/part3.ts"_s);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.hasFailed(), 40'000);
    QCOMPARE(int(fixture.failure().cause), int(VideoFailure::Cause::Refused));
    QCOMPARE(ended.count(), 0);
}

void VideoBreakTest::livePlaylistThatStopsGrowingIsReloaded()
{
    m_server->setBody(u"/live.m3u8"_s, "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:2\n#EXT-X-MEDIA-SEQUENCE:3\n"
                                       "#EXTINF:2,\npart3.ts\n#EXTINF:2,\npart4.ts\n");
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    QSignalSpy shown(fixture.player.get(), &VideoPlayer::pictureShown);
    fixture.play(m_server->url(u"/live.m3u8"_s), 0, PlayerItem::Kind::Live);
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    QTRY_COMPARE_WITH_TIMEOUT(shown.count(), 1, 15'000);
    QVERIFY(!fixture.player->isSeekable());
    QTRY_COMPARE_WITH_TIMEOUT(shown.count(), 2, 45'000);
    QVERIFY(!fixture.hasFailed());
    QCOMPARE(ended.count(), 0);
}

QUILLMERE_TEST(VideoBreakTest, QGuiApplication)

} // namespace quillmere

#include "VideoBreakTest.moc"
