#include "NewsFixture.h"
#include "NewsTexts.h"
#include "Rows.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

/** The news channel's screen: content in each state of the broadcast, keys, and dismissal. */
class NewsViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void openedScreenShowsStandbyCardWhileChecking()
    {
        NewsFixture fixture;
        QVERIFY(fixture.shows("StandbyCard"));
        QVERIFY(fixture.showsText(NewsTexts::towerLine(true)));
        QVERIFY(fixture.showsText(u"The Harbor Report"_s));
        QVERIFY(!fixture.shows("VideoView"));
        QVERIFY(!fixture.item("LowerThird"));
        QCOMPARE(TestScreen::area(fixture.item("StandbyCard")).size(), QSizeF(1920, 1080));
        // There is only one station.
        QVERIFY(!fixture.shows("TunerStrip"));
        QCOMPARE(fixture.focusedName(), QString());
        QVERIFY(fixture.view->hasActiveFocus());
    }

    void standbyCardShowsCurrentStatusWhenNothingIsOnAir()
    {
        NewsFixture fixture;
        fixture.answerPass(false);
        QVERIFY(fixture.shows("StandbyCard"));
        QVERIFY(fixture.showsText(NewsTexts::towerLine(false)));
        QVERIFY(!fixture.showsText(NewsTexts::towerLine(true)));
        fixture.changeNews([](NewsStatus& news) { news.programTitle = u"The Late Report"_s; });
        QVERIFY(fixture.showsText(u"The Late Report"_s));
        QVERIFY(!fixture.showsText(u"The Harbor Report"_s));
    }

    void pictureAndLowerThirdAreShownWhenOnAir()
    {
        OnAirFixture fixture;
        QVERIFY(!fixture.item("StandbyCard"));
        QVERIFY(fixture.shows("VideoView"));
        QCOMPARE(fixture.item("VideoView")->property("player").value<VideoPlayer*>(), fixture.players.first().data());
        QVERIFY(fixture.hasSlidIn());
        QCOMPARE(TestScreen::area(fixture.item("VideoView")), QRectF(0, 0, 1920, 1080));
        QVERIFY(fixture.showsLowerThird());
        for (const QString& words :
             {u"LIVE"_s, u"5 O'CLOCK NEWS"_s, u"The Harbor Report"_s, u"Fog, ferries and the vote"_s})
            QTRY_VERIFY2(fixture.showsText(words), qPrintable(words));
    }

    void backgroundOfPictureIsBlackUpToEdges()
    {
        NewsFixture fixture;
        fixture.window().setColor(Qt::blue);
        fixture.answerPass(true);
        const QImage picture = fixture.picture();
        for (const QPoint point : {QPoint(0, 0), QPoint(1919, 0), QPoint(1919, 1079), QPoint(960, 540)})
            QCOMPARE(picture.pixelColor(point), QColor(Qt::black));
    }

    void lowerThirdStaysBelowTunerStrip()
    {
        OnAirFixture fixture(2);
        fixture.changeNews([](NewsStatus& news) {
            news.programTitle = u"Joint special session of the harbour board. "_s.repeated(60);
        });
        QTRY_COMPARE(fixture.item("LowerThird")->property("slideProgress").toDouble(), 1.0);
        QVERIFY(fixture.hasSlidIn());
        fixture.waitForFrame();
        const auto panelArea = [&] {
            return TestScreen::area(TestScreen::first(fixture.item("LowerThird"), "PixelRectangle"));
        };
        const QRectF panel = panelArea();
        const QRectF strip = TestScreen::area(fixture.item("TunerStrip"));
        QVERIFY2(panel.top() > strip.bottom() && panel.top() < strip.bottom() + 80,
                 qPrintable(QString::number(panel.top())));
        // Without the strip, the panel may use that space too.
        fixture.changeNews([](NewsStatus& news) { news.channels.clear(); });
        fixture.waitForFrame();
        const QRectF taller = panelArea();
        QVERIFY(taller.top() >= 0 && taller.top() < strip.bottom());
        QCOMPARE(taller.bottom(), panel.bottom());
    }

    void lowerThirdDisappearsAfterEightSecondsPermanently()
    {
        OnAirFixture fixture;
        fixture.clock.advance(5999ms);
        QVERIFY(fixture.showsLowerThird());
        fixture.clock.advance(1ms);
        fixture.answerPass(true);
        QVERIFY(fixture.showsLowerThird());
        fixture.clock.advance(2s);
        QVERIFY(!fixture.showsLowerThird());
        QTRY_VERIFY(!fixture.showsText(u"LIVE"_s));
        fixture.clock.advance(4s);
        fixture.answerPass(true);
        fixture.waitForFrame();
        QVERIFY(!fixture.showsText(u"LIVE"_s));
        QVERIFY(fixture.shows("VideoView"));
    }

    void lowerThirdAppearsAgainWithNewBroadcast()
    {
        OnAirFixture fixture;
        fixture.answerNextPass(true);
        fixture.answerNextPass(false);
        QVERIFY(fixture.shows("StandbyCard"));
        QVERIFY(!fixture.item("LowerThird"));
        fixture.answerNextPass(true);
        QVERIFY(fixture.showsLowerThird());
        QTRY_VERIFY(fixture.showsText(u"LIVE"_s));
        QCOMPARE(fixture.players.size(), 2);
    }

    void lowerThirdAppearsAgainForAnotherStation()
    {
        OnAirFixture fixture;
        fixture.answerNextPass(true);
        fixture.clock.advance(4s);
        QVERIFY(!fixture.showsLowerThird());
        fixture.addChannelTwo();
        QVERIFY(fixture.showsLowerThird());
        QTRY_VERIFY(fixture.showsText(u"CHANNEL TWO"_s));
    }

    void tunerStripFocusesCurrentStationAboveAllOtherItems_data()
    {
        rows<bool>({"lit"}, {{"dark", false}, {"lit", true}});
    }
    void tunerStripFocusesCurrentStationAboveAllOtherItems()
    {
        QFETCH(const bool, lit);
        NewsFixture fixture(1);
        QCOMPARE(fixture.focusedName(), u"5 5 O'Clock News"_s);
        fixture.answerPass(lit);
        QCOMPARE(fixture.focusedName(), u"5 5 O'Clock News"_s);
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

    void arrowsOnlyMoveFocusInStrip()
    {
        OnAirFixture fixture(2);
        QStringList seen;
        for (const int key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Up}) {
            fixture.pressAndDraw(key);
            seen.append(fixture.focusedName().section(u' ', 0, 0));
        }
        QCOMPARE(seen, QStringList({u"5"_s, u"6"_s, u"7"_s, u"7"_s, u"7"_s, u"7"_s}));
        QVERIFY(!fixture.controller->selected());
        QVERIFY(fixture.controller->isLit());
    }

    void selectTunesToStationAndKeepsFocus()
    {
        OnAirFixture fixture(4);
        fixture.pressAndDraw(Qt::Key_Right);
        fixture.pressAndDraw(Qt::Key_Right);
        fixture.pressAndDraw(Qt::Key_Select);
        QCOMPARE(fixture.controller->currentStation().number, u"7"_s);
        QVERIFY(!fixture.players.first());
        QVERIFY(fixture.shows("StandbyCard"));
        QVERIFY(fixture.showsText(NewsTexts::towerLine(true)));
        QCOMPARE(fixture.focusedName(), u"7 Station 7"_s);
        fixture.answerPass(true, NewsFixture::path(7));
        fixture.waitForFrame();
        QVERIFY(fixture.shows("VideoView"));
        QTRY_VERIFY(fixture.showsText(u"STATION 7"_s));
        QCOMPARE(fixture.focusedName(), u"7 Station 7"_s);
        fixture.pressAndDraw(Qt::Key_Left);
        QCOMPARE(fixture.focusedName(), u"6 Station 6"_s);
    }

    void selectOnCurrentStationHasNoEffect()
    {
        OnAirFixture fixture(2);
        const QPointer<ScriptedVideoPlayer> player = fixture.players.first();
        fixture.pressAndDraw(Qt::Key_Select);
        QVERIFY(player);
        QVERIFY(fixture.controller->isLit());
        QVERIFY(!fixture.controller->isChecking());
    }

    void channelKeysChangeStation()
    {
        OnAirFixture fixture(2);
        fixture.pressAndDraw(Qt::Key_ChannelUp);
        QCOMPARE(fixture.controller->currentStation().number, u"6"_s);
        fixture.pressAndDraw(Qt::Key_ChannelDown);
        fixture.pressAndDraw(Qt::Key_ChannelDown);
        QCOMPARE(fixture.controller->currentStation().number, u"7"_s);
        QVERIFY(fixture.showsText(NewsTexts::towerLine(true)));
    }

    void appearingStripFocusesNewCurrentStation()
    {
        NewsFixture fixture;
        fixture.addChannelTwo();
        QTRY_COMPARE(fixture.focusedName(), u"2 Channel Two"_s);
    }

    void appearingStripTakesFocus()
    {
        OnAirFixture fixture;
        fixture.setChannels(2);
        QTRY_COMPARE(fixture.focusedName(), u"5 5 O'Clock News"_s);
        fixture.pressAndDraw(Qt::Key_Right);
        QCOMPARE(fixture.focusedName(), u"6 Station 6"_s);
    }

    void screenGetsFocusWhenStripDisappears()
    {
        OnAirFixture fixture(2);
        fixture.setChannels(0);
        fixture.waitForFrame();
        QVERIFY(!fixture.shows("TunerStrip"));
        QCOMPARE(fixture.focusedName(), QString());
        QTRY_VERIFY(fixture.view->hasActiveFocus());
        fixture.pressAndDraw(Qt::Key_Back);
        QTRY_VERIFY(!fixture.view);
    }

    void backDestroysPlayerAndDismissesOnce_data()
    {
        rows<int, bool>({"channels", "lit"}, {{"dark", 0, false},
                                              {"dark, from the strip", 2, false},
                                              {"lit", 0, true},
                                              {"lit, from the strip", 2, true}});
    }

    void backDestroysPlayerAndDismissesOnce()
    {
        QFETCH(const int, channels);
        QFETCH(const bool, lit);
        NewsFixture fixture(channels);
        fixture.answerPass(lit);
        const QSignalSpy dismissals(fixture.cover, SIGNAL(dismissed()));
        fixture.press(Qt::Key_Back);
        // The player is destroyed before the screen slides out.
        QVERIFY(fixture.view);
        QVERIFY(fixture.players.isEmpty() || !fixture.players.first());
        QVERIFY(!fixture.controller->player());
        QVERIFY(!lit || !fixture.item("StandbyCard"));
        fixture.waitForFrame();
        QCOMPARE(dismissals.count(), 1);
        QTRY_VERIFY(!fixture.view);
        const int asked = fixture.http.count();
        fixture.clock.advance(1h);
        QCOMPARE(fixture.http.count(), asked);
    }

    void reopenedScreenStartsFresh()
    {
        OnAirFixture fixture(2);
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
};

QUILLMERE_TEST(NewsViewTest, QGuiApplication)

} // namespace quillmere

#include "NewsViewTest.moc"
