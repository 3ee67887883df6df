#include "TapePlayerFixture.h"
#include "TestMain.h"

namespace quillmere {

/** The screen that plays a tape: what it shows without a picture, and how it is dismissed. */
class TapePlayerViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_fixture.reset(); }
    void backgroundIsBlackUpToEdges();
    void tapeWithoutStreamShowsMessageAndCreatesNoPlayer();
    void failurePanelHasDesignedGeometry();
    void failurePanelHasDesignedFonts();
    void backButtonHasFocusAndDismissesOnce_data();
    void backButtonHasFocusAndDismissesOnce();
    void backAndStopDismissFailedTape_data();
    void backAndStopDismissFailedTape();
    void failurePanelIsTransparentOverPicture();
    void failureHidesOtherPanels();
    void longFailureMessageStaysInSafeArea();
    void backDismissesOnce();
    void tapeEqualToDefaultTapeIsAccepted();
    void playbackStartsAtRequestedPosition();
    void playbackEndsWhenScreenDisappears();
    void playerKeysAreAccepted();

private:
    TapePlayerFixture& open(const Tape& tape, double startAt = 0)
    {
        m_fixture = std::make_unique<TapePlayerFixture>(tape, TapePlayerFixture::cassette(), startAt);
        return *m_fixture;
    }

    /** Opens a tape whose stream fails after its first picture. */
    TapePlayerFixture& openFailing(const VideoFailure& failure = {})
    {
        TapePlayerFixture& fixture = open(TapePlayerFixture::tape());
        fixture.play();
        fixture.player->fail(failure);
        fixture.waitUntilIdle();
        return fixture;
    }

    std::unique_ptr<TapePlayerFixture> m_fixture;
};

void TapePlayerViewTest::backgroundIsBlackUpToEdges()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape());
    fixture.window().setColor(Qt::blue);
    const QImage picture = fixture.picture();
    for (const QPoint corner : {QPoint(0, 0), QPoint(1919, 0), QPoint(0, 1079), QPoint(1919, 1079)})
        QCOMPARE(picture.pixelColor(corner), QColor(Qt::black));
}

void TapePlayerViewTest::tapeWithoutStreamShowsMessageAndCreatesNoPlayer()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape({}));
    QVERIFY(!fixture.player);
    QCOMPARE(fixture.read("FailurePanel"),
             QStringList({u"TRACKING"_s, u"This tape has no playable copy on the shelf."_s, u"Back to the shelves"_s}));
}

void TapePlayerViewTest::failurePanelHasDesignedGeometry()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape({}));
    const QRectF heading = TestScreen::area(fixture.text(u"TRACKING"_s));
    const QRectF message = TestScreen::area(fixture.text(u"This tape has no playable copy on the shelf."_s));
    const QRectF button = TestScreen::area(fixture.view->focused());
    QCOMPARE(message.left(), 200.0);
    QCOMPARE(message.right(), 1720.0);
    QCOMPARE(message.top() - heading.bottom(), 26.0);
    QCOMPARE(button.top() - message.bottom(), 26.0);
    QVERIFY(std::abs(heading.center().x() - 960) < 1);
    QVERIFY(std::abs(button.center().x() - 960) < 1);
    QVERIFY(std::abs((heading.top() + button.bottom()) / 2 - 540) < 1);
}

void TapePlayerViewTest::failurePanelHasDesignedFonts()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape({}));
    const QQuickItem* const heading = fixture.text(u"TRACKING"_s);
    const QFont headingFont = heading->property("font").value<QFont>();
    QCOMPARE(headingFont.pixelSize(), 64);
    QCOMPARE(headingFont.weight(), QFont::Black);
    QCOMPARE(headingFont.letterSpacing(), 10.0);
    QCOMPARE(heading->property("color").value<QColor>(), QColor(236, 224, 196));

    const QQuickItem* const message = fixture.text(u"This tape has no playable copy on the shelf."_s);
    const QFont messageFont = message->property("font").value<QFont>();
    QCOMPARE(messageFont.pixelSize(), 28);
    QCOMPARE(messageFont.weight(), QFont::Normal);
    const auto color = message->property("color").value<QColor>();
    QCOMPARE(color.rgb(), QColor(236, 224, 196).rgb());
    QCOMPARE(qRound(color.alphaF() * 100), 75);

    const QFont buttonFont = fixture.text(u"Back to the shelves"_s)->property("font").value<QFont>();
    QCOMPARE(buttonFont.pixelSize(), 26);
    QCOMPARE(buttonFont.weight(), QFont::Normal);
}

