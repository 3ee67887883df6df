#include "CountedRecording.h"
#include "TestMain.h"
#include "VideoFixture.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace quillmere {

using CountedRecording::secondShown;

namespace {

constexpr int duration = 1230; // seconds

} // namespace

/** Start positions and seeks of the real player, checked by its position and by the picture. */
class VideoSeekTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void playbackStartsAtOrAfterRequestedPosition_data() { positions(); }
    void playbackStartsAtOrAfterRequestedPosition();
    void seekEndsAtOrAfterRequestedPosition_data() { positions(); }
    void seekEndsAtOrAfterRequestedPosition();
    void playbackContinuesAfterSeek();
    void scrubbingSeekEndsNearRequestedPosition();
    void lastOfSeveralSeeksApplies();
    void dataIsBufferedAhead();
    void growingRecordingStartsAtBeginning();

private:
    void positions();
    QByteArray authority() const { return m_folder.read(u"authority.pem"_s); }

    StreamFolder m_folder;
    std::unique_ptr<StreamServer> m_server;
    QUrl m_recording;
};

void VideoSeekTest::initTestCase()
{
    QVERIFY(m_folder.isReady());
    QVERIFY(CountedRecording::create(m_folder.path(), u"long"_s, duration, CountedRecording::Kind::Slides));
    m_server = std::make_unique<StreamServer>(m_folder.path());
    m_recording = m_server->url(u"/long.m3u8"_s);
    VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
}

void VideoSeekTest::positions()
{
    QTest::addColumn<double>("requested");
    for (const double requested : {1.5, 125.0, 1200.0})
        QTest::addRow("%.1f s", requested) << requested;
}

void VideoSeekTest::playbackStartsAtOrAfterRequestedPosition()
{
    QFETCH(const double, requested);
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    QSignalSpy shown(fixture.player.get(), &VideoPlayer::pictureShown);
    fixture.play(m_recording, requested);
    fixture.player->pause();
    QTRY_COMPARE_WITH_TIMEOUT(shown.count(), 1, 15'000);
    const double reached = fixture.player->position();
    QVERIFY2(reached >= requested && reached < requested + 1, qPrintable(QString::number(reached, 'f', 4)));
    QTRY_COMPARE(secondShown(fixture.window.grabWindow()), int(std::floor(reached)));
}

void VideoSeekTest::seekEndsAtOrAfterRequestedPosition()
{
    QFETCH(const double, requested);
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_recording, 600);
    QVERIFY(fixture.waitForPicture());
    fixture.player->pause();
    std::optional<bool> finished;
    fixture.player->seek(requested, SeekTolerance::AtOrAfter, [&finished](bool done) { finished = done; });
    QTRY_VERIFY_WITH_TIMEOUT(finished, 15'000);
    QVERIFY(*finished);
    const double reached = fixture.player->position();
    QVERIFY2(reached >= requested && reached < requested + 1, qPrintable(QString::number(reached, 'f', 4)));
    QTRY_COMPARE(secondShown(fixture.window.grabWindow()), int(std::floor(reached)));
}

void VideoSeekTest::playbackContinuesAfterSeek()
{
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_recording);
    QVERIFY(fixture.waitForPicture());
    fixture.player->seek(125, SeekTolerance::AtOrAfter);
    QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 126.5, 15'000);
    QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Playing);
    QVERIFY(secondShown(fixture.window.grabWindow()) >= 126);
}

void VideoSeekTest::scrubbingSeekEndsNearRequestedPosition()
{
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_recording);
    QVERIFY(fixture.waitForPicture());
    fixture.player->pause();
    std::optional<bool> finished;
    fixture.player->seek(902, SeekTolerance::Nearest, [&finished](bool done) { finished = done; });
    QTRY_VERIFY_WITH_TIMEOUT(finished, 15'000);
    QVERIFY(*finished);
    QVERIFY2(std::abs(fixture.player->position() - 902) <= 8, qPrintable(QString::number(fixture.player->position())));
}

void VideoSeekTest::lastOfSeveralSeeksApplies()
{
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_recording);
    QVERIFY(fixture.waitForPicture());
    fixture.player->pause();
    QList<bool> results;
    for (const double requested : {800.0, 20.0, 1100.0, 333.0})
        fixture.player->seek(requested, SeekTolerance::AtOrAfter, [&results](bool done) { results << done; });
    QTRY_COMPARE_WITH_TIMEOUT(results.size(), 4, 15'000);
    QCOMPARE(results, (QList<bool>{false, false, false, true}));
    QVERIFY(fixture.player->position() >= 333 && fixture.player->position() < 334);
    QTRY_COMPARE(secondShown(fixture.window.grabWindow()), 333);
}

void VideoSeekTest::dataIsBufferedAhead()
{
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_recording, 125);
    QVERIFY(fixture.waitForPicture());
    QTRY_VERIFY(fixture.player->bufferedTo() > fixture.player->position() + 8);
    QVERIFY(fixture.player->bufferedTo() <= duration + 1);
    QVERIFY(fixture.player->isSeekable());
}

void VideoSeekTest::growingRecordingStartsAtBeginning()
{
    QByteArray playlist = m_folder.read(u"long.m3u8"_s);
    playlist.replace("#EXT-X-PLAYLIST-TYPE:VOD\n", "").replace("#EXT-X-ENDLIST\n", "");
    m_server->setBody(u"/growing.m3u8"_s, playlist);
    VideoFixture fixture(authority());
    QVERIFY(fixture.isExposed());
    fixture.play(m_server->url(u"/growing.m3u8"_s));
    QVERIFY(fixture.waitForPicture());
    QVERIFY(fixture.player->position() < 5);
}

QUILLMERE_TEST(VideoSeekTest, QGuiApplication)

} // namespace quillmere

#include "VideoSeekTest.moc"
