#include "CountedRecording.h"
#include "TestMain.h"
#include "VideoStage.h"

#include <cmath>

using namespace Qt::StringLiterals;
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
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    QSignalSpy shown(stage.player.get(), &VideoPlayer::pictureShown);
    stage.play(m_recording, requested);
    stage.player->pause();
    QTRY_COMPARE_WITH_TIMEOUT(shown.count(), 1, 15'000);
    const double reached = stage.player->position();
    QVERIFY2(reached >= requested && reached < requested + 1, qPrintable(QString::number(reached, 'f', 4)));
    QTRY_COMPARE(secondShown(stage.window.grabWindow()), int(std::floor(reached)));
}

void VideoSeekTest::seekEndsAtOrAfterRequestedPosition()
{
    QFETCH(const double, requested);
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.play(m_recording, 600);
    QVERIFY(stage.waitForPicture());
    stage.player->pause();
    std::optional<bool> finished;
    stage.player->seek(requested, SeekTolerance::AtOrAfter, [&finished](bool done) { finished = done; });
    QTRY_VERIFY_WITH_TIMEOUT(finished, 15'000);
    QVERIFY(*finished);
    const double reached = stage.player->position();
    QVERIFY2(reached >= requested && reached < requested + 1, qPrintable(QString::number(reached, 'f', 4)));
    QTRY_COMPARE(secondShown(stage.window.grabWindow()), int(std::floor(reached)));
}

void VideoSeekTest::playbackContinuesAfterSeek()
{
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.play(m_recording);
    QVERIFY(stage.waitForPicture());
    stage.player->seek(125, SeekTolerance::AtOrAfter);
    QTRY_VERIFY_WITH_TIMEOUT(stage.player->position() > 126.5, 15'000);
    QCOMPARE(stage.player->timeControl(), VideoPlayer::TimeControl::Playing);
    QVERIFY(secondShown(stage.window.grabWindow()) >= 126);
}

void VideoSeekTest::scrubbingSeekEndsNearRequestedPosition()
{
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.play(m_recording);
    QVERIFY(stage.waitForPicture());
    stage.player->pause();
    std::optional<bool> finished;
    stage.player->seek(902, SeekTolerance::Nearest, [&finished](bool done) { finished = done; });
    QTRY_VERIFY_WITH_TIMEOUT(finished, 15'000);
    QVERIFY(*finished);
    QVERIFY2(std::abs(stage.player->position() - 902) <= 8, qPrintable(QString::number(stage.player->position())));
}

void VideoSeekTest::lastOfSeveralSeeksApplies()
{
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.play(m_recording);
    QVERIFY(stage.waitForPicture());
    stage.player->pause();
    QList<bool> results;
    for (const double requested : {800.0, 20.0, 1100.0, 333.0})
        stage.player->seek(requested, SeekTolerance::AtOrAfter, [&results](bool done) { results << done; });
    QTRY_COMPARE_WITH_TIMEOUT(results.size(), 4, 15'000);
    QCOMPARE(results, (QList<bool>{false, false, false, true}));
    QVERIFY(stage.player->position() >= 333 && stage.player->position() < 334);
    QTRY_COMPARE(secondShown(stage.window.grabWindow()), 333);
}

void VideoSeekTest::dataIsBufferedAhead()
{
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.play(m_recording, 125);
    QVERIFY(stage.waitForPicture());
    QTRY_VERIFY(stage.player->bufferedTo() > stage.player->position() + 8);
    QVERIFY(stage.player->bufferedTo() <= duration + 1);
    QVERIFY(stage.player->isSeekable());
}

void VideoSeekTest::growingRecordingStartsAtBeginning()
{
    QByteArray playlist = m_folder.read(u"long.m3u8"_s);
    playlist.replace("#EXT-X-PLAYLIST-TYPE:VOD\n", "").replace("#EXT-X-ENDLIST\n", "");
    m_server->setBody(u"/growing.m3u8"_s, playlist);
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.play(m_server->url(u"/growing.m3u8"_s));
    QVERIFY(stage.waitForPicture());
    QVERIFY(stage.player->position() < 5);
}

QUILLMERE_TEST(VideoSeekTest, QGuiApplication)
#include "VideoSeekTest.moc"
