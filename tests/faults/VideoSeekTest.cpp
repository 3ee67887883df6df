#include "CountedRecording.h"
#include "Rows.h"
#include "TestMain.h"
#include "VideoFixture.h"

using namespace Qt::StringLiterals;

namespace quillmere {

using CountedRecording::secondShown;

/** Start positions and seeks of the real player, checked by its position and by the picture. */
class VideoSeekTest : public StreamFixture
{
    Q_OBJECT

private Q_SLOTS:
    void playbackStartsAtOrAfterRequestedPosition_data() { positions(); }
    void playbackStartsAtOrAfterRequestedPosition()
    {
        QFETCH(const double, requested);
        VideoFixture fixture(authority());
        fixture.play(recording(), requested);
        fixture.player->pause();
        QTRY_COMPARE_WITH_TIMEOUT(fixture.shown.count(), 1, 15'000);
        verifyReached(fixture, requested);
    }

    void seekEndsAtOrAfterRequestedPosition_data() { positions(); }
    void seekEndsAtOrAfterRequestedPosition()
    {
        QFETCH(const double, requested);
        VideoFixture fixture(authority());
        fixture.play(recording(), 600);
        QVERIFY(fixture.waitForPicture());
        pauseAndSeek(fixture, requested, SeekTolerance::AtOrAfter);
        verifyReached(fixture, requested);
    }

    void playbackContinuesAfterSeek()
    {
        VideoFixture fixture(authority());
        fixture.play(recording());
        QVERIFY(fixture.waitForPicture());
        fixture.player->seek(125, SeekTolerance::AtOrAfter);
        QTRY_VERIFY_WITH_TIMEOUT(fixture.player->position() > 126.5, 15'000);
        QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Playing);
        QVERIFY(secondShown(fixture.picture()) >= 126);
    }

    void scrubbingSeekEndsNearRequestedPosition()
    {
        VideoFixture fixture(authority());
        fixture.play(recording());
        QVERIFY(fixture.waitForPicture());
        pauseAndSeek(fixture, 902, SeekTolerance::Nearest);
        QVERIFY2(std::abs(fixture.player->position() - 902) <= 8,
                 qPrintable(QString::number(fixture.player->position())));
    }

    void lastOfSeveralSeeksApplies()
    {
        VideoFixture fixture(authority());
        fixture.play(recording());
        QVERIFY(fixture.waitForPicture());
        fixture.player->pause();
        QList<bool> results;
        for (const double requested : {800.0, 20.0, 1100.0, 333.0})
            fixture.player->seek(requested, SeekTolerance::AtOrAfter, [&results](bool done) { results << done; });
        QTRY_COMPARE_WITH_TIMEOUT(results.size(), 4, 15'000);
        QCOMPARE(results, (QList<bool>{false, false, false, true}));
        verifyReached(fixture, 333);
    }

    void dataIsBufferedAhead()
    {
        VideoFixture fixture(authority());
        fixture.play(recording(), 125);
        QVERIFY(fixture.waitForPicture());
        QTRY_VERIFY(fixture.player->bufferedTo() > fixture.player->position() + 8);
        QVERIFY(fixture.player->bufferedTo() <= duration + 1);
        QVERIFY(fixture.player->isSeekable());
    }

    void growingRecordingStartsAtBeginning()
    {
        QByteArray playlist = m_folder.read(u"long.m3u8"_s);
        playlist.replace("#EXT-X-PLAYLIST-TYPE:VOD\n", "").replace("#EXT-X-ENDLIST\n", "");
        m_server->setBody(u"/growing.m3u8"_s, playlist);
        VideoFixture fixture(authority());
        fixture.play(m_server->url(u"/growing.m3u8"_s));
        QVERIFY(fixture.waitForPicture());
        QVERIFY(fixture.player->position() < 5);
    }

private:
    static constexpr int duration = 1230; // seconds

    bool createStreams() override
    {
        return CountedRecording::create(m_folder.path(), u"long"_s, duration, CountedRecording::Kind::Slides);
    }

    QUrl recording() const { return m_server->url(u"/long.m3u8"_s); }

    static void positions() { rows<double>({"requested"}, {{"1.5 s", 1.5}, {"125.0 s", 125.0}, {"1200.0 s", 1200.0}}); }

    static void pauseAndSeek(const VideoFixture& fixture, double requested, SeekTolerance tolerance)
    {
        fixture.player->pause();
        std::optional<bool> finished;
        fixture.player->seek(requested, tolerance, [&finished](bool done) { finished = done; });
        QTRY_VERIFY_WITH_TIMEOUT(finished, 15'000);
        QVERIFY(*finished);
    }

    /** Less than a second after the requested position, and the picture is the one at the reached position. */
    static void verifyReached(VideoFixture& fixture, double requested)
    {
        const double reached = fixture.player->position();
        QVERIFY2(reached >= requested && reached < requested + 1, qPrintable(QString::number(reached, 'f', 4)));
        QTRY_COMPARE(secondShown(fixture.picture()), int(std::floor(reached)));
    }
};

QUILLMERE_TEST(VideoSeekTest, QGuiApplication)

} // namespace quillmere

#include "VideoSeekTest.moc"
