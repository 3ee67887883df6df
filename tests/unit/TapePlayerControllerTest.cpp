#include "TapePlayerController.h"
#include "HubURL.h"
#include "Rows.h"
#include "ScriptedClock.h"
#include "ScriptedVideoPlayer.h"
#include "StoreFixture.h"
#include "TestMain.h"

#include <QPointer>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests the controller of the screen that plays a tape, with a scripted player. */
class TapePlayerControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_store.defaults.remove(u"resume.tape.7"_s); }

    void cleanup() { m_screen.reset(); }

    void playerGetsStreamFromHubAndMetadataOfTape()
    {
        open();
        QVERIFY(m_player);
        QCOMPARE(m_screen->player(), m_player.data());
        QCOMPARE(m_player->item()->url(), *hubURL(u"/media/7/index.m3u8"_s));
        QVERIFY(!m_screen->hasFailed());
        QCOMPARE(m_screen->failure(), QString());
        using enum MetadataItem::Identifier;
        const QList<MetadataItem> metadata{{Title, u"Harbor Commission"_s},
                                           {SubTitle, u"CHAMBER DRAMA · Harbor Commission"_s},
                                           {Description, u"The ferry landing is heard at last."_s},
                                           {Publisher, u"Rewindery Home Video"_s}};
        QCOMPARE(m_player->item()->externalMetadata(), metadata);
        QCOMPARE(m_screen->controls()->title(), u"Harbor Commission"_s);
    }

    void tapeStartsAtGivenPosition()
    {
        open(u"/media/7/index.m3u8"_s, 3725.5);
        QCOMPARE(m_player->seeks.first().seconds, 3725.5);
    }

    void tapeWithoutStreamFails_data()
    {
        rows<QString>({"path"}, {{"no path", {}}, {"invalid address", u"https://[broken"_s}});
    }

    void tapeWithoutStreamFails()
    {
        QFETCH(const QString, path);
        open(path);
        QVERIFY(!m_player);
        QVERIFY(!m_screen->player());
        QVERIFY(!m_screen->controls());
        QVERIFY(m_screen->hasFailed());
        QCOMPARE(m_screen->failure(), u"This tape has no playable copy on the shelf."_s);
    }

    void withoutPlayerBackAndStopLeave_data()
    {
        rows<Qt::Key, bool, bool, bool>({"key", "isAutoRepeat", "isHandled", "leaves"},
                                        {{"back", Qt::Key_Back, false, true, true},
                                         {"back held", Qt::Key_Back, true, true, false},
                                         {"stop", Qt::Key_MediaStop, false, true, true},
                                         {"select, for the button", Qt::Key_Select, false, false, false},
                                         {"an arrow", Qt::Key_Down, false, false, false},
                                         {"play/pause", Qt::Key_MediaTogglePlayPause, false, false, false}});
    }

    void withoutPlayerBackAndStopLeave()
    {
        QFETCH(const Qt::Key, key);
        QFETCH(const bool, isAutoRepeat);
        QFETCH(const bool, leaves);
        open({});
        QSignalSpy dismissRequested(m_screen.get(), &TapePlayerController::dismissRequested);
        QTEST(m_screen->press(key, isAutoRepeat), "isHandled");
        QVERIFY(!m_screen->release(key));
        QCOMPARE(dismissRequested.count(), leaves ? 1 : 0);
    }

    void tapeEqualToDefaultIsSet()
    {
        TapePlayerController screen;
        Tape tape;
        tape.streamURLPath = u"/media/0/index.m3u8"_s;
        QCOMPARE(tape, Tape{});
        screen.setProperty("tape", QVariant::fromValue(tape));
        QCOMPARE(screen.tape().streamURLPath, tape.streamURLPath);
    }

    void reportedPositionIsSavedAfterFirstMinute()
    {
        play();
        QVERIFY(!hasSavedPosition());
        for (const double seconds : {70.0, 80.0, 60.0, 3725.5}) {
            m_player->report(seconds);
            QCOMPARE(savedPosition(), seconds);
        }
        m_player->report(59.9);
        QVERIFY(!hasSavedPosition());
    }

    void playingToEndRemovesPosition()
    {
        m_store->saveResume(7, 125);
        play();
        m_player->report(600);
        m_player->end();
        QVERIFY(!hasSavedPosition());
        QVERIFY(!m_screen->hasFailed());
    }

    void playerIsKeptAfterFailure()
    {
        m_store->saveResume(7, 125);
        play();
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

    void keysControlPlayerAndStopLeaves()
    {
        play();
        QVERIFY(m_screen->press(Qt::Key_Select, false));
        QCOMPARE(m_player->timeControl(), VideoPlayer::TimeControl::Paused);
        QSignalSpy dismissRequested(m_screen.get(), &TapePlayerController::dismissRequested);
        QVERIFY(m_screen->press(Qt::Key_MediaStop, false));
        QCOMPARE(dismissRequested.count(), 1);
    }

    void leavingKeepsLastReportedPosition()
    {
        play();
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

    void dismantlingIsSafeTwiceAndWithoutPlayer()
    {
        open();
        m_screen->tearDown();
        m_screen->tearDown();
        QVERIFY(!m_screen->player());
        open({});
        m_screen->tearDown();
        QVERIFY(!m_screen->player());
    }

    void destroyedStoreIsNotUsed()
    {
        play();
        m_store.store.reset();
        m_player->report(70);
        m_player->end();
        QVERIFY(!hasSavedPosition());
        m_store.store = std::make_unique<Store>(m_store.hub, m_store.defaults);
    }

private:
    void open(const QString& path = u"/media/7/index.m3u8"_s, double startAt = 0)
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
        VHSCover cover;
        cover.title = u"Harbor Commission"_s;
        cover.genre = u"CHAMBER DRAMA"_s;
        cover.bodyName = u"Harbor Commission"_s;
        cover.synopsis = u"The ferry landing is heard at last."_s;
        m_screen->setProperty("store", QVariant::fromValue<Store*>(m_store.store.get()));
        m_screen->setProperty("clock", QVariant::fromValue<Clock*>(&m_clock));
        m_screen->setProperty("tape", QVariant::fromValue(tape));
        m_screen->setProperty("cover", QVariant::fromValue(cover));
        m_screen->setProperty("startAt", startAt);
        m_screen->componentComplete();
    }

    /** Opens the tape and plays it until its first picture. */
    void play()
    {
        open();
        m_player->showPicture();
    }

    bool hasSavedPosition() const { return m_store.defaults.contains(u"resume.tape.7"_s); }
    double savedPosition() const { return m_store.defaults.number(u"resume.tape.7"_s); }

    ScriptedClock m_clock;
    StoreFixture m_store;
    QPointer<ScriptedVideoPlayer> m_player;
    std::unique_ptr<TapePlayerController> m_screen;
};

QUILLMERE_TEST(TapePlayerControllerTest, QCoreApplication)

} // namespace quillmere

#include "TapePlayerControllerTest.moc"
