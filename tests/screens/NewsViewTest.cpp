#include "NewsHouse.h"

#include "NewsTexts.h"

/** The news channel's screen: what is shown in each state of its tower, and how it is driven and left. */
class NewsViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_house.reset(); }
    void openingShowsTheStandbyCardChecking();
    void aDarkTowerShowsTheStandbyCardWatching();
    void theStandbyCardFollowsTheStatus();
    void aLitTowerShowsThePictureWithItsLowerThird();
    void theGroundOfThePictureIsBlackToTheEdges();
    void theLowerThirdStaysBelowTheStrip();
    void theLowerThirdLeavesAndStaysAway();
    void theLowerThirdComesAgainWithTheTower();
    void theLowerThirdComesAgainForAnotherStation();

    void oneStationHasNoTunerStrip();
    void theTunerStripLiesOverEverything_data();
    void theTunerStripLiesOverEverything();
    void theStripHoldsTheFocusAtTheCurrentStation();
    void arrowsWalkTheStripAndNothingElse();
    void selectPicksTheStation();
    void theStationOnTheAirIsPickedWithoutEffect();
    void aPickedStationKeepsTheFocus();
    void channelKeysStep();
    void aStripThatComesTakesTheFocus();
    void aStripThatGoesLeavesTheKeysToTheScreen();

    void backLeavesOnce_data();
    void backLeavesOnce();
    void leavingWhileLitSilencesBeforeTheSlide();
    void theScreenOpensAnew();

private:
    NewsHouse& open(int channels = 0)
    {
        m_house = std::make_unique<NewsHouse>(channels);
        return *m_house;
    }
    NewsHouse& openLit(int channels = 0)
    {
        NewsHouse& house = open(channels);
        house.pass(true);
        house.stage.waitForFrame();
        return house;
    }

    std::unique_ptr<NewsHouse> m_house;
};

void NewsViewTest::openingShowsTheStandbyCardChecking()
{
    NewsHouse& house = open();
    QVERIFY(house.shows("StandbyCard"));
    QVERIFY(house.reads(NewsTexts::towerLine(true)));
    QVERIFY(house.reads(u"The Harbor Report"_s));
    QVERIFY(!house.shows("VideoView"));
    QVERIFY(!house.piece("LowerThird"));
    QCOMPARE(Stage::area(house.piece("StandbyCard")).size(), QSizeF(1920, 1080));
}

void NewsViewTest::aDarkTowerShowsTheStandbyCardWatching()
{
    NewsHouse& house = open();
    house.pass(false);
    QVERIFY(house.shows("StandbyCard"));
    QVERIFY(house.reads(NewsTexts::towerLine(false)));
    QVERIFY(!house.reads(NewsTexts::towerLine(true)));
}

void NewsViewTest::theStandbyCardFollowsTheStatus()
{
    NewsHouse& house = open();
    house.pass(false);
    TVStatus status;
    status.news.programTitle = u"The Late Report"_s;
    house.store.setStatus(status);
    QVERIFY(house.reads(u"The Late Report"_s));
    QVERIFY(!house.reads(u"The Harbor Report"_s));
}

void NewsViewTest::aLitTowerShowsThePictureWithItsLowerThird()
{
    NewsHouse& house = openLit();
    QVERIFY(!house.piece("StandbyCard"));
    QVERIFY(house.shows("VideoView"));
    QCOMPARE(house.piece("VideoView")->property("player").value<VideoPlayer*>(), house.players.first().data());
    QVERIFY(house.hasArrived());
    QCOMPARE(Stage::area(house.piece("VideoView")), QRectF(0, 0, 1920, 1080));
    QVERIFY(house.piece("LowerThird")->property("shown").toBool());
    for (const QString& words :
         {u"LIVE"_s, u"5 O'CLOCK NEWS"_s, u"The Harbor Report"_s, u"Fog, ferries and the vote"_s})
        QTRY_VERIFY2(house.reads(words), qPrintable(words));
}

void NewsViewTest::theGroundOfThePictureIsBlackToTheEdges()
{
    NewsHouse& house = open();
    house.stage.window().setColor(Qt::blue);
    house.pass(true);
    const QImage picture = house.stage.picture();
    for (const QPoint place : {QPoint(0, 0), QPoint(1919, 0), QPoint(1919, 1079), QPoint(960, 540)})
        QCOMPARE(picture.pixelColor(place), QColor(Qt::black));
}

