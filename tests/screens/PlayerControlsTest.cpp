#include "PlayheadBar.h"
#include "Rows.h"
#include "StationPalette.h"
#include "TapePlayerFixture.h"
#include "TestMain.h"

#include <QKeyEvent>

namespace quillmere {

namespace {

struct PlayingTape : TapePlayerFixture
{
    explicit PlayingTape(const VHSCover& cover = cassette(), const QList<MediaTrack>& tracks = {})
        : TapePlayerFixture(tape(), cover)
    {
        play();
        player->setTracks(tracks);
    }
};

struct OpenPanel : PlayingTape
{
    explicit OpenPanel(const VHSCover& cover = cassette(),
                       const QList<MediaTrack>& tracks = TapePlayerFixture::tracks())
        : PlayingTape(cover, tracks)
    {
        pressAndWait(Qt::Key_Down);
    }
};

} // namespace

/** What the tape player shows over its picture: transport bar, information panel and loading indicator. */
class PlayerControlsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadingIndicatorAppearsAfterHalfSecond()
    {
        TapePlayerFixture fixture;
        fixture.wait(499ms);
        QVERIFY(!fixture.shows("LoadingSign"));
        fixture.clock.advance(1ms);
        QTRY_VERIFY(fixture.shows("LoadingSign"));
        fixture.play();
        QVERIFY(!fixture.shows("LoadingSign"));
    }

    void timeIsAtEdgeWhenNoIconIsShown()
    {
        TapePlayerFixture fixture;
        fixture.pressAndWait(Qt::Key_Up);
        QVERIFY(fixture.text(u"Loading…"_s));
        QCOMPARE(TestScreen::area(fixture.text(u"0:00"_s)).left(), 80.0);
        fixture.play();
        QCOMPARE(TestScreen::area(fixture.text(u"10:05"_s)).left(), 132.0);
    }

    void transportOfPausedTapeShowsItsStateAndStays()
    {
        PlayingTape fixture;
        fixture.pressAndWait(Qt::Key_Select);
        const QStringList words = fixture.read("PlayerControls");
        for (const QString& expected : {u"City Council Regular Meeting"_s, u"CHAMBER DRAMA · City Council"_s,
                                        u"10:05"_s, u"-52:00"_s, u"Paused"_s})
            QVERIFY2(words.contains(expected), qPrintable(expected + u" is not among "_s + words.join(u", "_s)));

        const auto bar = static_cast<PlayheadBar*>(fixture.item("PlayheadBar"));
        QVERIFY(std::abs(bar->played() - 605 / TapePlayerFixture::length) < 0.001);
        QVERIFY(std::abs(bar->buffered() - 725 / TapePlayerFixture::length) < 0.001);
        const QRectF area = TestScreen::area(bar);
        const QImage picture = fixture.picture();
        const auto at = [&](double seconds) {
            return picture.pixelColor(
                QPointF(area.left() + area.width() * seconds / TapePlayerFixture::length, area.center().y()).toPoint());
        };
        QCOMPARE(at(300), StationPalette::amber());
        QCOMPARE(at(605), StationPalette::cream());
        QVERIFY(at(690).lightness() > at(2000).lightness() + 30);

        fixture.wait(60s);
        QVERIFY(fixture.shows("PlayerControls"));
        const int frames = fixture.frames();
        QTest::qWait(300);
        QCOMPARE(fixture.frames(), frames);
    }

