#include "PlayheadBar.h"
#include "StationPalette.h"
#include "TapePlayerHouse.h"
#include "TestMain.h"

#include <QKeyEvent>

/** What the tape player shows over its picture: transport bar, information panel and loading indicator. */
class PlayerControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { m_house.reset(); }
    void loadingIndicatorAppearsAfterHalfSecond();
    void transportIsHiddenUntilKeyPress();
    void transportShowsTitleTimesAndState();
    void timeIsAtEdgeWhenNoIconIsShown();
    void barShowsPlayedAndBufferedParts();
    void playheadIsHeldDuringScrub();
    void transportHidesAfterFourSecondsAndDrawsNoFrame();
    void transportStaysWhilePaused();
    void panelShowsDetailsOfTape();
    void upAndBackClosePanel_data();
    void upAndBackClosePanel();
    void textsStayInSafeAreaWithoutOverlap_data();
    void textsStayInSafeAreaWithoutOverlap();
    void panelAndTransportDoNotOverlap();
    void longDescriptionUsesFreeSpaceOfPanel();
    void longTitleUsesSpaceOfScrim();
    void arrowsMoveFocusBetweenTracks();
    void selectChoosesTrack();
    void upOnTopRowClosesPanelWithTracks();
    void closedPanelReturnsKeysAtOnce();
    void selectionOfTrackKeepsFocus();
    void focusedTrackStaysVisibleAmongMany();

private:
    TapePlayerHouse& open(const VHSCover& cover = TapePlayerHouse::cassette(), const QList<MediaTrack>& tracks = {})
    {
        m_house = std::make_unique<TapePlayerHouse>(TapePlayerHouse::tape(), cover);
        m_house->play();
        m_house->player->setTracks(tracks);
        return *m_house;
    }

    std::unique_ptr<TapePlayerHouse> m_house;
};

void PlayerControlsTest::loadingIndicatorAppearsAfterHalfSecond()
{
    m_house = std::make_unique<TapePlayerHouse>(TapePlayerHouse::tape());
    TapePlayerHouse& house = *m_house;
    house.wait(499ms);
    QVERIFY(!house.shows("LoadingSign"));
    house.clock.advance(1ms);
    QTRY_VERIFY(house.shows("LoadingSign"));
    house.play();
    QVERIFY(!house.shows("LoadingSign"));
}

void PlayerControlsTest::transportIsHiddenUntilKeyPress()
{
    TapePlayerHouse& house = open();
    QVERIFY(!house.shows("PlayerControls"));
    house.press(Qt::Key_Up);
    QVERIFY(house.shows("PlayerControls"));
    QCOMPARE(house.item("PlayerControls")->opacity(), 1.0);
}

void PlayerControlsTest::transportShowsTitleTimesAndState()
{
    TapePlayerHouse& house = open();
    house.press(Qt::Key_Select);
    const QStringList words = house.read("PlayerControls");
    for (const QString& expected :
         {u"City Council Regular Meeting"_s, u"CHAMBER DRAMA · City Council"_s, u"10:05"_s, u"-52:00"_s, u"Paused"_s})
        QVERIFY2(words.contains(expected), qPrintable(expected + u" is not among "_s + words.join(u", "_s)));
}

void PlayerControlsTest::timeIsAtEdgeWhenNoIconIsShown()
{
    m_house = std::make_unique<TapePlayerHouse>(TapePlayerHouse::tape());
    m_house->press(Qt::Key_Up);
    QVERIFY(m_house->text(u"Loading…"_s));
    QCOMPARE(Stage::area(m_house->text(u"0:00"_s)).left(), 80.0);
    m_house->play();
    QCOMPARE(Stage::area(m_house->text(u"10:05"_s)).left(), 132.0);
}

