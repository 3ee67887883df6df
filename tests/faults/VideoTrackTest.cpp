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
class VideoTrackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void tracksOfStreamAreListed();
    void playbackContinuesWhenAudioTrackIsSelected();
    void subtitlesAreInSafeArea();
    void seekFinishesWhileSubtitlesLoad();

private:
    bool createStream(const QStringList& input, const QString& name);
    void addSubtitles();
    const MediaTrack* findTrack(const VideoFixture& fixture, Kind kind, int id) const;
    bool waitForTracks(VideoFixture& fixture);
    QByteArray authority() const { return m_folder.read(u"authority.pem"_s); }

    StreamFolder m_folder;
    std::unique_ptr<StreamServer> m_server;
};

bool VideoTrackTest::createStream(const QStringList& input, const QString& name)
{
    QProcess ffmpeg;
    ffmpeg.setWorkingDirectory(m_folder.path());
    ffmpeg.start(u"ffmpeg"_s, QStringList{u"-v"_s, u"error"_s, u"-nostdin"_s, u"-f"_s, u"lavfi"_s} + input +
                                  QStringList{u"-t"_s, u"16"_s, u"-hls_time"_s, u"2"_s, u"-hls_playlist_type"_s,
                                              u"vod"_s, name + u".m3u8"_s});
    return ffmpeg.waitForFinished() && ffmpeg.exitCode() == 0;
}

void VideoTrackTest::addSubtitles()
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

void VideoTrackTest::initTestCase()
{
    QVERIFY(m_folder.isReady());
    QVERIFY(createStream({u"-i"_s, u"color=black:s=640x360:r=25"_s, u"-pix_fmt"_s, u"yuv420p"_s, u"-preset"_s,
                          u"ultrafast"_s, u"-g"_s, u"50"_s},
                         u"black"_s));
    QVERIFY(createStream({u"-i"_s, u"sine=660"_s, u"-c:a"_s, u"aac"_s}, u"sound"_s));
    m_server = std::make_unique<StreamServer>(m_folder.path());
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
    VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
}

const MediaTrack* VideoTrackTest::findTrack(const VideoFixture& fixture, Kind kind, int id) const
{
    for (const MediaTrack& one : fixture.player->tracks()) {
        if (one.kind == kind && one.id == id)
            return &one;
    }
    return nullptr;
}

bool VideoTrackTest::waitForTracks(VideoFixture& fixture)
{
    fixture.play(m_server->url(u"/master.m3u8"_s));
    return fixture.waitForPicture() && QTest::qWaitFor([&] { return fixture.player->tracks().size() == 3; });
}

void VideoTrackTest::tracksOfStreamAreListed()
{
    VideoFixture fixture(authority(), canvas);
    QVERIFY(fixture.isExposed());
    QVERIFY(waitForTracks(fixture));
    QVERIFY(findTrack(fixture, Kind::Audio, 1) && findTrack(fixture, Kind::Audio, 2) &&
            findTrack(fixture, Kind::Subtitle, 1));
    QCOMPARE(findTrack(fixture, Kind::Audio, 1)->language, u"en"_s);
    QCOMPARE(findTrack(fixture, Kind::Audio, 2)->language, u"de"_s);
    QCOMPARE(findTrack(fixture, Kind::Subtitle, 1)->language, u"en"_s);
    QTRY_VERIFY(findTrack(fixture, Kind::Audio, 1)->selected);
    QVERIFY(!findTrack(fixture, Kind::Audio, 2)->selected);
    QVERIFY(!findTrack(fixture, Kind::Subtitle, 1)->selected);
}

void VideoTrackTest::playbackContinuesWhenAudioTrackIsSelected()
{
    VideoFixture fixture(authority(), canvas);
    QVERIFY(fixture.isExposed());
    QVERIFY(waitForTracks(fixture));
    const double before = fixture.player->position();
    fixture.player->select(Kind::Audio, 2);
    QTRY_VERIFY(findTrack(fixture, Kind::Audio, 2) && findTrack(fixture, Kind::Audio, 2)->selected);
    QVERIFY(!findTrack(fixture, Kind::Audio, 1)->selected);
    QTRY_VERIFY(fixture.player->position() > before + 2);
    QVERIFY(fixture.player->position() < before + 4);
    QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Playing);
}

void VideoTrackTest::subtitlesAreInSafeArea()
{
    VideoFixture fixture(authority(), canvas);
    QVERIFY(fixture.isExposed());
    QVERIFY(waitForTracks(fixture));
    QVERIFY(brightArea(fixture.window.grabWindow()).isEmpty());
    fixture.player->select(Kind::Subtitle, 1);
    QTRY_VERIFY(findTrack(fixture, Kind::Subtitle, 1) && findTrack(fixture, Kind::Subtitle, 1)->selected);
    QRect textArea;
    QTRY_VERIFY_WITH_TIMEOUT(!(textArea = brightArea(fixture.window.grabWindow())).isEmpty(), 10'000);
    QVERIFY2(
        safeArea.contains(textArea),
        qPrintable(u"%1,%2 %3x%4"_s.arg(textArea.x()).arg(textArea.y()).arg(textArea.width()).arg(textArea.height())));
    QVERIFY(textArea.width() > canvas.width() / 2);
    QVERIFY(textArea.height() > 40);
    fixture.player->select(Kind::Subtitle, MediaTrack::none);
    QTRY_VERIFY(brightArea(fixture.window.grabWindow()).isEmpty());
}

void VideoTrackTest::seekFinishesWhileSubtitlesLoad()
{
    VideoFixture fixture(authority(), canvas);
    QVERIFY(fixture.isExposed());
    QVERIFY(waitForTracks(fixture));
    QSignalSpy shown(fixture.player.get(), &VideoPlayer::pictureShown);
    bool hasFinished = false;
    fixture.player->select(Kind::Subtitle, 1);
    fixture.player->seek(9, SeekTolerance::AtOrAfter, [&hasFinished](bool finished) { hasFinished = finished; });
    QTRY_VERIFY_WITH_TIMEOUT(hasFinished, 30'000);
    QVERIFY(fixture.player->position() >= 9);
    // The stream was not loaded again after a stall.
    QCOMPARE(shown.count(), 0);
}

QUILLMERE_TEST(VideoTrackTest, QGuiApplication)

} // namespace quillmere

#include "VideoTrackTest.moc"
