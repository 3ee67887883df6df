#include "NewsFixture.h"

#include "NewsTexts.h"
#include "TestMain.h"

namespace quillmere {

/** The news channel's screen: content in each state of the broadcast, keys, and dismissal. */
class NewsViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_fixture.reset(); }
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
    NewsFixture& open(int channels = 0)
    {
        m_fixture = std::make_unique<NewsFixture>(channels);
        return *m_fixture;
    }
    NewsFixture& openOnAir(int channels = 0)
    {
        NewsFixture& fixture = open(channels);
        fixture.answerPass(true);
        fixture.waitForFrame();
        return fixture;
    }

    std::unique_ptr<NewsFixture> m_fixture;
};

void NewsViewTest::openedScreenShowsStandbyCardWhileChecking()
{
    NewsFixture& fixture = open();
    QVERIFY(fixture.shows("StandbyCard"));
    QVERIFY(fixture.showsText(NewsTexts::towerLine(true)));
    QVERIFY(fixture.showsText(u"The Harbor Report"_s));
    QVERIFY(!fixture.shows("VideoView"));
    QVERIFY(!fixture.item("LowerThird"));
    QCOMPARE(TestScreen::area(fixture.item("StandbyCard")).size(), QSizeF(1920, 1080));
}

void NewsViewTest::standbyCardIsShownWhenNothingIsOnAir()
{
    NewsFixture& fixture = open();
    fixture.answerPass(false);
    QVERIFY(fixture.shows("StandbyCard"));
    QVERIFY(fixture.showsText(NewsTexts::towerLine(false)));
    QVERIFY(!fixture.showsText(NewsTexts::towerLine(true)));
}

void NewsViewTest::standbyCardIsUpdatedWithStatus()
{
    NewsFixture& fixture = open();
    fixture.answerPass(false);
    TVStatus status;
    status.news.programTitle = u"The Late Report"_s;
    fixture.store->setStatus(status);
    QVERIFY(fixture.showsText(u"The Late Report"_s));
    QVERIFY(!fixture.showsText(u"The Harbor Report"_s));
}

void NewsViewTest::pictureAndLowerThirdAreShownWhenOnAir()
{
    NewsFixture& fixture = openOnAir();
    QVERIFY(!fixture.item("StandbyCard"));
    QVERIFY(fixture.shows("VideoView"));
    QCOMPARE(fixture.item("VideoView")->property("player").value<VideoPlayer*>(), fixture.players.first().data());
    QVERIFY(fixture.hasSlidIn());
    QCOMPARE(TestScreen::area(fixture.item("VideoView")), QRectF(0, 0, 1920, 1080));
    QVERIFY(fixture.item("LowerThird")->property("shown").toBool());
    for (const QString& words :
         {u"LIVE"_s, u"5 O'CLOCK NEWS"_s, u"The Harbor Report"_s, u"Fog, ferries and the vote"_s})
        QTRY_VERIFY2(fixture.showsText(words), qPrintable(words));
}

void NewsViewTest::backgroundOfPictureIsBlackUpToEdges()
{
    NewsFixture& fixture = open();
    fixture.window().setColor(Qt::blue);
    fixture.answerPass(true);
    const QImage picture = fixture.picture();
    for (const QPoint point : {QPoint(0, 0), QPoint(1919, 0), QPoint(1919, 1079), QPoint(960, 540)})
        QCOMPARE(picture.pixelColor(point), QColor(Qt::black));
}

void NewsViewTest::lowerThirdStaysBelowTunerStrip()
{
    NewsFixture& fixture = openOnAir(2);
    TVStatus status = fixture.store->status();
    status.news.programTitle = u"Joint special session of the harbour board. "_s.repeated(60);
    fixture.store->setStatus(status);
    QTRY_COMPARE(fixture.item("LowerThird")->property("slideProgress").toDouble(), 1.0);
    QVERIFY(fixture.hasSlidIn());
    fixture.waitForFrame();
    const QRectF panel = TestScreen::area(TestScreen::first(fixture.item("LowerThird"), "PixelRectangle"));
    const QRectF strip = TestScreen::area(fixture.item("TunerStrip"));
    QVERIFY2(panel.top() > strip.bottom() && panel.top() < strip.bottom() + 80,
             qPrintable(QString::number(panel.top())));
    // Without the strip, the panel may use that space too.
    fixture.setChannels(0);
    status.news.channels.clear();
    fixture.store->setStatus(status);
    fixture.waitForFrame();
    const QRectF taller = TestScreen::area(TestScreen::first(fixture.item("LowerThird"), "PixelRectangle"));
    QVERIFY(taller.top() >= 0 && taller.top() < strip.bottom());
    QCOMPARE(taller.bottom(), panel.bottom());
}