void PlayerControlsTest::barShowsPlayedAndBufferedParts()
{
    TapePlayerHouse& house = open();
    house.press(Qt::Key_Select);
    const auto bar = static_cast<PlayheadBar*>(house.item("PlayheadBar"));
    QVERIFY(std::abs(bar->played() - 605 / TapePlayerHouse::length) < 0.001);
    QVERIFY(std::abs(bar->buffered() - 725 / TapePlayerHouse::length) < 0.001);
    const QRectF area = Stage::area(bar);
    const QImage picture = house.stage.picture();
    const auto at = [&](double seconds) {
        return picture.pixelColor(
            QPointF(area.left() + area.width() * seconds / TapePlayerHouse::length, area.center().y()).toPoint());
    };
    QCOMPARE(at(300), StationPalette::amber());
    QCOMPARE(at(605), StationPalette::cream());
    QVERIFY(at(690).lightness() > at(2000).lightness() + 30);
}

void PlayerControlsTest::playheadIsHeldDuringScrub()
{
    TapePlayerHouse& house = open();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_AudioForward, Qt::NoModifier);
    QCoreApplication::sendEvent(&house.stage.window(), &press);
    const auto bar = static_cast<PlayheadBar*>(house.item("PlayheadBar"));
    QVERIFY(bar->isScrubbing());
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_AudioForward, Qt::NoModifier);
    QCoreApplication::sendEvent(&house.stage.window(), &release);
    QVERIFY(!bar->isScrubbing());
}

void PlayerControlsTest::transportHidesAfterFourSecondsAndDrawsNoFrame()
{
    TapePlayerHouse& house = open();
    house.press(Qt::Key_Up);
    house.wait(3999ms);
    QVERIFY(house.shows("PlayerControls"));
    house.clock.advance(1ms);
    QTRY_VERIFY(!house.shows("PlayerControls"));
    house.stage.waitUntilIdle();
    const int frames = house.stage.frames();
    for (int second = 0; second < 30; ++second) {
        house.clock.advance(1s);
        house.player->moveTo(700 + second);
        house.player->setBufferedTo(900 + second);
        QCoreApplication::processEvents();
    }
    house.stage.waitUntilIdle();
    QCOMPARE(house.stage.frames(), frames);
}

void PlayerControlsTest::transportStaysWhilePaused()
{
    TapePlayerHouse& house = open();
    house.press(Qt::Key_Select);
    house.wait(60s);
    QVERIFY(house.shows("PlayerControls"));
    const int frames = house.stage.frames();
    QTest::qWait(300);
    QCOMPARE(house.stage.frames(), frames);
}

void PlayerControlsTest::panelShowsDetailsOfTape()
{
    TapePlayerHouse& house = open();
    QVERIFY(!house.shows("InformationPanel"));
    house.press(Qt::Key_Down);
    QCOMPARE(house.read("InformationPanel"),
             QStringList({u"City Council Regular Meeting"_s, u"CHAMBER DRAMA · City Council"_s,
                          TapePlayerHouse::cassette().synopsis, u"Rewindery Home Video"_s}));
    QCOMPARE(house.focused(), u"nothing"_s);
}

void PlayerControlsTest::upAndBackClosePanel_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QList<MediaTrack>>("tracks");
    QTest::newRow("up") << int(Qt::Key_Up) << QList<MediaTrack>{};
    QTest::newRow("back") << int(Qt::Key_Back) << QList<MediaTrack>{};
    QTest::newRow("back from a track") << int(Qt::Key_Back) << TapePlayerHouse::tracks();
}

void PlayerControlsTest::upAndBackClosePanel()
{
    QFETCH(const int, key);
    QFETCH(const QList<MediaTrack>, tracks);
    TapePlayerHouse& house = open(TapePlayerHouse::cassette(), tracks);
    house.press(Qt::Key_Down);
    QVERIFY(house.shows("InformationPanel"));
    house.press(key);
    QTRY_VERIFY(!house.shows("InformationPanel"));
    QCOMPARE(house.dismissals->count(), 0);
}

