#include "StreamOnScript.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using Cause = VideoFailure::Cause;
using Kind = PlayerItem::Kind;
using Listener = VideoEngineListener;
using Status = PlayerItem::Status;
using TimeControl = VideoPlayer::TimeControl;

/** Tests loading, playing, pausing and ending. */
class StreamPlayerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unsupportedAddressFailsItemLater_data();
    void unsupportedAddressFailsItemLater();
    void failureWhileLoadingKeepsCause();
    void failureWithoutCauseHasNoError();
    void newPlayerIsPaused();
    void playAndPauseReachEngine();
    void timeControlIsWhatViewerSees();
    void firstPictureMakesItemReadyOnce();
    void endOfFileIsAcceptedOnlyNearDuration_data();
    void endOfFileIsAcceptedOnlyNearDuration();
    void playAtEndStartsFromBeginning();
    void bufferedPositionIsNeverBeforePosition();
    void onlyRecordingOfKnownLengthIsSeekable_data();
    void onlyRecordingOfKnownLengthIsSeekable();
    void selectedTracksAreRestoredAfterBreak();
};

void StreamPlayerTest::unsupportedAddressFailsItemLater_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::newRow("file") << QUrl(u"file:///etc/hosts"_s);
    QTest::newRow("empty") << QUrl();
    QTest::newRow("rtmp") << QUrl(u"rtmp://localhost/live"_s);
    QTest::newRow("no host") << QUrl(u"https:///index.m3u8"_s);
    QTest::newRow("relative") << QUrl(u"index.m3u8"_s);
}

void StreamPlayerTest::unsupportedAddressFailsItemLater()
{
    QFETCH(const QUrl, url);
    StreamOnScript script;
    const auto item = std::make_shared<PlayerItem>(url);
    script.player->setItem(item);
    // The caller starts to observe an item only after setItem().
    QSignalSpy changed(item.get(), &PlayerItem::statusChanged);
    QCOMPARE(item->status(), Status::Unknown);
    script.deliver();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(int(item->error()->cause), int(Cause::BadAddress));
    QCOMPARE(script.pluginLoads, 0);
}

void StreamPlayerTest::failureWhileLoadingKeepsCause()
{
    StreamOnScript script;
    script.setItem();
    script.start();
    QSignalSpy changed(script.item.get(), &PlayerItem::statusChanged);
    script.fail({Cause::Status, 404, u"why"_s});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(script.item->status(), Status::Failed);
    QCOMPARE(int(script.item->error()->cause), int(Cause::Status));
    QCOMPARE(script.item->error()->httpStatus, 404);
    QCOMPARE(script.item->error()->description, u"why"_s);
    script.clock.advance(std::chrono::minutes(1));
    QCOMPARE(script.engine->loads.size(), 1);
}

void StreamPlayerTest::failureWithoutCauseHasNoError()
{
    StreamOnScript script;
    script.setItem();
    script.start();
    script.fail({Cause::Unknown, 0, u"why"_s});
    QCOMPARE(script.item->status(), Status::Failed);
    QVERIFY(!script.item->error());
}

void StreamPlayerTest::newPlayerIsPaused()
{
    StreamOnScript script;
    script.setItem();
    script.start();
    QVERIFY(script.engine->isPaused);
    QVERIFY(script.engine->loads.first().isPaused);
    script.showPicture(0);
    QCOMPARE(script.item->status(), Status::ReadyToPlay);
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    QVERIFY(!script.player->isWaiting());
}

void StreamPlayerTest::playAndPauseReachEngine()
{
    StreamOnScript script;
    script.player->play();
    script.setItem();
    script.start();
    QVERIFY(!script.engine->isPaused);
    QVERIFY(!script.engine->loads.first().isPaused);
    script.player->pause();
    QVERIFY(script.engine->isPaused);
    script.player->setAutomaticallyWaitsToMinimizeStalling(false);
    QVERIFY(!script.engine->waitsForData);
}

void StreamPlayerTest::timeControlIsWhatViewerSees()
{
    StreamOnScript script;
    QSignalSpy changed(script.player.get(), &VideoPlayer::timeControlChanged);
    script.player->play();
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    script.setItem();
    script.start();
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    script.showPicture(0);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    script.setWaiting(true);
    QCOMPARE(script.player->timeControl(), TimeControl::WaitingToPlay);
    QVERIFY(script.player->isWaiting());
    script.player->pause();
    QCOMPARE(script.player->timeControl(), TimeControl::Paused);
    script.setWaiting(false);
    script.player->play();
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
    QCOMPARE(changed.count(), 5);
}

void StreamPlayerTest::firstPictureMakesItemReadyOnce()
{
    StreamOnScript script;
    script.setItem();
    script.start();
    QSignalSpy changed(script.item.get(), &PlayerItem::statusChanged);
    QSignalSpy shown(script.player.get(), &VideoPlayer::pictureShown);
    script.moveTo(1200);
    QCOMPARE(script.player->position(), 0.0);
    script.showPicture(0.04);
    script.moveTo(0.08);
    script.showPicture(0.12);
    QCOMPARE(script.player->position(), 0.08);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(shown.count(), 1);
}

