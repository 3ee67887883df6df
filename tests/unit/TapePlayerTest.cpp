#include "TapePlayer.h"
#include "ScriptedVideoPlayer.h"

#include "HubURL.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using TimeControl = VideoPlayer::TimeControl;

/** The thin player screen's controller, on a scripted player. */
class TapePlayerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aTapePlaysItsStreamFromTheHub();
    void aTapeWithoutAStreamHasNoPlayableCopy_data();
    void aTapeWithoutAStreamHasNoPlayableCopy();
    void aStreamThatFailsMayStillBeBeingArchived();
    void selectAndPlayPauseHoldTheTape_data();
    void selectAndPlayPauseHoldTheTape();
    void playPlaysAndPausePauses_data();
    void playPlaysAndPausePauses();
    void stopAndBackLeave_data();
    void stopAndBackLeave();
    void keysAreSafeWithoutAPlayer();
    void otherKeysAreNotTaken();
    void theTapeStartsWhereItIsTold();
    void endingEndsThePlaybackAtOnce();
    void endingIsSafeWithoutAPlayer();
    void leavingEndsThePlayback();

private:
    std::unique_ptr<TapePlayer> open(const QString& path, double startAt = 0);

    QPointer<ScriptedVideoPlayer> m_player;
};

void TapePlayerTest::init()
{
    m_player.clear();
}

std::unique_ptr<TapePlayer> TapePlayerTest::open(const QString& path, double startAt)
{
    auto screen = std::make_unique<TapePlayer>([this] {
        auto player = std::make_unique<ScriptedVideoPlayer>();
        m_player = player.get();
        return player;
    });
    Tape tape;
    tape.id = 7;
    tape.streamURLPath = path;
    screen->setProperty("tape", QVariant::fromValue(tape));
    screen->setProperty("startAt", startAt);
    screen->componentComplete();
    return screen;
}

void TapePlayerTest::aTapePlaysItsStreamFromTheHub()
{
    const auto screen = open(u"/media/7/index.m3u8"_s);
    QVERIFY(m_player);
    QCOMPARE(screen->player(), m_player.data());
    QCOMPARE(m_player->items.size(), 1);
    QCOMPARE(m_player->item()->url(), *hubURL(u"/media/7/index.m3u8"_s));
    QCOMPARE(m_player->seeks.first().seconds, 0.0);
    QCOMPARE(screen->failure(), QString());
}

void TapePlayerTest::aTapeWithoutAStreamHasNoPlayableCopy_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no path") << QString();
    QTest::newRow("no address") << u"https://[broken"_s;
}

void TapePlayerTest::aTapeWithoutAStreamHasNoPlayableCopy()
{
    QFETCH(const QString, path);
    const auto screen = open(path);
    QVERIFY(!m_player);
    QVERIFY(!screen->player());
    QCOMPARE(screen->failure(), u"This tape has no playable copy on the shelf."_s);
    QVERIFY(screen->press(Qt::Key_Select));
}

void TapePlayerTest::aStreamThatFailsMayStillBeBeingArchived()
{
    const auto screen = open(u"/media/7/index.m3u8"_s);
    QSignalSpy changed(screen.get(), &TapePlayer::failureChanged);
    m_player->fail({VideoFailure::Cause::Status, 404, {}});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(screen->failure(), u"The tape wouldn't play. It may still be being archived."_s);
}

void TapePlayerTest::selectAndPlayPauseHoldTheTape_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("select") << int(Qt::Key_Select);
    QTest::newRow("play/pause") << int(Qt::Key_MediaTogglePlayPause);
}

void TapePlayerTest::selectAndPlayPauseHoldTheTape()
{
    QFETCH(const int, key);
    const auto screen = open(u"/media/7/index.m3u8"_s);
    m_player->showPicture();
    QVERIFY(screen->press(key));
    QCOMPARE(m_player->timeControl(), TimeControl::Paused);
    QVERIFY(screen->press(key));
    QCOMPARE(m_player->timeControl(), TimeControl::Playing);
}

void TapePlayerTest::playPlaysAndPausePauses_data()
{
    QTest::addColumn<bool>("isPaused");
    QTest::addColumn<int>("key");
    QTest::addColumn<TimeControl>("state");
    QTest::newRow("pause while it plays") << false << int(Qt::Key_MediaPause) << TimeControl::Paused;
    QTest::newRow("pause while it is paused") << true << int(Qt::Key_MediaPause) << TimeControl::Paused;
    QTest::newRow("play while it plays") << false << int(Qt::Key_MediaPlay) << TimeControl::Playing;
    QTest::newRow("play while it is paused") << true << int(Qt::Key_MediaPlay) << TimeControl::Playing;
}

void TapePlayerTest::playPlaysAndPausePauses()
{
    QFETCH(const bool, isPaused);
    QFETCH(const int, key);
    const auto screen = open(u"/media/7/index.m3u8"_s);
    m_player->showPicture();
    if (isPaused)
        m_player->pause();
    QVERIFY(screen->press(key));
    QTEST(m_player->timeControl(), "state");
}

void TapePlayerTest::stopAndBackLeave_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("stop") << int(Qt::Key_MediaStop);
    QTest::newRow("back") << int(Qt::Key_Back);
}

void TapePlayerTest::stopAndBackLeave()
{
    QFETCH(const int, key);
    const auto screen = open(u"/media/7/index.m3u8"_s);
    m_player->showPicture();
    QSignalSpy left(screen.get(), &TapePlayer::leave);
    QVERIFY(screen->press(key));
    QCOMPARE(left.count(), 1);
}

void TapePlayerTest::keysAreSafeWithoutAPlayer()
{
    const auto screen = open({});
    for (const int key : {Qt::Key_Select, Qt::Key_MediaTogglePlayPause, Qt::Key_MediaPlay, Qt::Key_MediaPause})
        QVERIFY(screen->press(key));
    QSignalSpy left(screen.get(), &TapePlayer::leave);
    QVERIFY(screen->press(Qt::Key_MediaStop));
    QCOMPARE(left.count(), 1);
}

void TapePlayerTest::otherKeysAreNotTaken()
{
    const auto screen = open(u"/media/7/index.m3u8"_s);
    m_player->showPicture();
    for (const int key : {Qt::Key_Left, Qt::Key_Down, Qt::Key_A})
        QVERIFY(!screen->press(key));
    QCOMPARE(m_player->timeControl(), TimeControl::Playing);
}

void TapePlayerTest::theTapeStartsWhereItIsTold()
{
    const auto screen = open(u"/media/7/index.m3u8"_s, 3725.5);
    QCOMPARE(m_player->seeks.first().seconds, 3725.5);
}

void TapePlayerTest::endingEndsThePlaybackAtOnce()
{
    const auto screen = open(u"/media/7/index.m3u8"_s);
    m_player->showPicture();
    screen->end();
    QVERIFY(m_player);
    QVERIFY(!m_player->item());
}

void TapePlayerTest::endingIsSafeWithoutAPlayer()
{
    const auto screen = open({});
    screen->end();
    QVERIFY(!screen->player());
}

void TapePlayerTest::leavingEndsThePlayback()
{
    auto screen = open(u"/media/7/index.m3u8"_s);
    QVERIFY(m_player);
    screen.reset();
    QVERIFY(!m_player);
}

QTEST_GUILESS_MAIN(TapePlayerTest)
#include "TapePlayerTest.moc"
