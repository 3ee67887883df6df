#include "ProcessResources.h"
#include "TestMain.h"
#include "VideoFixture.h"

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** A player and its view in an existing window. */
struct OpenPlayer
{
    OpenPlayer(QQuickWindow& window, const QByteArray& certificates, const QUrl& stream)
        : player(std::make_unique<StreamPlayer>(VideoOptions{certificates, u"Test"_s}, clock)),
          view(std::make_unique<VideoView>(window.contentItem()))
    {
        view->setSize({320, 180});
        view->setPlayer(player.get());
        player->setItem(std::make_shared<PlayerItem>(stream));
        player->play();
    }

    bool waitForPicture() const
    {
        return QTest::qWaitFor([this] { return player->timeControl() == VideoPlayer::TimeControl::Playing; }, 10'000);
    }

    SystemClock clock;
    std::unique_ptr<StreamPlayer> player;
    std::unique_ptr<VideoView> view;
};

} // namespace

/** The picture of the real player in a window. The environment chooses the graphics API. */
class VideoPictureTest : public StreamFixture
{
    Q_OBJECT

private Q_SLOTS:
    void pluginIsNotLoadedBeforeFirstPlayback()
    {
        VideoFixture fixture(authority());
        const bool openGL = qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND");
        QCOMPARE(fixture.window.rendererInterface()->graphicsApi(),
                 openGL ? QSGRendererInterface::OpenGL : QSGRendererInterface::Software);
        QVERIFY(!isPlayerMapped());
        fixture.play(m_stream);
        QTRY_VERIFY(isPlayerMapped());
    }

    void pictureAndPositionAdvance()
    {
        VideoFixture fixture(authority());
        bool positionChangedBeforePicture = false;
        connect(fixture.player.get(), &VideoPlayer::positionChanged, this,
                [&] { positionChangedBeforePicture |= fixture.shown.isEmpty(); });
        fixture.play(m_stream);
        QCOMPARE(int(fixture.item->status()), int(PlayerItem::Status::Unknown));
        QVERIFY(fixture.waitForPicture());
        QVERIFY(fixture.newPictures() >= 8);
        QVERIFY(fixture.player->position() > 1);
        QVERIFY(std::abs(fixture.player->duration() - 12) < 0.5);
        QCOMPARE(fixture.shown.count(), 1);
        QVERIFY(!positionChangedBeforePicture);
    }

    void pictureIsLetterboxedWithBlack()
    {
        VideoFixture fixture(authority(), {640, 560});
        fixture.play(m_stream);
        QVERIFY(fixture.waitForPicture());
        QTRY_VERIFY(fixture.picture().pixelColor(320, 280) != QColor(Qt::black));
        const QImage picture = fixture.picture();
        for (const int bar : {2, 90, 468, 557})
            QCOMPARE(picture.pixelColor(320, bar), QColor(Qt::black));
        // The picture has the full width and is 360 pixels high.
        const auto isBrightRow = [&picture](int y) {
            int count = 0;
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixelColor(x, y).lightness() > 40;
            return count > 300;
        };
        QVERIFY(isBrightRow(104) && isBrightRow(455));
    }

    void pictureIsUprightAndKeepsColours()
    {
        QVERIFY(m_folder.generate(u"color=red:s=640x360:r=25,drawbox=y=180:h=180:color=blue:t=fill -t 6 "
                                  "-pix_fmt yuv420p -preset ultrafast -f mpegts halves.ts"_s));
        m_server->setBody(u"/halves.m3u8"_s,
                          "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:6\n#EXT-X-PLAYLIST-TYPE:VOD\n"
                          "#EXTINF:6,\nhalves.ts\n#EXT-X-ENDLIST\n");
        VideoFixture fixture(authority());
        fixture.play(m_server->url(u"/halves.m3u8"_s));
        QVERIFY(fixture.waitForPicture());
        QTRY_VERIFY(fixture.picture().pixelColor(320, 60).red() > 200);
        QVERIFY(fixture.picture().pixelColor(320, 60).blue() < 60);
        QVERIFY(fixture.picture().pixelColor(320, 300).blue() > 200);
        QVERIFY(fixture.picture().pixelColor(320, 300).red() < 60);
    }

