#include "VideoStage.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

qsizetype entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

qsizetype descriptors()
{
    return entries(u"/proc/self/fd"_s);
}

qsizetype threads()
{
    return entries(u"/proc/self/task"_s);
}

} // namespace

/** The real player on the screen, once for each way of drawing: the environment says which. */
class VideoPictureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void nothingOfThePlayerIsLoadedBeforeTheFirstPlayback();
    void thePictureMovesAndThePositionWithIt();
    void thePictureIsLetterboxedWithBlack();
    void thePictureStandsUprightAndKeepsItsColours();
    void thePictureFollowsTheScaleOfItsCanvas();
    void pausingHoldsThePicture();
    void anotherLoadReplacesTheFirst();
    void goingAwayAtAnyMomentIsSafe_data();
    void goingAwayAtAnyMomentIsSafe();
    void openingAndClosingLeavesNothingBehind();

private:
    QByteArray authority() const { return m_folder.read(u"authority.pem"_s); }

    StreamFolder m_folder;
    std::unique_ptr<StreamServer> m_server;
    QUrl m_stream;
};

void VideoPictureTest::initTestCase()
{
    QVERIFY(m_folder.isReady());
    m_server = std::make_unique<StreamServer>(m_folder.path());
    m_stream = m_server->url(u"/index.m3u8"_s);
    VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
}

void VideoPictureTest::nothingOfThePlayerIsLoadedBeforeTheFirstPlayback()
{
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    const bool openGL = qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND");
    QCOMPARE(stage.window.rendererInterface()->graphicsApi(),
             openGL ? QSGRendererInterface::OpenGL : QSGRendererInterface::Software);
    QVERIFY(!VideoStages::playerIsMapped());
    stage.player->load(m_stream);
    QTRY_VERIFY(VideoStages::playerIsMapped());
}

void VideoPictureTest::thePictureMovesAndThePositionWithIt()
{
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    QSignalSpy shown(stage.player.get(), &VideoPlayer::pictureShown);
    bool movedBeforeThePicture = false;
    connect(stage.player.get(), &VideoPlayer::positionChanged, this, [&] { movedBeforeThePicture |= shown.isEmpty(); });
    stage.player->load(m_stream);
    QCOMPARE(stage.player->state(), VideoPlayer::State::Loading);
    QVERIFY(stage.waitForPicture());
    QVERIFY(stage.newPictures() >= 8);
    QVERIFY(stage.player->position() > 1);
    QVERIFY(std::abs(stage.player->duration() - 12) < 0.5);
    QCOMPARE(shown.count(), 1);
    QVERIFY(!movedBeforeThePicture);
}

void VideoPictureTest::thePictureIsLetterboxedWithBlack()
{
    VideoStage stage(authority(), {640, 560});
    QVERIFY(stage.isExposed());
    stage.player->load(m_stream);
    QVERIFY(stage.waitForPicture());
    QTRY_VERIFY(stage.window.grabWindow().pixelColor(320, 280) != QColor(Qt::black));
    const QImage picture = stage.window.grabWindow();
    for (const int bar : {2, 90, 468, 557})
        QCOMPARE(picture.pixelColor(320, bar), QColor(Qt::black));
    // The stream's picture reaches from side to side, 360 high.
    const auto lit = [&picture](int y) {
        int count = 0;
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, y).lightness() > 40;
        return count > 300;
    };
    QVERIFY(lit(104));
    QVERIFY(lit(455));
}

void VideoPictureTest::thePictureStandsUprightAndKeepsItsColours()
{
    QProcess ffmpeg;
    ffmpeg.start(u"ffmpeg"_s,
                 {u"-v"_s, u"error"_s, u"-y"_s, u"-f"_s, u"lavfi"_s, u"-i"_s,
                  u"color=red:s=640x360:r=25,drawbox=y=180:h=180:color=blue:t=fill"_s, u"-t"_s, u"6"_s, u"-pix_fmt"_s,
                  u"yuv420p"_s, u"-preset"_s, u"ultrafast"_s, u"-f"_s, u"mpegts"_s, m_folder.path() + u"/halves.ts"_s});
    QVERIFY(ffmpeg.waitForFinished() && ffmpeg.exitCode() == 0);
    m_server->put(u"/halves.m3u8"_s, "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:6\n#EXT-X-PLAYLIST-TYPE:VOD\n"
                                     "#EXTINF:6,\nhalves.ts\n#EXT-X-ENDLIST\n");
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.player->load(m_server->url(u"/halves.m3u8"_s));
    QVERIFY(stage.waitForPicture());
    QTRY_VERIFY(stage.window.grabWindow().pixelColor(320, 60).red() > 200);
    QVERIFY(stage.window.grabWindow().pixelColor(320, 60).blue() < 60);
    QVERIFY(stage.window.grabWindow().pixelColor(320, 300).blue() > 200);
    QVERIFY(stage.window.grabWindow().pixelColor(320, 300).red() < 60);
}

