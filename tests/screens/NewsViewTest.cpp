#include "NewsHouse.h"

#include "NewsTexts.h"
#include "TestMain.h"

/** The news channel's screen: content in each state of the broadcast, keys, and dismissal. */
class NewsViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_house.reset(); }
    void openedScreenShowsStandbyCardWhileChecking();
    void standbyCardIsShownWhenNothingIsOnAir();
    void standbyCardIsUpdatedWithStatus();
    void pictureAndLowerThirdAreShownWhenOnAir();
    void backgroundOfPictureIsBlackUpToEdges();
    void lowerThirdStaysBelowTunerStrip();
    void lowerThirdDisappearsAfterEightSecondsPermanently();
    void lowerThirdAppearsAgainWithNewBroadcast();
    void lowerThirdAppearsAgainForAnotherStation();

    void tunerStripIsHiddenForOneStation();
    void tunerStripIsAboveAllOtherItems_data();
    void tunerStripIsAboveAllOtherItems();
    void stripFocusesCurrentStation();
    void arrowsOnlyMoveFocusInStrip();
    void selectTunesToStation();
    void selectOnCurrentStationHasNoEffect();
    void selectedStationKeepsFocus();
    void channelKeysChangeStation();
    void appearingStripTakesFocus();
    void screenGetsFocusWhenStripDisappears();

    void backDismissesOnce_data();
    void backDismissesOnce();
    void playerIsDestroyedBeforeScreenSlidesOut();
    void reopenedScreenStartsFresh();

private:
    NewsHouse& open(int channels = 0)
    {
        m_house = std::make_unique<NewsHouse>(channels);
        return *m_house;
    }
    NewsHouse& openOnAir(int channels = 0)
    {
        NewsHouse& house = open(channels);
        house.answerPass(true);
        house.stage.waitForFrame();
        return house;
    }

    std::unique_ptr<NewsHouse> m_house;
};

void NewsViewTest::openedScreenShowsStandbyCardWhileChecking()
{
    NewsHouse& house = open();
    QVERIFY(house.shows("StandbyCard"));
    QVERIFY(house.showsText(NewsTexts::towerLine(true)));
    QVERIFY(house.showsText(u"The Harbor Report"_s));
    QVERIFY(!house.shows("VideoView"));
    QVERIFY(!house.item("LowerThird"));
    QCOMPARE(Stage::area(house.item("StandbyCard")).size(), QSizeF(1920, 1080));
}

void NewsViewTest::standbyCardIsShownWhenNothingIsOnAir()
{
    NewsHouse& house = open();
    house.answerPass(false);
    QVERIFY(house.shows("StandbyCard"));
    QVERIFY(house.showsText(NewsTexts::towerLine(false)));
    QVERIFY(!house.showsText(NewsTexts::towerLine(true)));
}

void NewsViewTest::standbyCardIsUpdatedWithStatus()
{
    NewsHouse& house = open();
    house.answerPass(false);
    TVStatus status;
    status.news.programTitle = u"The Late Report"_s;
    house.store.setStatus(status);
    QVERIFY(house.showsText(u"The Late Report"_s));
    QVERIFY(!house.showsText(u"The Harbor Report"_s));
}

void NewsViewTest::pictureAndLowerThirdAreShownWhenOnAir()
{
    NewsHouse& house = openOnAir();
    QVERIFY(!house.item("StandbyCard"));
    QVERIFY(house.shows("VideoView"));
    QCOMPARE(house.item("VideoView")->property("player").value<VideoPlayer*>(), house.players.first().data());
    QVERIFY(house.hasSlidIn());
    QCOMPARE(Stage::area(house.item("VideoView")), QRectF(0, 0, 1920, 1080));
    QVERIFY(house.item("LowerThird")->property("shown").toBool());
    for (const QString& words :
         {u"LIVE"_s, u"5 O'CLOCK NEWS"_s, u"The Harbor Report"_s, u"Fog, ferries and the vote"_s})
        QTRY_VERIFY2(house.showsText(words), qPrintable(words));
}

void NewsViewTest::backgroundOfPictureIsBlackUpToEdges()
{
    NewsHouse& house = open();
    house.stage.window().setColor(Qt::blue);
    house.answerPass(true);
    const QImage picture = house.stage.picture();
    for (const QPoint point : {QPoint(0, 0), QPoint(1919, 0), QPoint(1919, 1079), QPoint(960, 540)})
        QCOMPARE(picture.pixelColor(point), QColor(Qt::black));
}