    void playheadIsHeldDuringScrub()
    {
        PlayingTape fixture;
        QKeyEvent press(QEvent::KeyPress, Qt::Key_AudioForward, Qt::NoModifier);
        QCoreApplication::sendEvent(&fixture.window(), &press);
        const auto bar = static_cast<PlayheadBar*>(fixture.item("PlayheadBar"));
        QVERIFY(bar->isScrubbing());
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_AudioForward, Qt::NoModifier);
        QCoreApplication::sendEvent(&fixture.window(), &release);
        QVERIFY(!bar->isScrubbing());
    }

    void transportIsShownForFourSecondsAfterKeyPressAndThenDrawsNoFrame()
    {
        PlayingTape fixture;
        QVERIFY(!fixture.shows("PlayerControls"));
        fixture.pressAndWait(Qt::Key_Up);
        QVERIFY(fixture.shows("PlayerControls"));
        QCOMPARE(fixture.item("PlayerControls")->opacity(), 1.0);
        fixture.wait(3999ms);
        QVERIFY(fixture.shows("PlayerControls"));
        fixture.clock.advance(1ms);
        QTRY_VERIFY(!fixture.shows("PlayerControls"));
        fixture.waitUntilIdle();
        const int frames = fixture.frames();
        for (int second = 0; second < 30; ++second) {
            fixture.clock.advance(1s);
            fixture.player->moveTo(700 + second);
            fixture.player->setBufferedTo(900 + second);
            QCoreApplication::processEvents();
        }
        fixture.waitUntilIdle();
        QCOMPARE(fixture.frames(), frames);
    }

    void panelShowsDetailsOfTape()
    {
        PlayingTape fixture;
        QVERIFY(!fixture.shows("InformationPanel"));
        fixture.pressAndWait(Qt::Key_Down);
        QCOMPARE(fixture.read("InformationPanel"),
                 QStringList({u"City Council Regular Meeting"_s, u"CHAMBER DRAMA · City Council"_s,
                              TapePlayerFixture::cassette().synopsis, u"Rewindery Home Video"_s}));
        QCOMPARE(fixture.focusedName(), QString());
    }

    void upAndBackClosePanel_data()
    {
        rows<Qt::Key, QList<MediaTrack>>({"key", "tracks"},
                                         {{"up", Qt::Key_Up, {}},
                                          {"back", Qt::Key_Back, {}},
                                          {"back from a track", Qt::Key_Back, TapePlayerFixture::tracks()}});
    }

    void upAndBackClosePanel()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const QList<MediaTrack>, tracks);
        OpenPanel fixture(TapePlayerFixture::cassette(), tracks);
        QVERIFY(fixture.shows("InformationPanel"));
        fixture.pressAndWait(key);
        QTRY_VERIFY(!fixture.shows("InformationPanel"));
        QCOMPARE(fixture.dismissals->count(), 0);
    }

    void textsStayInSafeAreaWithoutOverlap_data()
    {
        QTest::addColumn<VHSCover>("cover");
        QTest::addColumn<bool>("panel");
        for (const bool panel : {false, true}) {
            const char* const piece = panel ? "panel" : "transport";
            QTest::addRow("%s", piece) << TapePlayerFixture::cassette() << panel;
            QTest::addRow("%s, long", piece) << TapePlayerFixture::endless() << panel;
            VHSCover unbroken = TapePlayerFixture::cassette();
            unbroken.title = QString(3000, u'M');
            unbroken.synopsis = QString(30000, u'W');
            QTest::addRow("%s, one long word", piece) << unbroken << panel;
            VHSCover foreign = TapePlayerFixture::cassette();
            foreign.title = u"港务委员会关于新渡轮码头的公开会议 "_s.repeated(20);
            foreign.bodyName = u"مجلس المدينة "_s.repeated(30);
            foreign.synopsis = u"役場 \U0001F6A2 "_s.repeated(300);
            QTest::addRow("%s, other scripts", piece) << foreign << panel;
        }
    }

    void textsStayInSafeAreaWithoutOverlap()
    {
        QFETCH(const VHSCover, cover);
        QFETCH(const bool, panel);
        PlayingTape fixture(cover, TapePlayerFixture::tracks());
        fixture.pressAndWait(panel ? Qt::Key_Down : Qt::Key_Select);
        const auto texts = TestScreen::texts(fixture.view);
        QVERIFY(texts.size() >= 4);
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const QRectF area = TestScreen::area(texts.at(i));
            QVERIFY2(TapePlayerFixture::safeArea.contains(area),
                     qPrintable(texts.at(i)->property("text").toString().left(40)));
            QVERIFY(texts.at(i)->property("contentWidth").toReal() <= area.width() + 1);
            QVERIFY(texts.at(i)->property("contentHeight").toReal() <= area.height() + 1);
            for (qsizetype j = 0; j < i; ++j) {
                const QRectF common = area.intersected(TestScreen::area(texts.at(j)));
                QVERIFY(common.width() < 0.5 || common.height() < 0.5);
            }
        }
    }

    void panelAndTransportDoNotOverlap()
    {
        PlayingTape fixture(TapePlayerFixture::endless(), TapePlayerFixture::tracks());
        fixture.pressAndWait(Qt::Key_MediaPause);
        fixture.pressAndWait(Qt::Key_Down);
        QVERIFY(fixture.shows("InformationPanel") && fixture.shows("PlayerControls"));
        qreal top = 1080;
        for (const QQuickItem* text : TestScreen::texts(fixture.item("PlayerControls")))
            top = std::min(top, TestScreen::area(text).top());
        QVERIFY(TestScreen::area(fixture.item("InformationPanel")).bottom() <= top);
    }

    void longDescriptionUsesFreeSpaceOfPanel()
    {
        VHSCover cover = TapePlayerFixture::cassette();
        cover.title = u"A title of many words "_s.repeated(10);
        cover.synopsis = u"And then the clerk read on. "_s.repeated(30);
        OpenPanel fixture(cover);
        const auto texts = TestScreen::texts(fixture.item("InformationPanel"));
        int longest = 0;
        for (const QQuickItem* text : texts) {
            QVERIFY2(!text->property("truncated").toBool(), qPrintable(text->property("text").toString().left(40)));
            longest = std::max(longest, text->property("lineCount").toInt());
        }
        QVERIFY(longest > 5);
    }

    void longTitleUsesSpaceOfScrim()
    {
        VHSCover cover = TapePlayerFixture::cassette();
        cover.title = u"A title of many words "_s.repeated(8);
        PlayingTape fixture(cover);
        fixture.pressAndWait(Qt::Key_Select);
        const QQuickItem* const title = TestScreen::texts(fixture.item("PlayerControls")).constFirst();
        QCOMPARE(title->property("lineCount").toInt(), 3);
        QVERIFY(!title->property("truncated").toBool());
        QVERIFY(TestScreen::area(title).top() > 1080 - 480);
    }

    void panelOpensAtSelectedTrack()
    {
        OpenPanel fixture(TapePlayerFixture::cassette(), TapePlayerFixture::tracks(2));
        QCOMPARE(fixture.focusedName(), u"Español"_s);
    }

    void arrowsMoveFocusBetweenTracks()
    {
        OpenPanel fixture;
        QCOMPARE(fixture.focusedName(), u"English"_s);
        const QList<std::pair<int, QString>> keys{
            {Qt::Key_Right, u"Español"_s},          {Qt::Key_Right, u"Español"_s},
            {Qt::Key_Left, u"English"_s},           {Qt::Key_Down, u"Off"_s},
            {Qt::Key_Right, u"English captions"_s}, {Qt::Key_Right, u"Subtítulos"_s},
            {Qt::Key_Down, u"Subtítulos"_s},        {Qt::Key_Up, u"English"_s}};
        for (const auto& [key, name] : keys) {
            fixture.pressAndWait(key);
            QCOMPARE(fixture.focusedName(), name);
        }
    }

    void selectChoosesTrackAndKeepsFocus()
    {
        OpenPanel fixture;
        fixture.pressAndWait(Qt::Key_Right);
        fixture.pressAndWait(Qt::Key_Select);
        QCOMPARE(fixture.player->selections.size(), 1);
        QCOMPARE(fixture.player->selections.first().kind, MediaTrack::Kind::Audio);
        QCOMPARE(fixture.player->selections.first().id, 2);
        QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Playing);
        fixture.player->setTracks(TapePlayerFixture::tracks(2));
        fixture.waitUntilIdle();
        QCOMPARE(fixture.focusedName(), u"Español"_s);
    }

    void upOnTopRowClosesPanelWithTracks()
    {
        OpenPanel fixture;
        fixture.pressAndWait(Qt::Key_Down);
        QCOMPARE(fixture.focusedName(), u"Off"_s);
        fixture.pressAndWait(Qt::Key_Up);
        QVERIFY(fixture.shows("InformationPanel"));
        fixture.pressAndWait(Qt::Key_Up);
        QTRY_VERIFY(!fixture.shows("InformationPanel"));

        // Without audio tracks, the row of subtitles is the top row.
        fixture.player->setTracks(TapePlayerFixture::tracks().mid(2));
        fixture.pressAndWait(Qt::Key_Down);
        QCOMPARE(fixture.focusedName(), u"Off"_s);
        fixture.pressAndWait(Qt::Key_Up);
        QTRY_VERIFY(!fixture.shows("InformationPanel"));
    }

    void closedPanelReturnsKeysAtOnce()
    {
        OpenPanel fixture;
        fixture.press(Qt::Key_Up);
        // Immediately, although the panel is still fading out.
        fixture.press(Qt::Key_Select);
        QCOMPARE(fixture.player->timeControl(), VideoPlayer::TimeControl::Paused);
        QCOMPARE(fixture.player->selections.size(), 0);
        fixture.waitUntilIdle();
        QCOMPARE(fixture.focusedName(), QString());
    }

    void focusedTrackStaysVisibleAmongMany()
    {
        QList<MediaTrack> tracks;
        for (int id = 1; id <= 30; ++id)
            tracks.append(
                TapePlayerFixture::track(id, MediaTrack::Kind::Subtitle, u"Captions in language %1"_s.arg(id)));
        OpenPanel fixture(TapePlayerFixture::cassette(), tracks);
        for (int step = 0; step < 30; ++step)
            fixture.press(Qt::Key_Right);
        fixture.waitUntilIdle();
        QCOMPARE(fixture.focusedName(), u"Captions in language 30"_s);
        QVERIFY(TapePlayerFixture::safeArea.contains(TestScreen::area(fixture.view->focused())));
    }
};

QUILLMERE_TEST(PlayerControlsTest, QGuiApplication)

} // namespace quillmere

#include "PlayerControlsTest.moc"
