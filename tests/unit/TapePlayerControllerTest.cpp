#include "TapePlayerController.h"
#include "HubURL.h"
#include "ScriptedClock.h"
#include "ScriptedVideoPlayer.h"
#include "StoreFixture.h"
#include "TestMain.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the controller of the screen that plays a tape, with a scripted player. */
class TapePlayerControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void tapePlaysItsStreamFromHub();
    void tapeStartsAtGivenPosition();
    void tapeWithoutStreamFails_data();
    void tapeWithoutStreamFails();
    void withoutPlayerBackAndStopLeave_data();
    void withoutPlayerBackAndStopLeave();
    void tapeEqualToDefaultIsSet();
    void playerGetsMetadataOfTape();
    void coverWithoutSynopsisGivesThreeItems();
    void reportedPositionIsSaved();
    void reportInFirstMinuteRemovesPosition();
    void playingToEndRemovesPosition();
    void playerIsKeptAfterFailure();
    void keysControlPlayer();
    void stopKeyLeaves();
    void leavingKeepsLastReportedPosition();
    void dismantlingIsSafeTwiceAndWithoutPlayer();
    void destroyedStoreIsNotUsed();

private:
    void open(const QString& path = u"/media/7/index.m3u8"_s, double startAt = 0);
    double savedPosition() const { return m_store.defaults.number(u"resume.tape.7"_s); }

    ScriptedClock m_clock;
    StoreFixture m_store;
    VHSCover m_cover;
    QPointer<ScriptedVideoPlayer> m_player;
    std::unique_ptr<TapePlayerController> m_screen;
};

void TapePlayerControllerTest::init()
{
    m_store.defaults.remove(u"resume.tape.7"_s);
    m_cover = {};
    m_cover.title = u"Harbor Commission"_s;
    m_cover.genre = u"CHAMBER DRAMA"_s;
    m_cover.bodyName = u"Harbor Commission"_s;
    m_cover.synopsis = u"The ferry landing is heard at last."_s;
}

void TapePlayerControllerTest::cleanup()
{
    m_screen.reset();
}

void TapePlayerControllerTest::open(const QString& path, double startAt)
{
    m_screen = std::make_unique<TapePlayerController>();
    m_screen->setCreatePlayer([this](Clock&) {
        auto player = std::make_shared<ScriptedVideoPlayer>();
        m_player = player.get();
        return player;
    });
    Tape tape;
    tape.id = 7;
    tape.streamURLPath = path;
    m_screen->setProperty("store", QVariant::fromValue<Store*>(m_store.store.get()));
    m_screen->setProperty("clock", QVariant::fromValue<Clock*>(&m_clock));
    m_screen->setProperty("tape", QVariant::fromValue(tape));
    m_screen->setProperty("cover", QVariant::fromValue(m_cover));
    m_screen->setProperty("startAt", startAt);
    m_screen->componentComplete();
}

void TapePlayerControllerTest::tapePlaysItsStreamFromHub()
{
    open();
    QVERIFY(m_player);
    QCOMPARE(m_screen->player(), m_player.data());
    QCOMPARE(m_player->item()->url(), *hubURL(u"/media/7/index.m3u8"_s));
    QVERIFY(!m_screen->hasFailed());
    QCOMPARE(m_screen->failure(), QString());
}

void TapePlayerControllerTest::tapeStartsAtGivenPosition()
{
    open(u"/media/7/index.m3u8"_s, 3725.5);
    QCOMPARE(m_player->seeks.first().seconds, 3725.5);
}

void TapePlayerControllerTest::tapeWithoutStreamFails_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no path") << QString();
    QTest::newRow("invalid address") << u"https://[broken"_s;
}

void TapePlayerControllerTest::tapeWithoutStreamFails()
{
    QFETCH(const QString, path);
    open(path);
    QVERIFY(!m_player);
    QVERIFY(!m_screen->player());
    QVERIFY(!m_screen->controls());
    QVERIFY(m_screen->hasFailed());
    QCOMPARE(m_screen->failure(), u"This tape has no playable copy on the shelf."_s);
}

void TapePlayerControllerTest::withoutPlayerBackAndStopLeave_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("isAutoRepeat");
    QTest::addColumn<bool>("isHandled");
    QTest::addColumn<bool>("leaves");
    QTest::newRow("back") << int(Qt::Key_Back) << false << true << true;
    QTest::newRow("back held") << int(Qt::Key_Back) << true << true << false;
    QTest::newRow("stop") << int(Qt::Key_MediaStop) << false << true << true;
    QTest::newRow("select, for the button") << int(Qt::Key_Select) << false << false << false;
    QTest::newRow("an arrow") << int(Qt::Key_Down) << false << false << false;
    QTest::newRow("play/pause") << int(Qt::Key_MediaTogglePlayPause) << false << false << false;
}

void TapePlayerControllerTest::withoutPlayerBackAndStopLeave()
{
    QFETCH(const int, key);
    QFETCH(const bool, isAutoRepeat);
    QFETCH(const bool, leaves);
    open({});
    QSignalSpy dismissRequested(m_screen.get(), &TapePlayerController::dismissRequested);
    QTEST(m_screen->press(key, isAutoRepeat), "isHandled");
    QVERIFY(!m_screen->release(key));
    QCOMPARE(dismissRequested.count(), leaves ? 1 : 0);
}