void NewsViewTest::lowerThirdDisappearsAfterEightSecondsPermanently()
{
    NewsFixture& fixture = openOnAir();
    fixture.clock.advance(5999ms);
    QVERIFY(fixture.item("LowerThird")->property("shown").toBool());
    fixture.clock.advance(1ms);
    fixture.answerPass(true);
    QVERIFY(fixture.item("LowerThird")->property("shown").toBool());
    fixture.clock.advance(2s);
    QVERIFY(!fixture.item("LowerThird")->property("shown").toBool());
    QTRY_VERIFY(!fixture.showsText(u"LIVE"_s));
    fixture.clock.advance(4s);
    fixture.answerPass(true);
    fixture.waitForFrame();
    QVERIFY(!fixture.showsText(u"LIVE"_s));
    QVERIFY(fixture.shows("VideoView"));
}

void NewsViewTest::lowerThirdAppearsAgainWithNewBroadcast()
{
    NewsFixture& fixture = openOnAir();
    fixture.answerNextPass(true);
    fixture.answerNextPass(false);
    QVERIFY(fixture.shows("StandbyCard"));
    QVERIFY(!fixture.item("LowerThird"));
    fixture.answerNextPass(true);
    QVERIFY(fixture.item("LowerThird")->property("shown").toBool());
    QTRY_VERIFY(fixture.showsText(u"LIVE"_s));
    QCOMPARE(fixture.players.size(), 2);
}

void NewsViewTest::lowerThirdAppearsAgainForAnotherStation()
{
    NewsFixture& fixture = openOnAir();
    fixture.answerNextPass(true);
    fixture.clock.advance(4s);
    QVERIFY(!fixture.item("LowerThird")->property("shown").toBool());
    TVStatus status = fixture.store->status();
    status.news.channels.insert(u"2"_s, {u"Channel Two"_s, u"/live/two.m3u8"_s});
    fixture.store->setStatus(status);
    QVERIFY(fixture.item("LowerThird")->property("shown").toBool());
    QTRY_VERIFY(fixture.showsText(u"CHANNEL TWO"_s));
}

void NewsViewTest::tunerStripIsHiddenForOneStation()
{
    NewsFixture& fixture = open();
    QVERIFY(!fixture.shows("TunerStrip"));
    QCOMPARE(fixture.focusedName(), QString());
    QVERIFY(fixture.view->hasActiveFocus());
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
    NewsFixture& fixture = open(1);
    fixture.answerPass(lit);
    QVERIFY(fixture.shows("TunerStrip"));
    QVERIFY(fixture.hasSlidIn());
    const QRectF strip = TestScreen::area(fixture.item("TunerStrip"));
    QCOMPARE(strip.topLeft(), QPointF(0, 0));
    QCOMPARE(strip.width(), 1920.0);
    const auto layers = fixture.view->childItems();
    QCOMPARE(layers.constLast(), fixture.item("TunerStrip"));
    for (const QQuickItem* layer : layers)
        QCOMPARE(layer->z(), 0.0);
}

void NewsViewTest::stripFocusesCurrentStation()
{
    NewsFixture& fixture = open(3);
    QCOMPARE(fixture.focusedName(), u"5 5 O'Clock News"_s);
    fixture.answerPass(true);
    QCOMPARE(fixture.focusedName(), u"5 5 O'Clock News"_s);
    TVStatus status = fixture.store->status();
    m_fixture.reset();

    NewsFixture& other = open();
    status.news.channels.insert(u"2"_s, {u"Channel Two"_s, u"/live/two.m3u8"_s});
    other.store->setStatus(status);
    QTRY_COMPARE(other.focusedName(), u"2 Channel Two"_s);
}

void NewsViewTest::arrowsOnlyMoveFocusInStrip()
{
    NewsFixture& fixture = openOnAir(2);
    QStringList seen;
    for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Up}) {
        fixture.pressAndDraw(key);
        seen.append(fixture.focusedName().section(u' ', 0, 0));
    }
    QCOMPARE(seen, QStringList({u"5"_s, u"6"_s, u"7"_s, u"7"_s, u"7"_s, u"7"_s}));
    QVERIFY(!fixture.controller->selected());
    QVERIFY(fixture.controller->isLit());
}

void NewsViewTest::selectTunesToStation()
{
    NewsFixture& fixture = openOnAir(2);
    fixture.pressAndDraw(Qt::Key_Right);
    fixture.pressAndDraw(Qt::Key_Select);
    QCOMPARE(fixture.controller->currentStation().number, u"6"_s);
    QVERIFY(!fixture.players.first());
    QVERIFY(fixture.shows("StandbyCard"));
    QVERIFY(fixture.showsText(NewsTexts::towerLine(true)));
    fixture.answerPass(true, NewsFixture::path(6));
    fixture.waitForFrame();
    QVERIFY(fixture.shows("VideoView"));
    QTRY_VERIFY(fixture.showsText(u"STATION 6"_s));
}