void NewsViewTest::lowerThirdStaysBelowTunerStrip()
{
    NewsHouse& house = openOnAir(2);
    TVStatus status = house.store.status();
    status.news.programTitle = u"Joint special session of the harbour board. "_s.repeated(60);
    house.store.setStatus(status);
    QTRY_COMPARE(house.item("LowerThird")->property("presence").toDouble(), 1.0);
    QVERIFY(house.hasSlidIn());
    house.stage.waitForFrame();
    const QRectF panel = Stage::area(Stage::first(house.item("LowerThird"), "PixelRectangle"));
    const QRectF strip = Stage::area(house.item("TunerStrip"));
    QVERIFY2(panel.top() > strip.bottom() && panel.top() < strip.bottom() + 80,
             qPrintable(QString::number(panel.top())));
    // Without the strip, the panel may use that space too.
    house.setChannels(0);
    status.news.channels.clear();
    house.store.setStatus(status);
    house.stage.waitForFrame();
    const QRectF taller = Stage::area(Stage::first(house.item("LowerThird"), "PixelRectangle"));
    QVERIFY(taller.top() >= 0 && taller.top() < strip.bottom());
    QCOMPARE(taller.bottom(), panel.bottom());
}

void NewsViewTest::lowerThirdDisappearsAfterEightSecondsPermanently()
{
    NewsHouse& house = openOnAir();
    house.clock.advance(5999ms);
    QVERIFY(house.item("LowerThird")->property("shown").toBool());
    house.clock.advance(1ms);
    house.answerPass(true);
    QVERIFY(house.item("LowerThird")->property("shown").toBool());
    house.clock.advance(2s);
    QVERIFY(!house.item("LowerThird")->property("shown").toBool());
    QTRY_VERIFY(!house.showsText(u"LIVE"_s));
    house.clock.advance(4s);
    house.answerPass(true);
    house.stage.waitForFrame();
    QVERIFY(!house.showsText(u"LIVE"_s));
    QVERIFY(house.shows("VideoView"));
}

void NewsViewTest::lowerThirdAppearsAgainWithNewBroadcast()
{
    NewsHouse& house = openOnAir();
    house.answerNextPass(true);
    house.answerNextPass(false);
    QVERIFY(house.shows("StandbyCard"));
    QVERIFY(!house.item("LowerThird"));
    house.answerNextPass(true);
    QVERIFY(house.item("LowerThird")->property("shown").toBool());
    QTRY_VERIFY(house.showsText(u"LIVE"_s));
    QCOMPARE(house.players.size(), 2);
}

void NewsViewTest::lowerThirdAppearsAgainForAnotherStation()
{
    NewsHouse& house = openOnAir();
    house.answerNextPass(true);
    house.clock.advance(4s);
    QVERIFY(!house.item("LowerThird")->property("shown").toBool());
    TVStatus status = house.store.status();
    status.news.channels.insert(u"2"_s, {u"Channel Two"_s, u"/live/two.m3u8"_s});
    house.store.setStatus(status);
    QVERIFY(house.item("LowerThird")->property("shown").toBool());
    QTRY_VERIFY(house.showsText(u"CHANNEL TWO"_s));
}

void NewsViewTest::tunerStripIsHiddenForOneStation()
{
    NewsHouse& house = open();
    QVERIFY(!house.shows("TunerStrip"));
    QCOMPARE(house.focusedStation(), u"nothing"_s);
    QVERIFY(house.view->hasActiveFocus());
}

void NewsViewTest::tunerStripIsAboveAllOtherItems_data()
{
    QTest::addColumn<bool>("lit");
    QTest::newRow("dark") << false;
    QTest::newRow("lit") << true;
}

void NewsViewTest::tunerStripIsAboveAllOtherItems()
{
    QFETCH(const bool, lit);
    NewsHouse& house = open(1);
    house.answerPass(lit);
    QVERIFY(house.shows("TunerStrip"));
    QVERIFY(house.hasSlidIn());
    const QRectF strip = Stage::area(house.item("TunerStrip"));
    QCOMPARE(strip.topLeft(), QPointF(0, 0));
    QCOMPARE(strip.width(), 1920.0);
    const auto layers = house.view->childItems();
    QCOMPARE(layers.constLast(), house.item("TunerStrip"));
    for (const QQuickItem* layer : layers)
        QCOMPARE(layer->z(), 0.0);
}

void NewsViewTest::stripFocusesCurrentStation()
{
    NewsHouse& house = open(3);
    QCOMPARE(house.focusedStation(), u"5 5 O'Clock News"_s);
    house.answerPass(true);
    QCOMPARE(house.focusedStation(), u"5 5 O'Clock News"_s);
    TVStatus status = house.store.status();
    m_house.reset();

    NewsHouse& other = open();
    status.news.channels.insert(u"2"_s, {u"Channel Two"_s, u"/live/two.m3u8"_s});
    other.store.setStatus(status);
    QTRY_COMPARE(other.focusedStation(), u"2 Channel Two"_s);
}

void NewsViewTest::arrowsOnlyMoveFocusInStrip()
{
    NewsHouse& house = openOnAir(2);
    QStringList seen;
    for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Up}) {
        house.press(key);
        seen.append(house.focusedStation().section(u' ', 0, 0));
    }
    QCOMPARE(seen, QStringList({u"5"_s, u"6"_s, u"7"_s, u"7"_s, u"7"_s, u"7"_s}));
    QVERIFY(!house.controller->selected());
    QVERIFY(house.controller->isLit());
}