void NewsViewTest::theLowerThirdStaysBelowTheStrip()
{
    NewsHouse& house = openLit(2);
    TVStatus status = house.store.status();
    status.news.programTitle = u"Joint special session of the harbour board. "_s.repeated(60);
    house.store.setStatus(status);
    QTRY_COMPARE(house.piece("LowerThird")->property("presence").toDouble(), 1.0);
    QVERIFY(house.hasArrived());
    house.stage.waitForFrame();
    const QRectF panel = Stage::area(Stage::first(house.piece("LowerThird"), "PixelRectangle"));
    const QRectF strip = Stage::area(house.piece("TunerStrip"));
    QVERIFY2(panel.top() > strip.bottom() && panel.top() < strip.bottom() + 80,
             qPrintable(QString::number(panel.top())));
    // Without a strip it has that room, too.
    house.setChannels(0);
    status.news.channels.clear();
    house.store.setStatus(status);
    house.stage.waitForFrame();
    const QRectF taller = Stage::area(Stage::first(house.piece("LowerThird"), "PixelRectangle"));
    QVERIFY(taller.top() >= 0 && taller.top() < strip.bottom());
    QCOMPARE(taller.bottom(), panel.bottom());
}

void NewsViewTest::theLowerThirdLeavesAndStaysAway()
{
    NewsHouse& house = openLit();
    house.clock.advance(5999ms);
    QVERIFY(house.piece("LowerThird")->property("shown").toBool());
    house.clock.advance(1ms);
    house.pass(true);
    QVERIFY(house.piece("LowerThird")->property("shown").toBool());
    house.clock.advance(2s);
    QVERIFY(!house.piece("LowerThird")->property("shown").toBool());
    QTRY_VERIFY(!house.reads(u"LIVE"_s));
    house.clock.advance(4s);
    house.pass(true);
    house.stage.waitForFrame();
    QVERIFY(!house.reads(u"LIVE"_s));
    QVERIFY(house.shows("VideoView"));
}

void NewsViewTest::theLowerThirdComesAgainWithTheTower()
{
    NewsHouse& house = openLit();
    house.nextPass(true);
    house.nextPass(false);
    QVERIFY(house.shows("StandbyCard"));
    QVERIFY(!house.piece("LowerThird"));
    house.nextPass(true);
    QVERIFY(house.piece("LowerThird")->property("shown").toBool());
    QTRY_VERIFY(house.reads(u"LIVE"_s));
    QCOMPARE(house.players.size(), 2);
}

void NewsViewTest::theLowerThirdComesAgainForAnotherStation()
{
    NewsHouse& house = openLit();
    house.nextPass(true);
    house.clock.advance(4s);
    QVERIFY(!house.piece("LowerThird")->property("shown").toBool());
    TVStatus status = house.store.status();
    status.news.channels.insert(u"2"_s, {u"Channel Two"_s, u"/live/two.m3u8"_s});
    house.store.setStatus(status);
    QVERIFY(house.piece("LowerThird")->property("shown").toBool());
    QTRY_VERIFY(house.reads(u"CHANNEL TWO"_s));
}

void NewsViewTest::oneStationHasNoTunerStrip()
{
    NewsHouse& house = open();
    QVERIFY(!house.shows("TunerStrip"));
    QCOMPARE(house.focusedStation(), u"nothing"_s);
    QVERIFY(house.view->hasActiveFocus());
}

void NewsViewTest::theTunerStripLiesOverEverything_data()
{
    QTest::addColumn<bool>("lit");
    QTest::newRow("dark") << false;
    QTest::newRow("lit") << true;
}

void NewsViewTest::theTunerStripLiesOverEverything()
{
    QFETCH(const bool, lit);
    NewsHouse& house = open(1);
    house.pass(lit);
    QVERIFY(house.shows("TunerStrip"));
    QVERIFY(house.hasArrived());
    const QRectF strip = Stage::area(house.piece("TunerStrip"));
    QCOMPARE(strip.topLeft(), QPointF(0, 0));
    QCOMPARE(strip.width(), 1920.0);
    const auto layers = house.view->childItems();
    QCOMPARE(layers.constLast(), house.piece("TunerStrip"));
    for (const QQuickItem* layer : layers)
        QCOMPARE(layer->z(), 0.0);
}

void NewsViewTest::theStripHoldsTheFocusAtTheCurrentStation()
{
    NewsHouse& house = open(3);
    QCOMPARE(house.focusedStation(), u"5 5 O'Clock News"_s);
    house.pass(true);
    QCOMPARE(house.focusedStation(), u"5 5 O'Clock News"_s);
    TVStatus status = house.store.status();
    m_house.reset();

    NewsHouse& other = open();
    status.news.channels.insert(u"2"_s, {u"Channel Two"_s, u"/live/two.m3u8"_s});
    other.store.setStatus(status);
    QTRY_COMPARE(other.focusedStation(), u"2 Channel Two"_s);
}

