#include "Rows.h"
#include "StationPalette.h"
#include "TapePlayerFixture.h"
#include "TestMain.h"
#include "Typography.h"

namespace quillmere {

namespace {

struct PlayingTape : TapePlayerFixture
{
    PlayingTape() { play(); }
};

/** A tape without a stream, or one whose stream has failed after its first picture. */
struct FailedTape : TapePlayerFixture
{
    explicit FailedTape(bool hasStream) : TapePlayerFixture(hasStream ? tape() : tape({}))
    {
        if (!hasStream)
            return;
        play();
        player->fail({});
        waitUntilIdle();
    }
};

} // namespace

/** The screen that plays a tape: what it shows without a picture, and how it is dismissed. */
class TapePlayerViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void backgroundIsBlackUpToEdges()
    {
        TapePlayerFixture fixture;
        fixture.window().setColor(Qt::blue);
        const QImage picture = fixture.picture();
        for (const QPoint corner : {QPoint(0, 0), QPoint(1919, 0), QPoint(0, 1079), QPoint(1919, 1079)})
            QCOMPARE(picture.pixelColor(corner), QColor(Qt::black));
    }

    void tapeWithoutStreamShowsFailurePanelAndCreatesNoPlayer()
    {
        TapePlayerFixture fixture(TapePlayerFixture::tape({}));
        QVERIFY(!fixture.player);
        const QString noCopy = u"This tape has no playable copy on the shelf."_s;
        QCOMPARE(fixture.read("FailurePanel"), QStringList({u"TRACKING"_s, noCopy, u"Back to the shelves"_s}));

        const QRectF heading = fixture.areaOf(u"TRACKING"_s);
        const QRectF message = fixture.areaOf(noCopy);
        const QRectF button = TestScreen::area(fixture.view->focused());
        QCOMPARE(message.left(), 200.0);
        QCOMPARE(message.right(), 1720.0);
        QCOMPARE(message.top() - heading.bottom(), 26.0);
        QCOMPARE(button.top() - message.bottom(), 26.0);
        QVERIFY(std::abs(heading.center().x() - 960) < 1);
        QVERIFY(std::abs(button.center().x() - 960) < 1);
        QVERIFY(std::abs((heading.top() + button.bottom()) / 2 - 540) < 1);

        const auto font = [&](const QString& words) { return fixture.text(words)->property("font").value<QFont>(); };
        QCOMPARE(font(u"TRACKING"_s), Typography::standard(64, QFont::Black, 10));
        QCOMPARE(font(noCopy), Typography::standard(28));
        QCOMPARE(font(u"Back to the shelves"_s), Typography::standard(26));
        const auto color = [&](const QString& words) { return fixture.text(words)->property("color").value<QColor>(); };
        const QColor parchment(236, 224, 196);
        QCOMPARE(color(u"TRACKING"_s), parchment);
        QCOMPARE(color(noCopy).rgba(), StationPalette::faded(parchment, 0.75).rgba());
    }

    void backButtonHasFocusAndDismissesOnce_data()
    {
        rows<bool>({"hasStream"}, {{"no playable copy", false}, {"failed stream", true}});
    }

    void backButtonHasFocusAndDismissesOnce()
    {
        QFETCH(const bool, hasStream);
        FailedTape fixture(hasStream);
        QCOMPARE(fixture.focusedName(), u"Back to the shelves"_s);
        for (const int arrow : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
            fixture.pressAndWait(arrow);
            QCOMPARE(fixture.focusedName(), u"Back to the shelves"_s);
        }
        QCOMPARE(fixture.dismissals->count(), 0);
        fixture.pressAndWait(Qt::Key_Select);
        QCOMPARE(fixture.dismissals->count(), 1);
    }

    void backAndStopDismissFailedTape_data()
    {
        rows<bool, Qt::Key>({"hasStream", "key"}, {{"back, no playable copy", false, Qt::Key_Back},
                                                   {"stop, no playable copy", false, Qt::Key_MediaStop},
                                                   {"back, failed stream", true, Qt::Key_Back},
                                                   {"stop, failed stream", true, Qt::Key_MediaStop}});
    }