void PlayerControlsTest::textsStayInSafeAreaWithoutOverlap_data()
{
    QTest::addColumn<VHSCover>("cover");
    QTest::addColumn<bool>("panel");
    for (const bool panel : {false, true}) {
        const char* const piece = panel ? "panel" : "transport";
        QTest::addRow("%s", piece) << TapePlayerHouse::cassette() << panel;
        QTest::addRow("%s, long", piece) << TapePlayerHouse::endless() << panel;
        VHSCover unbroken = TapePlayerHouse::cassette();
        unbroken.title = QString(3000, u'M');
        unbroken.synopsis = QString(30000, u'W');
        QTest::addRow("%s, one long word", piece) << unbroken << panel;
        VHSCover foreign = TapePlayerHouse::cassette();
        foreign.title = u"港务委员会关于新渡轮码头的公开会议 "_s.repeated(20);
        foreign.bodyName = u"مجلس المدينة "_s.repeated(30);
        foreign.synopsis = u"役場 \U0001F6A2 "_s.repeated(300);
        QTest::addRow("%s, other scripts", piece) << foreign << panel;
    }
}

void PlayerControlsTest::textsStayInSafeAreaWithoutOverlap()
{
    QFETCH(const VHSCover, cover);
    QFETCH(const bool, panel);
    TapePlayerHouse& house = open(cover, TapePlayerHouse::tracks());
    house.press(panel ? Qt::Key_Down : Qt::Key_Select);
    const auto texts = Stage::texts(house.view);
    QVERIFY(texts.size() >= 4);
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QRectF area = Stage::area(texts.at(i));
        QVERIFY2(QRectF(80, 60, 1760, 960).contains(area),
                 qPrintable(texts.at(i)->property("text").toString().left(40)));
        QVERIFY(texts.at(i)->property("contentWidth").toReal() <= area.width() + 1);
        QVERIFY(texts.at(i)->property("contentHeight").toReal() <= area.height() + 1);
        for (qsizetype j = 0; j < i; ++j) {
            const QRectF common = area.intersected(Stage::area(texts.at(j)));
            QVERIFY(common.width() < 0.5 || common.height() < 0.5);
        }
    }
}

void PlayerControlsTest::panelAndTransportDoNotOverlap()
{
    TapePlayerHouse& house = open(TapePlayerHouse::endless(), TapePlayerHouse::tracks());
    house.press(Qt::Key_MediaPause);
    house.press(Qt::Key_Down);
    QVERIFY(house.shows("InformationPanel") && house.shows("PlayerControls"));
    qreal top = 1080;
    for (const QQuickItem* text : Stage::texts(house.item("PlayerControls")))
        top = std::min(top, Stage::area(text).top());
    QVERIFY(Stage::area(house.item("InformationPanel")).bottom() <= top);
}

void PlayerControlsTest::longDescriptionUsesFreeSpaceOfPanel()
{
    VHSCover cover = TapePlayerHouse::cassette();
    cover.title = u"A title of many words "_s.repeated(10);
    cover.synopsis = u"And then the clerk read on. "_s.repeated(30);
    TapePlayerHouse& house = open(cover, TapePlayerHouse::tracks());
    house.press(Qt::Key_Down);
    const auto texts = Stage::texts(house.item("InformationPanel"));
    int longest = 0;
    for (const QQuickItem* text : texts) {
        QVERIFY2(!text->property("truncated").toBool(), qPrintable(text->property("text").toString().left(40)));
        longest = std::max(longest, text->property("lineCount").toInt());
    }
    QVERIFY(longest > 5);
}

void PlayerControlsTest::longTitleUsesSpaceOfScrim()
{
    VHSCover cover = TapePlayerHouse::cassette();
    cover.title = u"A title of many words "_s.repeated(8);
    TapePlayerHouse& house = open(cover, {});
    house.press(Qt::Key_Select);
    const QQuickItem* const title = Stage::texts(house.item("PlayerControls")).constFirst();
    QCOMPARE(title->property("lineCount").toInt(), 3);
    QVERIFY(!title->property("truncated").toBool());
    QVERIFY(Stage::area(title).top() > 1080 - 480);
}