void StreamPlayerTest::endOfFileIsAcceptedOnlyNearDuration_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("duration");
    QTest::addColumn<bool>("byError");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("at the end") << 120.0 << 120.0 << false << Kind::Recording << true;
    QTest::newRow("two seconds before") << 118.0 << 120.0 << false << Kind::Recording << true;
    QTest::newRow("more than two seconds before") << 117.99 << 120.0 << false << Kind::Recording << false;
    QTest::newRow("in the middle") << 57.0 << 120.0 << false << Kind::Recording << false;
    QTest::newRow("past the end") << 121.0 << 120.0 << false << Kind::Recording << true;
    QTest::newRow("no duration") << 57.0 << 0.0 << false << Kind::Recording << false;
    QTest::newRow("duration is not a number") << 57.0 << qQNaN() << false << Kind::Recording << false;
    QTest::newRow("by an error at the end") << 119.9 << 120.0 << true << Kind::Recording << true;
    QTest::newRow("by an error in the middle") << 57.0 << 120.0 << true << Kind::Recording << false;
    QTest::newRow("live") << 119.9 << 120.0 << false << Kind::Live << false;
}

void StreamPlayerTest::endOfFileIsAcceptedOnlyNearDuration()
{
    QFETCH(const double, position);
    QFETCH(const double, duration);
    QFETCH(const bool, byError);
    QFETCH(const Kind, kind);
    QFETCH(const bool, accepted);
    StreamOnScript script;
    script.setItem(kind);
    script.player->play();
    script.start();
    QSignalSpy ended(script.item.get(), &PlayerItem::didPlayToEnd);
    script.reportDuration(duration);
    script.showPicture(0);
    script.moveTo(position);
    if (byError)
        script.fail({Cause::Status, 500, {}});
    else
        script.endFile();
    QCOMPARE(ended.count(), accepted ? 1 : 0);
    QCOMPARE(script.item->status(), Status::ReadyToPlay);
    QCOMPARE(script.player->timeControl(), accepted ? TimeControl::Paused : TimeControl::WaitingToPlay);
    // The player moves to the end, also if the engine has not reported the last position.
    QCOMPARE(script.player->position(), accepted ? std::max(position, duration) : position);
    script.endFile();
    QCOMPARE(ended.count(), accepted ? 1 : 0);
}

void StreamPlayerTest::playAtEndStartsFromBeginning()
{
    StreamOnScript script;
    script.playFrom(119);
    script.endFile();
    QVERIFY(script.engine->isPaused);
    script.player->play();
    QCOMPARE(script.engine->loads.last().startAt, 0.0);
    QVERIFY(!script.engine->loads.last().isPaused);
    script.showPicture(0);
    QCOMPARE(script.player->timeControl(), TimeControl::Playing);
}

void StreamPlayerTest::bufferedPositionIsNeverBeforePosition()
{
    StreamOnScript script;
    script.playFrom(0);
    script.notify([load = script.load()](Listener& to) { to.onBufferedToChanged(load, 30); });
    QCOMPARE(script.player->bufferedTo(), 30.0);
    script.notify([load = script.load()](Listener& to) { to.onBufferedToChanged(load, qQNaN()); });
    QCOMPARE(script.player->bufferedTo(), 30.0);
    script.moveTo(31);
    QCOMPARE(script.player->bufferedTo(), 31.0);
}

void StreamPlayerTest::onlyRecordingOfKnownLengthIsSeekable_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<double>("duration");
    QTest::addColumn<bool>("seekable");
    QTest::newRow("recording") << Kind::Recording << 120.0 << true;
    QTest::newRow("unknown length") << Kind::Recording << 0.0 << false;
    QTest::newRow("live") << Kind::Live << 120.0 << false;
}

void StreamPlayerTest::onlyRecordingOfKnownLengthIsSeekable()
{
    QFETCH(const Kind, kind);
    QFETCH(const double, duration);
    StreamOnScript script;
    script.setItem(kind);
    script.start();
    script.reportDuration(duration);
    QVERIFY(!script.player->isSeekable());
    script.notify([load = script.load()](Listener& to) { to.onSeekableKnown(load, true); });
    QTEST(script.player->isSeekable(), "seekable");
}

void StreamPlayerTest::selectedTracksAreRestoredAfterBreak()
{
    using Selections = QList<ScriptedVideoEngine::Selection>;
    const Selections chosen{{MediaTrack::Kind::Audio, 2}, {MediaTrack::Kind::Subtitle, MediaTrack::none}};
    StreamOnScript script;
    script.playFrom(0);
    for (const auto& [kind, id] : chosen)
        script.player->select(kind, id);
    QCOMPARE(script.engine->selections, chosen);
    script.engine->selections.clear();
    script.endFile();
    script.clock.advance(std::chrono::seconds(1));
    QCOMPARE(script.engine->selections, Selections{});
    script.showPicture(0);
    QCOMPARE(script.engine->selections, chosen);
    script.playFrom(0);
    QCOMPARE(script.engine->selections, chosen);
}

QUILLMERE_TEST(StreamPlayerTest, QCoreApplication)
#include "StreamPlayerTest.moc"
