#include "TapePlayer.h"
#include "ScriptedVideoPlayer.h"

#include "HubURL.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using State = VideoPlayer::State;

/** The thin player screen's controller, on a scripted player. */
class TapePlayerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aTapePlaysItsStreamFromTheHub();
    void onlyAStartBeyondOneSecondIsASkip_data();
    void onlyAStartBeyondOneSecondIsASkip();
    void aTapeWithoutAStreamHasNoPlayableCopy_data();
    void aTapeWithoutAStreamHasNoPlayableCopy();
    void aStreamThatFailsMayStillBeBeingArchived();
    void selectAndPlayPauseHoldTheTape_data();
    void selectAndPlayPauseHoldTheTape();
    void otherKeysAreNotTaken();
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
    QCOMPARE(m_player->loads().size(), 1);
    QCOMPARE(m_player->loads().first().url, *hubURL(u"/media/7/index.m3u8"_s));
    QCOMPARE(screen->failure(), QString());
}

void TapePlayerTest::onlyAStartBeyondOneSecondIsASkip_data()
{
    QTest::addColumn<double>("startAt");
    QTest::addColumn<double>("loaded");
    QTest::newRow("the top") << 0.0 << 0.0;
    QTest::newRow("exactly one second") << 1.0 << 0.0;
    QTest::newRow("a second and a half") << 1.5 << 1.5;
    QTest::newRow("minutes in") << 125.0 << 125.0;
}

void TapePlayerTest::onlyAStartBeyondOneSecondIsASkip()
{
    QFETCH(const double, startAt);
    const auto screen = open(u"/media/7/index.m3u8"_s, startAt);
    QTEST(m_player->loads().first().startAt, "loaded");
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
    QVERIFY(screen->takeKey(Qt::Key_Select));
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
    QVERIFY(screen->takeKey(key));
    QCOMPARE(m_player->state(), State::Paused);
    QVERIFY(screen->takeKey(key));
    QCOMPARE(m_player->state(), State::Playing);
}

void TapePlayerTest::otherKeysAreNotTaken()
{
    const auto screen = open(u"/media/7/index.m3u8"_s);
    m_player->showPicture();
    for (const int key : {Qt::Key_Back, Qt::Key_Left, Qt::Key_Down, Qt::Key_A})
        QVERIFY(!screen->takeKey(key));
    QCOMPARE(m_player->state(), State::Playing);
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
