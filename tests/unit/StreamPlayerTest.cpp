#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

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
    StreamPlayerFixture fixture;
    const auto item = std::make_shared<PlayerItem>(url);
    fixture.player->setItem(item);
    // The caller starts to observe an item only after setItem().
    QSignalSpy changed(item.get(), &PlayerItem::statusChanged);
    QCOMPARE(item->status(), Status::Unknown);
    fixture.deliver();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(int(item->error()->cause), int(Cause::BadAddress));
    QCOMPARE(fixture.pluginLoads, 0);
}

void StreamPlayerTest::failureWhileLoadingKeepsCause()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.start();
    QSignalSpy changed(fixture.item.get(), &PlayerItem::statusChanged);
    fixture.fail({Cause::Status, 404, u"why"_s});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(fixture.item->status(), Status::Failed);
    QCOMPARE(int(fixture.item->error()->cause), int(Cause::Status));
    QCOMPARE(fixture.item->error()->httpStatus, 404);
    QCOMPARE(fixture.item->error()->description, u"why"_s);
    fixture.clock.advance(std::chrono::minutes(1));
    QCOMPARE(fixture.engine->loads.size(), 1);
}

void StreamPlayerTest::failureWithoutCauseHasNoError()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.start();
    fixture.fail({Cause::Unknown, 0, u"why"_s});
    QCOMPARE(fixture.item->status(), Status::Failed);
    QVERIFY(!fixture.item->error());
}

void StreamPlayerTest::newPlayerIsPaused()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.start();
    QVERIFY(fixture.engine->isPaused);
    QVERIFY(fixture.engine->loads.first().isPaused);
    fixture.showPicture(0);
    QCOMPARE(fixture.item->status(), Status::ReadyToPlay);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    QVERIFY(!fixture.player->isWaiting());
}

void StreamPlayerTest::playAndPauseReachEngine()
{
    StreamPlayerFixture fixture;
    fixture.player->play();
    fixture.setItem();
    fixture.start();
    QVERIFY(!fixture.engine->isPaused);
    QVERIFY(!fixture.engine->loads.first().isPaused);
    fixture.player->pause();
    QVERIFY(fixture.engine->isPaused);
    fixture.player->setAutomaticallyWaitsToMinimizeStalling(false);
    QVERIFY(!fixture.engine->waitsForData);
}

void StreamPlayerTest::timeControlIsWhatViewerSees()
{
    StreamPlayerFixture fixture;
    QSignalSpy changed(fixture.player.get(), &VideoPlayer::timeControlChanged);
    fixture.player->play();
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    fixture.setItem();
    fixture.start();
    QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
    fixture.showPicture(0);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    fixture.setWaiting(true);
    QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
    QVERIFY(fixture.player->isWaiting());
    fixture.player->pause();
    QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
    fixture.setWaiting(false);
    fixture.player->play();
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    QCOMPARE(changed.count(), 5);
}

void StreamPlayerTest::firstPictureMakesItemReadyOnce()
{
    StreamPlayerFixture fixture;
    fixture.setItem();
    fixture.start();
    QSignalSpy changed(fixture.item.get(), &PlayerItem::statusChanged);
    QSignalSpy shown(fixture.player.get(), &VideoPlayer::pictureShown);
    fixture.moveTo(1200);
    QCOMPARE(fixture.player->position(), 0.0);
    fixture.showPicture(0.04);
    fixture.moveTo(0.08);
    fixture.showPicture(0.12);
    QCOMPARE(fixture.player->position(), 0.08);
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
    StreamPlayerFixture fixture;
    fixture.setItem(kind);
    fixture.player->play();
    fixture.start();
    QSignalSpy ended(fixture.item.get(), &PlayerItem::didPlayToEnd);
    fixture.reportDuration(duration);
    fixture.showPicture(0);
    fixture.moveTo(position);
    if (byError)
        fixture.fail({Cause::Status, 500, {}});
    else
        fixture.endFile();
    QCOMPARE(ended.count(), accepted ? 1 : 0);
    QCOMPARE(fixture.item->status(), Status::ReadyToPlay);
    QCOMPARE(fixture.player->timeControl(), accepted ? TimeControl::Paused : TimeControl::WaitingToPlay);
    // The player moves to the end, also if the engine has not reported the last position.
    QCOMPARE(fixture.player->position(), accepted ? std::max(position, duration) : position);
    fixture.endFile();
    QCOMPARE(ended.count(), accepted ? 1 : 0);
}

void StreamPlayerTest::playAtEndStartsFromBeginning()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(119);
    fixture.endFile();
    QVERIFY(fixture.engine->isPaused);
    fixture.player->play();
    QCOMPARE(fixture.engine->loads.last().startAt, 0.0);
    QVERIFY(!fixture.engine->loads.last().isPaused);
    fixture.showPicture(0);
    QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
}

void StreamPlayerTest::bufferedPositionIsNeverBeforePosition()
{
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    fixture.notify([load = fixture.load()](Listener& to) { to.onBufferedToChanged(load, 30); });
    QCOMPARE(fixture.player->bufferedTo(), 30.0);
    fixture.notify([load = fixture.load()](Listener& to) { to.onBufferedToChanged(load, qQNaN()); });
    QCOMPARE(fixture.player->bufferedTo(), 30.0);
    fixture.moveTo(31);
    QCOMPARE(fixture.player->bufferedTo(), 31.0);
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
    StreamPlayerFixture fixture;
    fixture.setItem(kind);
    fixture.start();
    fixture.reportDuration(duration);
    QVERIFY(!fixture.player->isSeekable());
    fixture.notify([load = fixture.load()](Listener& to) { to.onSeekableKnown(load, true); });
    QTEST(fixture.player->isSeekable(), "seekable");
}

void StreamPlayerTest::selectedTracksAreRestoredAfterBreak()
{
    using Selections = QList<ScriptedVideoEngine::Selection>;
    const Selections chosen{{MediaTrack::Kind::Audio, 2}, {MediaTrack::Kind::Subtitle, MediaTrack::none}};
    StreamPlayerFixture fixture;
    fixture.playFrom(0);
    for (const auto& [kind, id] : chosen)
        fixture.player->select(kind, id);
    QCOMPARE(fixture.engine->selections, chosen);
    fixture.engine->selections.clear();
    fixture.endFile();
    fixture.clock.advance(std::chrono::seconds(1));
    QCOMPARE(fixture.engine->selections, Selections{});
    fixture.showPicture(0);
    QCOMPARE(fixture.engine->selections, chosen);
    fixture.playFrom(0);
    QCOMPARE(fixture.engine->selections, chosen);
}

QUILLMERE_TEST(StreamPlayerTest, QCoreApplication)

} // namespace quillmere

#include "StreamPlayerTest.moc"