void NewsViewTest::arrowsWalkTheStripAndNothingElse()
{
    NewsHouse& house = openLit(2);
    QStringList seen;
    for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Up}) {
        house.press(key);
        seen.append(house.focusedStation().section(u' ', 0, 0));
    }
    QCOMPARE(seen, QStringList({u"5"_s, u"6"_s, u"7"_s, u"7"_s, u"7"_s, u"7"_s}));
    QVERIFY(!house.controller->selected());
    QVERIFY(house.controller->isLit());
}

void NewsViewTest::selectPicksTheStation()
{
    NewsHouse& house = openLit(2);
    house.press(Qt::Key_Right);
    house.press(Qt::Key_Select);
    QCOMPARE(house.controller->currentStation().number, u"6"_s);
    QVERIFY(!house.players.first());
    QVERIFY(house.shows("StandbyCard"));
    QVERIFY(house.reads(NewsTexts::towerLine(true)));
    house.pass(true, NewsHouse::path(6));
    house.stage.waitForFrame();
    QVERIFY(house.shows("VideoView"));
    QTRY_VERIFY(house.reads(u"STATION 6"_s));
}

void NewsViewTest::theStationOnTheAirIsPickedWithoutEffect()
{
    NewsHouse& house = openLit(2);
    const QPointer<ScriptedVideoPlayer> player = house.players.first();
    house.press(Qt::Key_Select);
    QVERIFY(player);
    QVERIFY(house.controller->isLit());
    QVERIFY(!house.controller->isChecking());
}

void NewsViewTest::aPickedStationKeepsTheFocus()
{
    NewsHouse& house = openLit(4);
    house.press(Qt::Key_Right);
    house.press(Qt::Key_Right);
    house.press(Qt::Key_Select);
    QCOMPARE(house.focusedStation(), u"7 Station 7"_s);
    house.pass(true, NewsHouse::path(7));
    house.stage.waitForFrame();
    QCOMPARE(house.focusedStation(), u"7 Station 7"_s);
    house.press(Qt::Key_Left);
    QCOMPARE(house.focusedStation(), u"6 Station 6"_s);
}

void NewsViewTest::channelKeysStep()
{
    NewsHouse& house = openLit(2);
    house.press(Qt::Key_ChannelUp);
    QCOMPARE(house.controller->currentStation().number, u"6"_s);
    house.press(Qt::Key_ChannelDown);
    house.press(Qt::Key_ChannelDown);
    QCOMPARE(house.controller->currentStation().number, u"7"_s);
    QVERIFY(house.reads(NewsTexts::towerLine(true)));
}

void NewsViewTest::aStripThatComesTakesTheFocus()
{
    NewsHouse& house = openLit();
    house.setChannels(2);
    QTRY_COMPARE(house.focusedStation(), u"5 5 O'Clock News"_s);
    house.press(Qt::Key_Right);
    QCOMPARE(house.focusedStation(), u"6 Station 6"_s);
}

void NewsViewTest::aStripThatGoesLeavesTheKeysToTheScreen()
{
    NewsHouse& house = openLit(2);
    house.setChannels(0);
    house.stage.waitForFrame();
    QVERIFY(!house.shows("TunerStrip"));
    QCOMPARE(house.focusedStation(), u"nothing"_s);
    QTRY_VERIFY(house.view->hasActiveFocus());
    house.press(Qt::Key_Back);
    QTRY_VERIFY(!house.view);
}

void NewsViewTest::backLeavesOnce_data()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<bool>("lit");
    QTest::newRow("dark") << 0 << false;
    QTest::newRow("dark, from the strip") << 2 << false;
    QTest::newRow("lit") << 0 << true;
    QTest::newRow("lit, from the strip") << 2 << true;
}

void NewsViewTest::backLeavesOnce()
{
    QFETCH(const int, channels);
    QFETCH(const bool, lit);
    NewsHouse& house = open(channels);
    house.pass(lit);
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

void NewsViewTest::leavingWhileLitSilencesBeforeTheSlide()
{
    NewsHouse& house = openLit(2);
    house.stage.press(Qt::Key_Back);
    QVERIFY(house.view);
    QVERIFY(!house.players.first());
    QVERIFY(!house.controller->player());
    QVERIFY(!house.piece("StandbyCard"));
}

void NewsViewTest::theScreenOpensAnew()
{
    NewsHouse& house = openLit(2);
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

QTEST_MAIN(NewsViewTest)
#include "NewsViewTest.moc"