void TapePlayerControllerTest::tapeEqualToDefaultIsSet()
{
    TapePlayerController screen;
    Tape tape;
    tape.streamURLPath = u"/media/0/index.m3u8"_s;
    QCOMPARE(tape, Tape{});
    screen.setProperty("tape", QVariant::fromValue(tape));
    QCOMPARE(screen.tape().streamURLPath, tape.streamURLPath);
}

void TapePlayerControllerTest::playerGetsMetadataOfTape()
{
    open();
    const QList<MetadataItem> expected{
        {MetadataItem::Identifier::Title, u"Harbor Commission"_s},
        {MetadataItem::Identifier::SubTitle, u"CHAMBER DRAMA · Harbor Commission"_s},
        {MetadataItem::Identifier::Description, u"The ferry landing is heard at last."_s},
        {MetadataItem::Identifier::Publisher, u"Rewindery Home Video"_s},
    };
    QCOMPARE(m_player->item()->externalMetadata(), expected);
    QCOMPARE(m_screen->controls()->title(), u"Harbor Commission"_s);
}

void TapePlayerControllerTest::coverWithoutSynopsisGivesThreeItems()
{
    m_cover.synopsis.clear();
    open();
    const auto& items = m_player->item()->externalMetadata();
    QCOMPARE(items.size(), 3);
    QCOMPARE(items.last().identifier, MetadataItem::Identifier::Publisher);
}

void TapePlayerControllerTest::reportedPositionIsSaved()
{
    open();
    m_player->showPicture();
    QVERIFY(!m_store.defaults.contains(u"resume.tape.7"_s));
    for (const double seconds : {70.0, 80.0, 60.0, 3725.5}) {
        m_player->report(seconds);
        QCOMPARE(savedPosition(), seconds);
    }
}

void TapePlayerControllerTest::reportInFirstMinuteRemovesPosition()
{
    m_store->saveResume(7, 125);
    open();
    m_player->showPicture();
    m_player->report(59.9);
    QVERIFY(!m_store.defaults.contains(u"resume.tape.7"_s));
}

void TapePlayerControllerTest::playingToEndRemovesPosition()
{
    m_store->saveResume(7, 125);
    open();
    m_player->showPicture();
    m_player->report(600);
    m_player->end();
    QVERIFY(!m_store.defaults.contains(u"resume.tape.7"_s));
    QVERIFY(!m_screen->hasFailed());
}

void TapePlayerControllerTest::playerIsKeptAfterFailure()
{
    m_store->saveResume(7, 125);
    open();
    m_player->showPicture();
    m_player->moveTo(300);
    QSignalSpy changed(m_screen.get(), &TapePlayerController::failureChanged);
    m_player->fail({VideoFailure::Cause::Status, 404, {}});
    QTRY_COMPARE(changed.count(), 1);
    QCOMPARE(m_screen->failure(), u"The hub answered 404."_s);
    QVERIFY(m_player);
    QCOMPARE(m_screen->player(), m_player.data());
    QCOMPARE(m_player->position(), 300.0);
    QVERIFY(m_player->item());
    QCOMPARE(savedPosition(), 125.0);
    // These keys are for the button of the failure panel.
    QVERIFY(!m_screen->press(Qt::Key_Select, false));
    QVERIFY(!m_screen->press(Qt::Key_Down, false));
}

void TapePlayerControllerTest::keysControlPlayer()
{
    open();
    m_player->showPicture();
    QVERIFY(m_screen->press(Qt::Key_Select, false));
    QCOMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Paused);
}

void TapePlayerControllerTest::stopKeyLeaves()
{
    open();
    m_player->showPicture();
    QSignalSpy dismissRequested(m_screen.get(), &TapePlayerController::dismissRequested);
    QVERIFY(m_screen->press(Qt::Key_MediaStop, false));
    QCOMPARE(dismissRequested.count(), 1);
}

void TapePlayerControllerTest::leavingKeepsLastReportedPosition()
{
    open();
    m_player->showPicture();
    m_player->report(600);
    m_player->moveTo(605);
    const int writes = m_store.defaults.writes();
    m_screen->tearDown();
    QVERIFY(!m_player);
    QVERIFY(!m_screen->player());
    m_screen.reset();
    QCOMPARE(savedPosition(), 600.0);
    QCOMPARE(m_store.defaults.writes(), writes);
}

void TapePlayerControllerTest::dismantlingIsSafeTwiceAndWithoutPlayer()
{
    open();
    m_screen->tearDown();
    m_screen->tearDown();
    QVERIFY(!m_screen->player());
    open({});
    m_screen->tearDown();
    QVERIFY(!m_screen->player());
}

void TapePlayerControllerTest::destroyedStoreIsNotUsed()
{
    open();
    m_player->showPicture();
    m_store.store.reset();
    m_player->report(70);
    m_player->end();
    QVERIFY(!m_store.defaults.contains(u"resume.tape.7"_s));
    m_store.store = std::make_unique<Store>(m_store.hub, m_store.defaults);
}

QUILLMERE_TEST(TapePlayerControllerTest, QCoreApplication)

} // namespace quillmere

#include "TapePlayerControllerTest.moc"
