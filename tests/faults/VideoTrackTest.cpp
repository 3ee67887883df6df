#include "TestMain.h"
#include "VideoFixture.h"

using namespace Qt::StringLiterals;

namespace quillmere {

using Kind = MediaTrack::Kind;

namespace {

constexpr QSize canvas{960, 540}; // half of 1920 x 1080
constexpr QRect safeArea{40, 30, 880, 480};

/** The area of the picture that is not black. */
QRect brightArea(const QImage& picture)
{
    QRect area;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y).lightness() > 64)
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

} // namespace

/** Audio and subtitle tracks of a real stream: black video, two audio tracks, segmented subtitles. */
class VideoTrackTest : public StreamFixture
{
    Q_OBJECT

private Q_SLOTS:
    void tracksOfStreamAreListed()
    {
        VideoFixture fixture(authority(), canvas);
        QVERIFY(waitForTracks(fixture));
        QCOMPARE(track(fixture, Kind::Audio, 1).language, u"en"_s);
        QCOMPARE(track(fixture, Kind::Audio, 2).language, u"de"_s);
        QCOMPARE(track(fixture, Kind::Subtitle, 1).language, u"en"_s);
        QTRY_VERIFY(track(fixture, Kind::Audio, 1).selected);
        QVERIFY(!track(fixture, Kind::Audio, 2).selected);
        QVERIFY(!track(fixture, Kind::Subtitle, 1).selected);
    }

    void playbackContinuesWhenAudioTrackIsSelected()
    {
        VideoFixture fixture(authority(), canvas);
        QVERIFY(waitForTracks(fixture));
        const double before = fixture.player->position();
        fixture.player->select(Kind::Audio, 2);
        QTRY_VERIFY(track(fixture, Kind::Audio, 2).selected);
        QVERIFY(!track(fixture, Kind::Audio, 1).selected);
        QTRY_VERIFY(fixture.player->position() > before + 2);
        QVERIFY(fixture.player->position() < before + 4);
        QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Playing);
    }

    void subtitlesAreInSafeArea()
    {
        VideoFixture fixture(authority(), canvas);
        QVERIFY(waitForTracks(fixture));
        QVERIFY(brightArea(fixture.picture()).isEmpty());
        fixture.player->select(Kind::Subtitle, 1);
        QTRY_VERIFY(track(fixture, Kind::Subtitle, 1).selected);
        QRect textArea;
        QTRY_VERIFY_WITH_TIMEOUT(!(textArea = brightArea(fixture.picture())).isEmpty(), 10'000);
        QCOMPARE(textArea & safeArea, textArea);
        QVERIFY(textArea.width() > canvas.width() / 2);
        QVERIFY(textArea.height() > 40);
        fixture.player->select(Kind::Subtitle, MediaTrack::none);
        QTRY_VERIFY(brightArea(fixture.picture()).isEmpty());
    }

    void seekFinishesWhileSubtitlesLoad()
    {
        VideoFixture fixture(authority(), canvas);
        QVERIFY(waitForTracks(fixture));
        bool hasFinished = false;
        fixture.player->select(Kind::Subtitle, 1);
        fixture.player->seek(9, SeekTolerance::AtOrAfter, [&hasFinished](bool finished) { hasFinished = finished; });
        QTRY_VERIFY_WITH_TIMEOUT(hasFinished, 30'000);
        QVERIFY(fixture.player->position() >= 9);
        // The stream was not loaded again after a stall.
        QCOMPARE(fixture.shown.count(), 1);
    }

private:
    bool createStreams() override
    {
        const QString hls = u" -t 16 -hls_time 2 -hls_playlist_type vod "_s;
        return m_folder.generate(u"color=black:s=640x360:r=25 -pix_fmt yuv420p -preset ultrafast -g 50"_s + hls +
                                 u"black.m3u8"_s) &&
               m_folder.generate(u"sine=660 -c:a aac"_s + hls + u"sound.m3u8"_s);
    }

    void addSubtitles()
    {
        QByteArray list = "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:2\n#EXT-X-PLAYLIST-TYPE:VOD\n";
        for (int part = 0; part < 8; ++part) {
            const auto time = [](int seconds) { return "00:00:" + QByteArray::number(seconds).rightJustified(2, '0'); };
            list += "#EXTINF:2,\nwords" + QByteArray::number(part) + ".vtt\n";
            m_server->setBody(u"/words%1.vtt"_s.arg(part),
                              "WEBVTT\n\n" + time(2 * part) + ".000 --> " + time(2 * part + 1) + ".900\n" +
                                  QByteArray("The harbour stays closed. ").repeated(8) + "\n\n");
        }
        m_server->setBody(u"/words.m3u8"_s, list + "#EXT-X-ENDLIST\n");
    }

    /** A track that is not listed has no language. */
    static MediaTrack track(const VideoFixture& fixture, Kind kind, int id)
    {
        for (const MediaTrack& one : fixture.player->tracks()) {
            if (one.kind == kind && one.id == id)
                return one;
        }
        return {};
    }

    bool waitForTracks(VideoFixture& fixture)
    {
        addSubtitles();
        m_server->setBody(u"/other.m3u8"_s, m_folder.read(u"sound.m3u8"_s));
        m_server->setBody(
            u"/master.m3u8"_s,
            "#EXTM3U\n#EXT-X-VERSION:4\n"
            "#EXT-X-MEDIA:TYPE=AUDIO,GROUP-ID=\"a\",NAME=\"Crier\",LANGUAGE=\"en\",DEFAULT=YES,AUTOSELECT=YES,"
            "URI=\"sound.m3u8\"\n"
            "#EXT-X-MEDIA:TYPE=AUDIO,GROUP-ID=\"a\",NAME=\"Ausrufer\",LANGUAGE=\"de\",URI=\"other.m3u8\"\n"
            "#EXT-X-MEDIA:TYPE=SUBTITLES,GROUP-ID=\"s\",NAME=\"English\",LANGUAGE=\"en\",URI=\"words.m3u8\"\n"
            "#EXT-X-STREAM-INF:BANDWIDTH=759000,RESOLUTION=640x360,AUDIO=\"a\",SUBTITLES=\"s\"\nblack.m3u8\n");
        fixture.play(m_server->url(u"/master.m3u8"_s));
        return fixture.waitForPicture() && QTest::qWaitFor([&] { return fixture.player->tracks().size() == 3; });
    }
};

QUILLMERE_TEST(VideoTrackTest, QGuiApplication)

} // namespace quillmere

#include "VideoTrackTest.moc"