void PlayerControlsTest::arrowsMoveFocusBetweenTracks()
{
    TapePlayerHouse& house = open(TapePlayerHouse::cassette(), TapePlayerHouse::tracks());
    house.press(Qt::Key_Down);
    QCOMPARE(house.focused(), u"English"_s);
    const QList<std::pair<int, QString>> keys{{Qt::Key_Right, u"Español"_s},          {Qt::Key_Right, u"Español"_s},
                                              {Qt::Key_Left, u"English"_s},           {Qt::Key_Down, u"Off"_s},
                                              {Qt::Key_Right, u"English captions"_s}, {Qt::Key_Right, u"Subtítulos"_s},
                                              {Qt::Key_Down, u"Subtítulos"_s},        {Qt::Key_Up, u"English"_s}};
    for (const auto& [key, name] : keys) {
        house.press(key);
        QCOMPARE(house.focused(), name);
    }
}

void PlayerControlsTest::selectChoosesTrack()
{
    TapePlayerHouse& house = open(TapePlayerHouse::cassette(), TapePlayerHouse::tracks());
    house.press(Qt::Key_Down);
    house.press(Qt::Key_Right);
    house.press(Qt::Key_Select);
    QCOMPARE(house.player->selections.size(), 1);
    QCOMPARE(house.player->selections.first().kind, MediaTrack::Kind::Audio);
    QCOMPARE(house.player->selections.first().id, 2);
    QCOMPARE(house.player->timeControl(), VideoPlayer::TimeControl::Playing);
}

void PlayerControlsTest::upOnTopRowClosesPanelWithTracks()
{
    TapePlayerHouse& house = open(TapePlayerHouse::cassette(), TapePlayerHouse::tracks());
    house.press(Qt::Key_Down);
    house.press(Qt::Key_Down);
    QCOMPARE(house.focused(), u"Off"_s);
    house.press(Qt::Key_Up);
    QVERIFY(house.shows("InformationPanel"));
    house.press(Qt::Key_Up);
    QTRY_VERIFY(!house.shows("InformationPanel"));

    // Without audio tracks, the row of subtitles is the top row.
    house.player->setTracks(TapePlayerHouse::tracks().mid(2));
    house.press(Qt::Key_Down);
    QCOMPARE(house.focused(), u"Off"_s);
    house.press(Qt::Key_Up);
    QTRY_VERIFY(!house.shows("InformationPanel"));
}

void PlayerControlsTest::closedPanelReturnsKeysAtOnce()
{
    TapePlayerHouse& house = open(TapePlayerHouse::cassette(), TapePlayerHouse::tracks());
    house.press(Qt::Key_Down);
    house.stage.press(Qt::Key_Up);
    // Immediately, although the panel is still fading out.
    house.stage.press(Qt::Key_Select);
    QCOMPARE(house.player->timeControl(), VideoPlayer::TimeControl::Paused);
    QCOMPARE(house.player->selections.size(), 0);
    house.stage.waitUntilIdle();
    QCOMPARE(house.focused(), u"nothing"_s);
}

void PlayerControlsTest::selectionOfTrackKeepsFocus()
{
    TapePlayerHouse& house = open(TapePlayerHouse::cassette(), TapePlayerHouse::tracks());
    house.press(Qt::Key_Down);
    house.press(Qt::Key_Right);
    auto tracks = TapePlayerHouse::tracks();
    tracks[0].selected = false;
    tracks[1].selected = true;
    house.player->setTracks(tracks);
    house.stage.waitUntilIdle();
    QCOMPARE(house.focused(), u"Español"_s);
}

void PlayerControlsTest::focusedTrackStaysVisibleAmongMany()
{
    QList<MediaTrack> tracks;
    for (int id = 1; id <= 30; ++id)
        tracks.append(TapePlayerHouse::track(id, MediaTrack::Kind::Subtitle, u"Captions in language %1"_s.arg(id)));
    TapePlayerHouse& house = open(TapePlayerHouse::cassette(), tracks);
    house.press(Qt::Key_Down);
    for (int step = 0; step < 30; ++step)
        house.stage.press(Qt::Key_Right);
    house.stage.waitUntilIdle();
    QCOMPARE(house.focused(), u"Captions in language 30"_s);
    QVERIFY(QRectF(80, 60, 1760, 960).contains(Stage::area(house.view->focused())));
}

QUILLMERE_TEST(PlayerControlsTest, QGuiApplication)
#include "PlayerControlsTest.moc"