void TapePlayerViewTest::backButtonHasFocusAndDismissesOnce_data()
{
    QTest::addColumn<bool>("hasStream");
    QTest::newRow("no playable copy") << false;
    QTest::newRow("failed stream") << true;
}

void TapePlayerViewTest::backButtonHasFocusAndDismissesOnce()
{
    QFETCH(const bool, hasStream);
    TapePlayerFixture& fixture = hasStream ? openFailing() : open(TapePlayerFixture::tape({}));
    QCOMPARE(fixture.focusedName(), u"Back to the shelves"_s);
    for (const int arrow : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
        fixture.pressAndWait(arrow);
        QCOMPARE(fixture.focusedName(), u"Back to the shelves"_s);
    }
    QCOMPARE(fixture.dismissals->count(), 0);
    fixture.pressAndWait(Qt::Key_Select);
    QCOMPARE(fixture.dismissals->count(), 1);
}

void TapePlayerViewTest::backAndStopDismissFailedTape_data()
{
    QTest::addColumn<bool>("hasStream");
    QTest::addColumn<int>("key");
    QTest::newRow("back, no playable copy") << false << int(Qt::Key_Back);
    QTest::newRow("stop, no playable copy") << false << int(Qt::Key_MediaStop);
    QTest::newRow("back, failed stream") << true << int(Qt::Key_Back);
    QTest::newRow("stop, failed stream") << true << int(Qt::Key_MediaStop);
}

void TapePlayerViewTest::backAndStopDismissFailedTape()
{
    QFETCH(const bool, hasStream);
    QFETCH(const int, key);
    TapePlayerFixture& fixture = hasStream ? openFailing() : open(TapePlayerFixture::tape({}));
    fixture.pressAndWait(key);
    QCOMPARE(fixture.dismissals->count(), 1);
}

void TapePlayerViewTest::failurePanelIsTransparentOverPicture()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape());
    fixture.play();
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

void TapePlayerViewTest::failureHidesOtherPanels()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape());
    fixture.play();
    fixture.pressAndWait(Qt::Key_Down);
    QVERIFY(fixture.shows("InformationPanel"));
    fixture.player->fail({});
    fixture.waitUntilIdle();
    QVERIFY(!fixture.shows("InformationPanel"));
    QVERIFY(!fixture.shows("PlayerControls"));
    QVERIFY(!fixture.shows("LoadingSign"));
    QCOMPARE(fixture.focusedName(), u"Back to the shelves"_s);
}

void TapePlayerViewTest::longFailureMessageStaysInSafeArea()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape({}));
    fixture.item("FailurePanel")->setProperty("message", u"This goes on and on. "_s.repeated(400));
    fixture.waitUntilIdle();
    for (const QQuickItem* text : TestScreen::texts(fixture.view))
        QVERIFY(QRectF(80, 60, 1760, 960).contains(TestScreen::area(text)));
}

void TapePlayerViewTest::backDismissesOnce()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape());
    fixture.play();
    fixture.pressAndWait(Qt::Key_Back);
    QCOMPARE(fixture.dismissals->count(), 1);
}

void TapePlayerViewTest::tapeEqualToDefaultTapeIsAccepted()
{
    Tape tape;
    tape.streamURLPath = u"/recordings/none/index.m3u8"_s;
    QCOMPARE(tape, Tape{});
    QVERIFY(open(tape).player);
}

void TapePlayerViewTest::playbackStartsAtRequestedPosition()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape(), 3725.5);
    QCOMPARE(fixture.player->seeks.first().seconds, 3725.5);
}

void TapePlayerViewTest::playbackEndsWhenScreenDisappears()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape());
    fixture.play();
    Q_EMIT fixture.view->disappeared();
    QVERIFY(!fixture.player);
    QVERIFY(!fixture.controller->player());
}

void TapePlayerViewTest::playerKeysAreAccepted()
{
    TapePlayerFixture& fixture = open(TapePlayerFixture::tape());
    fixture.play();
    for (const int key : {Qt::Key_MediaTogglePlayPause, Qt::Key_Select, Qt::Key_Left, Qt::Key_Right}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&fixture.window(), &press);
        QVERIFY(press.isAccepted());
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&fixture.window(), &release);
    }
}

QUILLMERE_TEST(TapePlayerViewTest, QGuiApplication)

} // namespace quillmere

#include "TapePlayerViewTest.moc"