void VideoPictureTest::thePictureFollowsTheScaleOfItsCanvas()
{
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.player->load(m_stream);
    QVERIFY(stage.waitForPicture());
    stage.window.contentItem()->setTransformOrigin(QQuickItem::TopLeft);
    stage.window.contentItem()->setScale(0.5);
    stage.player->pause();
    QTRY_COMPARE(stage.window.grabWindow().pixelColor(500, 300), QColor(Qt::blue));
    QTRY_VERIFY(stage.window.grabWindow().pixelColor(160, 10).lightness() > 40);
    QVERIFY(stage.window.grabWindow().pixelColor(319, 90) != QColor(Qt::blue));
    QCOMPARE(stage.window.grabWindow().pixelColor(321, 90), QColor(Qt::blue));
}

void VideoPictureTest::pausingHoldsThePicture()
{
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.player->load(m_stream);
    QVERIFY(stage.waitForPicture());
    stage.player->pause();
    QCOMPARE(stage.player->state(), VideoPlayer::State::Paused);
    // A picture that was under way may still come.
    double still = -1;
    QTRY_VERIFY_WITH_TIMEOUT(std::exchange(still, stage.player->position()) == stage.player->position() &&
                                 !QTest::qWaitFor([&] { return stage.player->position() != still; }, 400),
                             5000);
    stage.player->play();
    QTRY_VERIFY(stage.player->position() > still + 0.3);
}

void VideoPictureTest::anotherLoadReplacesTheFirst()
{
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.player->load(m_stream);
    stage.player->load(m_server->url(u"/nothing.m3u8"_s));
    stage.player->load(m_stream, 6);
    QVERIFY(stage.waitForPicture());
    QVERIFY(stage.player->position() >= 6);
    stage.player->load(m_stream);
    QCOMPARE(stage.player->position(), 0.0);
    QVERIFY(stage.waitForPicture());
    QVERIFY(stage.player->position() < 4);
    stage.player->stop();
    QCOMPARE(stage.player->state(), VideoPlayer::State::Idle);
    QCOMPARE(stage.failures.count(), 0);
}

void VideoPictureTest::goingAwayAtAnyMomentIsSafe_data()
{
    QTest::addColumn<int>("after");
    QTest::addColumn<bool>("viewFirst");
    for (const int after : {0, 1, 5, 20, 50, 100, 200, 400, 800}) {
        QTest::addRow("view first, %d ms", after) << after << true;
        QTest::addRow("player first, %d ms", after) << after << false;
    }
}

void VideoPictureTest::goingAwayAtAnyMomentIsSafe()
{
    QFETCH(const int, after);
    QFETCH(const bool, viewFirst);
    QQuickWindow window; // stays, so that only players and views come and go
    window.resize(320, 180);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    std::unique_ptr<StreamPlayer> player;
    std::unique_ptr<VideoView> view;
    const auto open = [&] {
        player = std::make_unique<StreamPlayer>(VideoOptions{authority(), u"Test"_s});
        view = std::make_unique<VideoView>(window.contentItem());
        view->setSize({320, 180});
        view->setPlayer(player.get());
        player->load(m_stream);
    };
    const auto close = [&] {
        if (viewFirst)
            view.reset();
        else
            player.reset();
        QTest::qWait(10);
        view.reset();
        player.reset();
    };
    open();
    QTRY_COMPARE_WITH_TIMEOUT(player->state(), VideoPlayer::State::Playing, 10'000);
    close();
    QTest::qWait(1000);
    const auto descriptorsBefore = descriptors();
    const auto threadsBefore = threads();
    open();
    QTest::qWait(after);
    close();
    QTRY_VERIFY2_WITH_TIMEOUT(threads() <= threadsBefore, qPrintable(u"%1 threads"_s.arg(threads())), 10'000);
    QTRY_VERIFY2_WITH_TIMEOUT(descriptors() <= descriptorsBefore, qPrintable(u"%1 files"_s.arg(descriptors())), 10'000);
}

void VideoPictureTest::openingAndClosingLeavesNothingBehind()
{
    QQuickWindow window; // stays, so that only players come and go
    window.resize(320, 180);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto openAndClose = [&] {
        StreamPlayer player({authority(), u"Test"_s});
        VideoView view(window.contentItem());
        view.setSize({320, 180});
        view.setPlayer(&player);
        player.load(m_stream);
        return QTest::qWaitFor([&] { return player.state() == VideoPlayer::State::Playing; }, 10'000);
    };
    QVERIFY(openAndClose());
    QTest::qWait(1500);
    const auto descriptorsBefore = descriptors();
    const auto threadsBefore = threads();
    for (int turn = 0; turn < 20; ++turn)
        QVERIFY(openAndClose());
    QTRY_VERIFY2_WITH_TIMEOUT(threads() <= threadsBefore, qPrintable(u"%1 threads"_s.arg(threads())), 10'000);
    QTRY_VERIFY2_WITH_TIMEOUT(descriptors() <= descriptorsBefore, qPrintable(u"%1 files"_s.arg(descriptors())), 10'000);
}

QTEST_MAIN(VideoPictureTest)
#include "VideoPictureTest.moc"