    void backAndStopDismissFailedTape()
    {
        QFETCH(const bool, hasStream);
        QFETCH(const Qt::Key, key);
        FailedTape fixture(hasStream);
        fixture.pressAndWait(key);
        QCOMPARE(fixture.dismissals->count(), 1);
    }

    void failurePanelIsTransparentOverPicture()
    {
        PlayingTape fixture;
        QQuickItem* const picture = fixture.item("VideoView");
        QQmlComponent paint(&fixture.engine());
        paint.setData("import QtQuick\nRectangle { anchors.fill: parent; color: 'green' }", {});
        const std::unique_ptr<QObject> cover(
            paint.createWithInitialProperties({{u"parent"_s, QVariant::fromValue(picture)}}));
        fixture.player->fail({});
        fixture.waitUntilIdle();
        const auto message = u"The tape wouldn't play. It may still be being archived."_s;
        QCOMPARE(fixture.read("FailurePanel"), QStringList({u"TRACKING"_s, message, u"Back to the shelves"_s}));
        QCOMPARE(picture->property("player").value<VideoPlayer*>(), fixture.player.data());
        const QImage seen = fixture.picture();
        const QRectF words = TestScreen::area(fixture.text(message));
        for (const QPointF point : {QPointF(960, 20), QPointF(960, 1060), words.topLeft(), words.bottomRight()})
            QCOMPARE(seen.pixelColor(point.toPoint()), QColor(u"green"_s));
    }

    void failureHidesOtherPanels()
    {
        PlayingTape fixture;
        fixture.pressAndWait(Qt::Key_Down);
        QVERIFY(fixture.shows("InformationPanel"));
        fixture.player->fail({});
        fixture.waitUntilIdle();
        QVERIFY(!fixture.shows("InformationPanel"));
        QVERIFY(!fixture.shows("PlayerControls"));
        QVERIFY(!fixture.shows("LoadingSign"));
        QCOMPARE(fixture.focusedName(), u"Back to the shelves"_s);
    }

    void longFailureMessageStaysInSafeArea()
    {
        TapePlayerFixture fixture(TapePlayerFixture::tape({}));
        fixture.item("FailurePanel")->setProperty("message", u"This goes on and on. "_s.repeated(400));
        fixture.waitUntilIdle();
        for (const QQuickItem* text : TestScreen::texts(fixture.view))
            QVERIFY(TapePlayerFixture::safeArea.contains(TestScreen::area(text)));
    }

    void backDismissesOnce()
    {
        PlayingTape fixture;
        fixture.pressAndWait(Qt::Key_Back);
        QCOMPARE(fixture.dismissals->count(), 1);
    }

    void tapeEqualToDefaultTapeIsAccepted()
    {
        Tape tape;
        tape.streamURLPath = u"/recordings/none/index.m3u8"_s;
        QCOMPARE(tape, Tape{});
        QVERIFY(TapePlayerFixture(tape).player);
    }

    void playbackStartsAtRequestedPosition()
    {
        TapePlayerFixture fixture(TapePlayerFixture::tape(), TapePlayerFixture::cassette(), 3725.5);
        QCOMPARE(fixture.player->seeks.first().seconds, 3725.5);
    }

    void playbackEndsWhenScreenDisappears()
    {
        PlayingTape fixture;
        Q_EMIT fixture.view->disappeared();
        QVERIFY(!fixture.player);
        QVERIFY(!fixture.controller->player());
    }

    void playerKeysAreAccepted()
    {
        PlayingTape fixture;
        for (const int key : {Qt::Key_MediaTogglePlayPause, Qt::Key_Select, Qt::Key_Left, Qt::Key_Right}) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
            QCoreApplication::sendEvent(&fixture.window(), &press);
            QVERIFY(press.isAccepted());
            QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
            QCoreApplication::sendEvent(&fixture.window(), &release);
        }
    }
};

QUILLMERE_TEST(TapePlayerViewTest, QGuiApplication)

} // namespace quillmere

#include "TapePlayerViewTest.moc"
