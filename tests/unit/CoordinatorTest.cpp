#include "Coordinator.h"
#include "Rows.h"
#include "ScriptedVideoPlayer.h"
#include "TestMain.h"

#include <QMetaMethod>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** A player item that logs each signal which is disconnected, after the latest call to its player. */
class WatchedItem : public PlayerItem
{
public:
    WatchedItem(const QUrl& url, std::shared_ptr<const QStringList> calls, QStringList& log)
        : PlayerItem(url), m_calls(std::move(calls)), m_log(log)
    {}

protected:
    void disconnectNotify(const QMetaMethod& signal) override
    {
        m_log.append(m_calls->last());
        m_log.append(QString::fromLatin1(signal.name()));
    }

private:
    std::shared_ptr<const QStringList> m_calls;
    QStringList& m_log;
};

} // namespace

/** Tests how the coordinator starts a playback, which events it reports, and how it is torn down. */
class CoordinatorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_coordinator.reset();
        m_reports.clear();
        m_log.clear();
        m_player = std::make_shared<ScriptedVideoPlayer>();
        m_item =
            std::make_shared<WatchedItem>(QUrl(u"https://hub.example/media/7/index.m3u8"_s), m_player->calls(), m_log);
        m_player->setItem(m_item);
        m_coordinator = std::make_unique<Coordinator>(
            [this](double seconds) { m_reports.append(QString::number(seconds)); },
            [this] { m_reports.append(u"finished"_s); }, [this](const QString& message) { m_reports.append(message); });
    }

    void startWithinFirstSecondPlaysAtOnceFromBeginning_data()
    {
        rows<double>({"startAt"}, {{"start", 0}, {"one second", 1}, {"negative", -5}, {"not a number", qQNaN()}});
    }

    void startWithinFirstSecondPlaysAtOnceFromBeginning()
    {
        QFETCH(const double, startAt);
        attach(startAt);
        QCOMPARE(*m_player->calls(), QStringList({u"setItem"_s, u"play"_s, u"observe"_s}));
    }

    void laterStartPlaysAfterSeek_data()
    {
        rows<bool>({"finished"}, {{"the seek finished", true}, {"the seek was interrupted", false}});
    }

    void laterStartPlaysAfterSeek()
    {
        QFETCH(const bool, finished);
        attach(1.5);
        QCOMPARE(*m_player->calls(), QStringList({u"setItem"_s, u"seek"_s, u"observe"_s}));
        QCOMPARE(m_player->seeks.first().seconds, 1.5);
        QCOMPARE(m_player->seeks.first().tolerance, SeekTolerance::AtOrAfter);
        m_player->finishSeek(finished);
        QCOMPARE(m_player->calls()->last(), u"play"_s);
    }

    void positionIsReportedEveryTenSeconds()
    {
        attach();
        QCOMPARE(m_player->observations.size(), 1);
        QCOMPARE(m_player->observations.first().interval, std::chrono::seconds(10));
        // Every report is passed on unfiltered.
        for (const double seconds : {10.0, 0.0, 20.0, 20.0, 3725.5})
            m_player->report(seconds);
        QCOMPARE(m_reports, QStringList({u"10"_s, u"0"_s, u"20"_s, u"20"_s, u"3725.5"_s}));
    }

    void endIsReportedButReadyItemIsNot()
    {
        attach();
        m_player->showPicture();
        QCOMPARE(m_item->status(), PlayerItem::Status::ReadyToPlay);
        QCoreApplication::processEvents();
        QCOMPARE(m_reports, QStringList());
        m_player->end();
        QCOMPARE(m_reports, QStringList(u"finished"_s));
    }

    void failureIsReportedFromEventLoopWithCause_data()
    {
        using enum VideoFailure::Cause;
        rows<VideoFailure, QString>({"failure", "message"},
                                    {{"unknown", {}, u"The tape wouldn't play. It may still be being archived."_s},
                                     {"refused", {Refused, 0, {}}, u"The connection was refused."_s},
                                     {"404", {Status, 404, {}}, u"The hub answered 404."_s}});
    }

    void failureIsReportedFromEventLoopWithCause()
    {
        QFETCH(const VideoFailure, failure);
        attach();
        m_player->fail(failure);
        QCOMPARE(m_reports, QStringList());
        QTRY_COMPARE(m_reports.size(), 1);
        QTEST(m_reports.first(), "message");
    }

    void playerIsKeptUntilObserversAreRemovedInOrder()
    {
        connect(m_player.get(), &QObject::destroyed, this, [this] { m_log.append(u"player destroyed"_s); });
        const auto item = m_item; // keeps the item alive after the player has released it
        attach();
        m_player.reset();
        m_coordinator->tearDown();
        QCOMPARE(m_log, QStringList({u"unobserve"_s, u"statusChanged"_s, u"unobserve"_s, u"didPlayToEnd"_s,
                                     u"player destroyed"_s}));
    }

    void tearDownTwiceIsSafe()
    {
        m_coordinator->tearDown();
        attach();
        m_coordinator->tearDown();
        m_coordinator->tearDown();
        QCOMPARE(m_player->calls()->count(u"unobserve"_s), 1);
    }

    void lateEventIsIgnored_data() { rows<bool>({"isDestroyed"}, {{"torn down", false}, {"destroyed", true}}); }

    void lateEventIsIgnored()
    {
        QFETCH(const bool, isDestroyed);
        attach(125);
        // This notification is already queued.
        m_player->fail({});
        if (isDestroyed)
            m_coordinator.reset();
        else
            m_coordinator->tearDown();
        m_player->observations.first().callback(30);
        m_item->setPlayedToEnd();
        m_item->setFailed({});
        const auto calls = *m_player->calls();
        m_player->finishSeek(true);
        QCoreApplication::processEvents();
        QCOMPARE(*m_player->calls(), calls);
        QCOMPARE(m_reports, QStringList());
    }

    void previousPlayerIsReleased()
    {
        const std::weak_ptr<VideoPlayer> earlier = m_player;
        const auto earlierItem = m_item;
        attach(125);
        const auto seek = m_player->seeks.first();
        m_player = std::make_shared<ScriptedVideoPlayer>();
        m_item = std::make_shared<PlayerItem>(QUrl(u"https://hub.example/media/8/index.m3u8"_s));
        m_player->setItem(m_item);
        attach(125);
        QVERIFY(earlier.expired());
        seek.done(true);
        QVERIFY(!m_player->calls()->contains(u"play"_s));
        earlierItem->setPlayedToEnd();
        QCOMPARE(m_reports, QStringList());
        m_player->end();
        QCOMPARE(m_reports, QStringList(u"finished"_s));
    }

private:
    void attach(double startAt = 0) { m_coordinator->attach(m_player, *m_item, startAt); }

    QStringList m_reports;
    QStringList m_log;
    std::shared_ptr<ScriptedVideoPlayer> m_player;
    std::shared_ptr<PlayerItem> m_item;
    std::unique_ptr<Coordinator> m_coordinator;
};

QUILLMERE_TEST(CoordinatorTest, QCoreApplication)

} // namespace quillmere

#include "CoordinatorTest.moc"
