#include "Rows.h"
#include "StreamPlayerFixture.h"
#include "TestMain.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests loading, playing, pausing and ending. */
class StreamPlayerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unsupportedAddressFailsItemLater_data()
    {
        rows<QUrl>({"url"}, {{"file", QUrl(u"file:///etc/hosts"_s)},
                             {"empty", QUrl()},
                             {"rtmp", QUrl(u"rtmp://localhost/live"_s)},
                             {"no host", QUrl(u"https:///index.m3u8"_s)},
                             {"relative", QUrl(u"index.m3u8"_s)}});
    }
    void unsupportedAddressFailsItemLater()
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

    void failureWhileLoadingKeepsCause()
    {
        LoadingFixture fixture;
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

    void failureWithoutCauseHasNoError()
    {
        LoadingFixture fixture;
        fixture.fail({Cause::Unknown, 0, u"why"_s});
        QCOMPARE(fixture.item->status(), Status::Failed);
        QVERIFY(!fixture.item->error());
    }

    void playAndPauseReachEngineAndTimeControlIsWhatViewerSees()
    {
        StreamPlayerFixture fixture;
        QSignalSpy changed(fixture.player.get(), &VideoPlayer::timeControlChanged);
        fixture.player->play();
        QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
        fixture.setItem();
        fixture.start();
        QVERIFY(!fixture.engine->isPaused);
        QVERIFY(!fixture.engine->loads.first().isPaused);
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
        fixture.showPicture(0);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
        fixture.setWaiting(true);
        QCOMPARE(fixture.player->timeControl(), TimeControl::WaitingToPlay);
        QVERIFY(fixture.player->isWaiting());
        fixture.player->pause();
        QVERIFY(fixture.engine->isPaused);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
        fixture.setWaiting(false);
        fixture.player->play();
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
        QCOMPARE(changed.count(), 5);
        fixture.player->setAutomaticallyWaitsToMinimizeStalling(false);
        QVERIFY(!fixture.engine->waitsForData);
    }

    void firstPictureMakesItemReadyOnceAndPlayerStaysPaused()
    {
        LoadingFixture fixture;
        QVERIFY(fixture.engine->isPaused);
        QVERIFY(fixture.engine->loads.first().isPaused);
        QSignalSpy changed(fixture.item.get(), &PlayerItem::statusChanged);
        QSignalSpy shown(fixture.player.get(), &VideoPlayer::pictureShown);
        fixture.moveTo(1200);
        QCOMPARE(fixture.player->position(), 0.0);
        fixture.showPicture(0.04);
        QCOMPARE(fixture.item->status(), Status::ReadyToPlay);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Paused);
        QVERIFY(!fixture.player->isWaiting());
        fixture.moveTo(0.08);
        fixture.showPicture(0.12);
        QCOMPARE(fixture.player->position(), 0.08);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(shown.count(), 1);
    }

    void endOfFileIsAcceptedOnlyNearDuration_data()
    {
        rows<double, double, bool, Kind, bool>(
            {"position", "duration", "byError", "kind", "accepted"},
            {{"at the end", 120, 120, false, Kind::Recording, true},
             {"two seconds before", 118, 120, false, Kind::Recording, true},
             {"more than two seconds before", 117.99, 120, false, Kind::Recording, false},
             {"in the middle", 57, 120, false, Kind::Recording, false},
             {"past the end", 121, 120, false, Kind::Recording, true},
             {"no duration", 57, 0, false, Kind::Recording, false},
             {"duration is not a number", 57, qQNaN(), false, Kind::Recording, false},
             {"by an error at the end", 119.9, 120, true, Kind::Recording, true},
             {"by an error in the middle", 57, 120, true, Kind::Recording, false},
             {"live", 119.9, 120, false, Kind::Live, false}});
    }
    void endOfFileIsAcceptedOnlyNearDuration()
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

    void playAtEndStartsFromBeginning()
    {
        PlayingFixture fixture(119);
        fixture.endFile();
        QVERIFY(fixture.engine->isPaused);
        fixture.player->play();
        QCOMPARE(fixture.engine->loads.last().startAt, 0.0);
        QVERIFY(!fixture.engine->loads.last().isPaused);
        fixture.showPicture(0);
        QCOMPARE(fixture.player->timeControl(), TimeControl::Playing);
    }

    void bufferedPositionIsNeverBeforePosition()
    {
        PlayingFixture fixture(0);
        fixture.reportEvent(&Listener::onBufferedToChanged, 30);
        QCOMPARE(fixture.player->bufferedTo(), 30.0);
        fixture.reportEvent(&Listener::onBufferedToChanged, qQNaN());
        QCOMPARE(fixture.player->bufferedTo(), 30.0);
        fixture.moveTo(31);
        QCOMPARE(fixture.player->bufferedTo(), 31.0);
    }

    void onlyRecordingOfKnownLengthIsSeekable_data()
    {
        rows<Kind, double, bool>({"kind", "duration", "seekable"}, {{"recording", Kind::Recording, 120, true},
                                                                    {"unknown length", Kind::Recording, 0, false},
                                                                    {"live", Kind::Live, 120, false}});
    }
    void onlyRecordingOfKnownLengthIsSeekable()
    {
        QFETCH(const Kind, kind);
        QFETCH(const double, duration);
        LoadingFixture fixture(kind);
        fixture.reportDuration(duration);
        QVERIFY(!fixture.player->isSeekable());
        fixture.reportEvent(&Listener::onSeekableKnown, true);
        QTEST(fixture.player->isSeekable(), "seekable");
    }

    void selectedTracksAreRestoredAfterBreak()
    {
        using Selections = QList<ScriptedVideoEngine::Selection>;
        const Selections chosen{{MediaTrack::Kind::Audio, 2}, {MediaTrack::Kind::Subtitle, MediaTrack::none}};
        PlayingFixture fixture(0);
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
};

QUILLMERE_TEST(StreamPlayerTest, QCoreApplication)

} // namespace quillmere

#include "StreamPlayerTest.moc"