void NewsViewTest::selectOnCurrentStationHasNoEffect()
{
    NewsFixture& fixture = openOnAir(2);
    const QPointer<ScriptedVideoPlayer> player = fixture.players.first();
    fixture.pressAndDraw(Qt::Key_Select);
    QVERIFY(player);
    QVERIFY(fixture.controller->isLit());
    QVERIFY(!fixture.controller->isChecking());
}

void NewsViewTest::selectedStationKeepsFocus()
{
    NewsFixture& fixture = openOnAir(4);
    fixture.pressAndDraw(Qt::Key_Right);
    fixture.pressAndDraw(Qt::Key_Right);
    fixture.pressAndDraw(Qt::Key_Select);
    QCOMPARE(fixture.focusedName(), u"7 Station 7"_s);
    fixture.answerPass(true, NewsFixture::path(7));
    fixture.waitForFrame();
    QCOMPARE(fixture.focusedName(), u"7 Station 7"_s);
    fixture.pressAndDraw(Qt::Key_Left);
    QCOMPARE(fixture.focusedName(), u"6 Station 6"_s);
}

void NewsViewTest::channelKeysChangeStation()
{
    NewsFixture& fixture = openOnAir(2);
    fixture.pressAndDraw(Qt::Key_ChannelUp);
    QCOMPARE(fixture.controller->currentStation().number, u"6"_s);
    fixture.pressAndDraw(Qt::Key_ChannelDown);
    fixture.pressAndDraw(Qt::Key_ChannelDown);
    QCOMPARE(fixture.controller->currentStation().number, u"7"_s);
    QVERIFY(fixture.showsText(NewsTexts::towerLine(true)));
}

void NewsViewTest::appearingStripTakesFocus()
{
    NewsFixture& fixture = openOnAir();
    fixture.setChannels(2);
    QTRY_COMPARE(fixture.focusedName(), u"5 5 O'Clock News"_s);
    fixture.pressAndDraw(Qt::Key_Right);
    QCOMPARE(fixture.focusedName(), u"6 Station 6"_s);
}

void NewsViewTest::screenGetsFocusWhenStripDisappears()
{
    NewsFixture& fixture = openOnAir(2);
    fixture.setChannels(0);
    fixture.waitForFrame();
    QVERIFY(!fixture.shows("TunerStrip"));
    QCOMPARE(fixture.focusedName(), QString());
    QTRY_VERIFY(fixture.view->hasActiveFocus());
    fixture.pressAndDraw(Qt::Key_Back);
    QTRY_VERIFY(!fixture.view);
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
    NewsFixture& fixture = open(channels);
    fixture.answerPass(lit);
    int dismissals = 0;
    const QMetaObject::Connection counting = connect(qobject_cast<FullScreenCover*>(fixture.cover),
                                                     &FullScreenCover::dismissed, this, [&] { ++dismissals; });
    fixture.pressAndDraw(Qt::Key_Back);
    QCOMPARE(dismissals, 1);
    QTRY_VERIFY(!fixture.view);
    QVERIFY(fixture.players.isEmpty() || !fixture.players.first());
    disconnect(counting);
    const int asked = fixture.http.count();
    fixture.clock.advance(1h);
    QCOMPARE(fixture.http.count(), asked);
}

void NewsViewTest::playerIsDestroyedBeforeScreenSlidesOut()
{
    NewsFixture& fixture = openOnAir(2);
    fixture.press(Qt::Key_Back);
    QVERIFY(fixture.view);
    QVERIFY(!fixture.players.first());
    QVERIFY(!fixture.controller->player());
    QVERIFY(!fixture.item("StandbyCard"));
}

void NewsViewTest::reopenedScreenStartsFresh()
{
    NewsFixture& fixture = openOnAir(2);
    fixture.pressAndDraw(Qt::Key_ChannelUp);
    fixture.pressAndDraw(Qt::Key_Back);
    QTRY_VERIFY(!fixture.view);
    fixture.cover->setProperty("screen", fixture.cover->property("news"));
    auto* const controller = TestScreen::first(fixture.cover, "NewsView")->findChild<NewsController*>();
    QVERIFY(!controller->selected());
    QVERIFY(!controller->isLive());
    QVERIFY(controller->isChecking());
    QCOMPARE(controller->currentStation().number, u"5"_s);
}

QUILLMERE_TEST(NewsViewTest, QGuiApplication)

} // namespace quillmere

#include "NewsViewTest.moc"