    void pictureFollowsScaleOfCanvas()
    {
        VideoFixture fixture(authority());
        fixture.play(m_stream);
        QVERIFY(fixture.waitForPicture());
        fixture.window.contentItem()->setTransformOrigin(QQuickItem::TopLeft);
        fixture.window.contentItem()->setScale(0.5);
        fixture.player->pause();
        QTRY_COMPARE(fixture.picture().pixelColor(500, 300), QColor(Qt::blue));
        QTRY_VERIFY(fixture.picture().pixelColor(160, 10).lightness() > 40);
        QVERIFY(fixture.picture().pixelColor(319, 90) != QColor(Qt::blue));
        QCOMPARE(fixture.picture().pixelColor(321, 90), QColor(Qt::blue));
    }

    void pictureStopsWhenPaused()
    {
        VideoFixture fixture(authority());
        fixture.play(m_stream);
        QVERIFY(fixture.waitForPicture());
        fixture.player->pause();
        QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Paused);
        // One more picture may still appear.
        double position = -1;
        QTRY_VERIFY_WITH_TIMEOUT(std::exchange(position, fixture.player->position()) == fixture.player->position() &&
                                     !QTest::qWaitFor([&] { return fixture.player->position() != position; }, 400),
                                 5000);
        fixture.player->play();
        QTRY_VERIFY(fixture.player->position() > position + 0.3);
    }

    void newItemReplacesCurrentOne()
    {
        VideoFixture fixture(authority());
        fixture.play(m_stream);
        fixture.play(m_server->url(u"/nothing.m3u8"_s));
        fixture.play(m_stream, 6);
        QVERIFY(fixture.waitForPicture());
        QVERIFY(fixture.player->position() >= 6);
        fixture.play(m_stream);
        QCOMPARE(fixture.player->position(), 0.0);
        QVERIFY(fixture.waitForPicture());
        QVERIFY(fixture.player->position() < 4);
        const auto last = fixture.item;
        fixture.player->setItem(nullptr);
        QCOMPARE(fixture.player->position(), 0.0);
        QCOMPARE(int(last->status()), int(PlayerItem::Status::ReadyToPlay));
    }

    void playerAndViewCanBeDestroyedAtAnyTime_data()
    {
        QTest::addColumn<int>("after");
        QTest::addColumn<bool>("viewFirst");
        for (const int after : {0, 1, 5, 20, 50, 100, 200, 400, 800}) {
            QTest::addRow("view first, %d ms", after) << after << true;
            QTest::addRow("player first, %d ms", after) << after << false;
        }
    }
    void playerAndViewCanBeDestroyedAtAnyTime()
    {
        QFETCH(const int, after);
        QFETCH(const bool, viewFirst);
        QQuickWindow window;
        const ProcessResources before = resourcesAfterFirstPlayer(window);
        OpenPlayer opened(window, authority(), m_stream);
        QTest::qWait(after);
        if (viewFirst)
            opened.view.reset();
        else
            opened.player.reset();
        QTest::qWait(10);
        opened.view.reset();
        opened.player.reset();
        QTRY_VERIFY2_WITH_TIMEOUT(ProcessResources().isWithin(before),
                                  ProcessResources().text() + " after " + before.text(), 10'000);
    }

private:
    // The first player loads what remains in the process: the plug-in and its libraries.
    ProcessResources resourcesAfterFirstPlayer(QQuickWindow& window)
    {
        window.resize(320, 180);
        window.show();
        const bool opened =
            QTest::qWaitForWindowExposed(&window) && OpenPlayer(window, authority(), m_stream).waitForPicture();
        const bool ended = QTest::qWaitFor(
            [this] { return !ProcessResources::isPlayerEnding() && m_server->openConnections() == 0; }, 10'000);
        return opened && ended ? ProcessResources() : ProcessResources{0, 0};
    }
};

QUILLMERE_TEST(VideoPictureTest, QGuiApplication)

} // namespace quillmere

#include "VideoPictureTest.moc"
