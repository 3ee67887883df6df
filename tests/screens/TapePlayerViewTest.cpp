#include "TapePlayerHouse.h"
#include "TestMain.h"

/** The screen that plays a tape: what it shows without a picture, and how it is dismissed. */
class TapePlayerViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_house.reset(); }
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
    TapePlayerHouse& open(const Tape& tape, double startAt = 0)
    {
        m_house = std::make_unique<TapePlayerHouse>(tape, TapePlayerHouse::cassette(), startAt);
        return *m_house;
    }

    /** Opens a tape whose stream fails after its first picture. */
    TapePlayerHouse& openFailing(const VideoFailure& failure = {})
    {
        TapePlayerHouse& house = open(TapePlayerHouse::tape());
        house.play();
        house.player->fail(failure);
        house.stage.waitUntilIdle();
        return house;
    }

    std::unique_ptr<TapePlayerHouse> m_house;
};

void TapePlayerViewTest::backgroundIsBlackUpToEdges()
{
    TapePlayerHouse& house = open(TapePlayerHouse::tape());
    house.stage.window().setColor(Qt::blue);
    const QImage picture = house.stage.picture();
    for (const QPoint corner : {QPoint(0, 0), QPoint(1919, 0), QPoint(0, 1079), QPoint(1919, 1079)})
        QCOMPARE(picture.pixelColor(corner), QColor(Qt::black));
}

void TapePlayerViewTest::tapeWithoutStreamShowsMessageAndCreatesNoPlayer()
{
    TapePlayerHouse& house = open(TapePlayerHouse::tape({}));
    QVERIFY(!house.player);
    QCOMPARE(house.read("FailurePanel"),
             QStringList({u"TRACKING"_s, u"This tape has no playable copy on the shelf."_s, u"Back to the shelves"_s}));
}

void TapePlayerViewTest::failurePanelHasDesignedGeometry()
{
    TapePlayerHouse& house = open(TapePlayerHouse::tape({}));
    const QRectF heading = Stage::area(house.text(u"TRACKING"_s));
    const QRectF message = Stage::area(house.text(u"This tape has no playable copy on the shelf."_s));
    const QRectF button = Stage::area(house.view->focused());
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
    TapePlayerHouse& house = open(TapePlayerHouse::tape({}));
    const QQuickItem* const heading = house.text(u"TRACKING"_s);
    const QFont headingFont = heading->property("font").value<QFont>();
    QCOMPARE(headingFont.pixelSize(), 64);
    QCOMPARE(headingFont.weight(), QFont::Black);
    QCOMPARE(headingFont.letterSpacing(), 10.0);
    QCOMPARE(heading->property("color").value<QColor>(), QColor(236, 224, 196));

    const QQuickItem* const message = house.text(u"This tape has no playable copy on the shelf."_s);
    const QFont messageFont = message->property("font").value<QFont>();
    QCOMPARE(messageFont.pixelSize(), 28);
    QCOMPARE(messageFont.weight(), QFont::Normal);
    const auto color = message->property("color").value<QColor>();
    QCOMPARE(color.rgb(), QColor(236, 224, 196).rgb());
    QCOMPARE(qRound(color.alphaF() * 100), 75);

    const QFont buttonFont = house.text(u"Back to the shelves"_s)->property("font").value<QFont>();
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
    TapePlayerHouse& house = hasStream ? openFailing() : open(TapePlayerHouse::tape({}));
    QCOMPARE(house.focused(), u"Back to the shelves"_s);
    for (const int arrow : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
        house.press(arrow);
        QCOMPARE(house.focused(), u"Back to the shelves"_s);
    }
    QCOMPARE(house.dismissals->count(), 0);
    house.press(Qt::Key_Select);
    QCOMPARE(house.dismissals->count(), 1);
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
    TapePlayerHouse& house = hasStream ? openFailing() : open(TapePlayerHouse::tape({}));
    house.press(key);
    QCOMPARE(house.dismissals->count(), 1);
}

void TapePlayerViewTest::failurePanelIsTransparentOverPicture()
{
    TapePlayerHouse& house = open(TapePlayerHouse::tape());
    house.play();
    QQuickItem* const picture = house.item("VideoView");
    QQmlComponent paint(&house.stage.engine());
    paint.setData("import QtQuick\nRectangle { anchors.fill: parent; color: 'green' }", {});
    const std::unique_ptr<QObject> cover(
        paint.createWithInitialProperties({{u"parent"_s, QVariant::fromValue(picture)}}));
    house.player->fail({});
    house.stage.waitUntilIdle();
    const auto message = u"The tape wouldn't play. It may still be being archived."_s;
    QCOMPARE(house.read("FailurePanel"), QStringList({u"TRACKING"_s, message, u"Back to the shelves"_s}));
    QCOMPARE(picture->property("player").value<VideoPlayer*>(), house.player.data());
    const QImage seen = house.stage.picture();
    const QRectF words = Stage::area(house.text(message));
    for (const QPointF point : {QPointF(960, 20), QPointF(960, 1060), words.topLeft(), words.bottomRight()})
        QCOMPARE(seen.pixelColor(point.toPoint()), QColor(u"green"_s));
}

void TapePlayerViewTest::failureHidesOtherPanels()
{
    TapePlayerHouse& house = open(TapePlayerHouse::tape());
    house.play();
    house.press(Qt::Key_Down);
    QVERIFY(house.shows("InformationPanel"));
    house.player->fail({});
    house.stage.waitUntilIdle();
    QVERIFY(!house.shows("InformationPanel"));
    QVERIFY(!house.shows("PlayerControls"));
    QVERIFY(!house.shows("LoadingSign"));
    QCOMPARE(house.focused(), u"Back to the shelves"_s);
}

void TapePlayerViewTest::longFailureMessageStaysInSafeArea()
{
    TapePlayerHouse& house = open(TapePlayerHouse::tape({}));
    house.item("FailurePanel")->setProperty("message", u"This goes on and on. "_s.repeated(400));
    house.stage.waitUntilIdle();
    for (const QQuickItem* text : Stage::texts(house.view))
        QVERIFY(QRectF(80, 60, 1760, 960).contains(Stage::area(text)));
}

void TapePlayerViewTest::backDismissesOnce()
{
    TapePlayerHouse& house = open(TapePlayerHouse::tape());
    house.play();
    house.press(Qt::Key_Back);
    QCOMPARE(house.dismissals->count(), 1);
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
    TapePlayerHouse& house = open(TapePlayerHouse::tape(), 3725.5);
    QCOMPARE(house.player->seeks.first().seconds, 3725.5);
}

void TapePlayerViewTest::playbackEndsWhenScreenDisappears()
{
    TapePlayerHouse& house = open(TapePlayerHouse::tape());
    house.play();
    Q_EMIT house.view->disappeared();
    QVERIFY(!house.player);
    QVERIFY(!house.controller->player());
}

void TapePlayerViewTest::playerKeysAreAccepted()
{
    TapePlayerHouse& house = open(TapePlayerHouse::tape());
    house.play();
    for (const int key : {Qt::Key_MediaTogglePlayPause, Qt::Key_Select, Qt::Key_Left, Qt::Key_Right}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&house.stage.window(), &press);
        QVERIFY(press.isAccepted());
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&house.stage.window(), &release);
    }
}

QUILLMERE_TEST(TapePlayerViewTest, QGuiApplication)
#include "TapePlayerViewTest.moc"