void NewsViewTest::selectTunesToStation()
{
    NewsHouse& house = openOnAir(2);
    house.press(Qt::Key_Right);
    house.press(Qt::Key_Select);
    QCOMPARE(house.controller->currentStation().number, u"6"_s);
    QVERIFY(!house.players.first());
    QVERIFY(house.shows("StandbyCard"));
    QVERIFY(house.showsText(NewsTexts::towerLine(true)));
    house.answerPass(true, NewsHouse::path(6));
    house.stage.waitForFrame();
    QVERIFY(house.shows("VideoView"));
    QTRY_VERIFY(house.showsText(u"STATION 6"_s));
}

void NewsViewTest::selectOnCurrentStationHasNoEffect()
{
    NewsHouse& house = openOnAir(2);
    const QPointer<ScriptedVideoPlayer> player = house.players.first();
    house.press(Qt::Key_Select);
    QVERIFY(player);
    QVERIFY(house.controller->isLit());
    QVERIFY(!house.controller->isChecking());
}

void NewsViewTest::selectedStationKeepsFocus()
{
    NewsHouse& house = openOnAir(4);
    house.press(Qt::Key_Right);
    house.press(Qt::Key_Right);
    house.press(Qt::Key_Select);
    QCOMPARE(house.focusedStation(), u"7 Station 7"_s);
    house.answerPass(true, NewsHouse::path(7));
    house.stage.waitForFrame();
    QCOMPARE(house.focusedStation(), u"7 Station 7"_s);
    house.press(Qt::Key_Left);
    QCOMPARE(house.focusedStation(), u"6 Station 6"_s);
}

void NewsViewTest::channelKeysChangeStation()
{
    NewsHouse& house = openOnAir(2);
    house.press(Qt::Key_ChannelUp);
    QCOMPARE(house.controller->currentStation().number, u"6"_s);
    house.press(Qt::Key_ChannelDown);
    house.press(Qt::Key_ChannelDown);
    QCOMPARE(house.controller->currentStation().number, u"7"_s);
    QVERIFY(house.showsText(NewsTexts::towerLine(true)));
}

void NewsViewTest::appearingStripTakesFocus()
{
    NewsHouse& house = openOnAir();
    house.setChannels(2);
    QTRY_COMPARE(house.focusedStation(), u"5 5 O'Clock News"_s);
    house.press(Qt::Key_Right);
    QCOMPARE(house.focusedStation(), u"6 Station 6"_s);
}

void NewsViewTest::screenGetsFocusWhenStripDisappears()
{
    NewsHouse& house = openOnAir(2);
    house.setChannels(0);
    house.stage.waitForFrame();
    QVERIFY(!house.shows("TunerStrip"));
    QCOMPARE(house.focusedStation(), u"nothing"_s);
    QTRY_VERIFY(house.view->hasActiveFocus());
    house.press(Qt::Key_Back);
    QTRY_VERIFY(!house.view);
}

void NewsViewTest::backDismissesOnce_data()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<bool>("lit");
    QTest::newRow("dark") << 0 << false;
    QTest::newRow("dark, from the strip") << 2 << false;
    QTest::newRow("lit") << 0 << true;
    QTest::newRow("lit, from the strip") << 2 << true;
}

void NewsViewTest::backDismissesOnce()
{
    QFETCH(const int, channels);
    QFETCH(const bool, lit);
    NewsHouse& house = open(channels);
    house.answerPass(lit);
    int dismissals = 0;
    const QMetaObject::Connection counting =
        connect(qobject_cast<FullScreenCover*>(house.cover), &FullScreenCover::dismissed, this, [&] { ++dismissals; });
    house.press(Qt::Key_Back);
    QCOMPARE(dismissals, 1);
    QTRY_VERIFY(!house.view);
    QVERIFY(house.players.isEmpty() || !house.players.first());
    disconnect(counting);
    const int asked = house.http.count();
    house.clock.advance(1h);
    QCOMPARE(house.http.count(), asked);
}

void NewsViewTest::playerIsDestroyedBeforeScreenSlidesOut()
{
    NewsHouse& house = openOnAir(2);
    house.stage.press(Qt::Key_Back);
    QVERIFY(house.view);
    QVERIFY(!house.players.first());
    QVERIFY(!house.controller->player());
    QVERIFY(!house.item("StandbyCard"));
}

void NewsViewTest::reopenedScreenStartsFresh()
{
    NewsHouse& house = openOnAir(2);
    house.press(Qt::Key_ChannelUp);
    house.press(Qt::Key_Back);
    QTRY_VERIFY(!house.view);
    house.cover->setProperty("screen", house.cover->property("news"));
    auto* const controller = Stage::first(house.cover, "NewsView")->findChild<NewsController*>();
    QVERIFY(!controller->selected());
    QVERIFY(!controller->isLive());
    QVERIFY(controller->isChecking());
    QCOMPARE(controller->currentStation().number, u"5"_s);
}

QUILLMERE_TEST(NewsViewTest, QGuiApplication)
#include "NewsViewTest.moc"
