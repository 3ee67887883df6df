#include "CountedRecording.h"
#include "VideoStage.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using CountedRecording::secondShown;

/** The real player on recordings that leave something out, or count their time anew: 48 seconds in parts of four. */
class VideoJumpTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void partsLeftOutForAWhileAreAskedForAgain();
    void partsMissingForGoodArePassedOver();
    void timeThatIsCountedAnewGoesOn();
    void aStartBehindTimeThatIsCountedAnewIsThere();

private:
    void answerParts(int status);
    QByteArray listOf(const QList<QList<int>>& stretches) const;
    QByteArray authority() const { return m_folder.read(u"authority.pem"_s); }

    /** What a viewer's position is written from, each second of play. */
    std::unique_ptr<TimeObserver> observe(const VideoStage& stage)
    {
        m_positions.clear();
        return stage.player->addPeriodicTimeObserver(1s, [this](double seconds) { m_positions << seconds; });
    }
    double longestStep() const;

    static constexpr int firstMissing = 4;
    static constexpr int lastMissing = 8;

    StreamFolder m_folder;
    std::unique_ptr<StreamServer> m_server;
    QList<double> m_positions;
};

void VideoJumpTest::initTestCase()
{
    QVERIFY(m_folder.isReady());
    QVERIFY(CountedRecording::make(m_folder.path(), u"tape"_s, 48, CountedRecording::Kind::Film));
    VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
}

void VideoJumpTest::init()
{
    m_server = std::make_unique<StreamServer>(m_folder.path());
}

void VideoJumpTest::answerParts(int status)
{
    for (int part = firstMissing; part <= lastMissing; ++part)
        m_server->answer(u"/tape%1.ts"_s.arg(part), status);
}

// Stretches of parts, with a discontinuity between each two.
QByteArray VideoJumpTest::listOf(const QList<QList<int>>& stretches) const
{
    QByteArray list = "#EXTM3U\n#EXT-X-VERSION:3\n#EXT-X-TARGETDURATION:4\n#EXT-X-PLAYLIST-TYPE:VOD\n";
    for (const QList<int>& stretch : stretches) {
        if (stretch != stretches.first())
            list += "#EXT-X-DISCONTINUITY\n";
        for (const int part : stretch)
            list += "#EXTINF:4,\ntape" + QByteArray::number(part) + ".ts\n";
    }
    return list + "#EXT-X-ENDLIST\n";
}

double VideoJumpTest::longestStep() const
{
    double longest = 0;
    for (qsizetype i = 1; i < m_positions.size(); ++i)
        longest = std::max(longest, std::abs(m_positions[i] - m_positions[i - 1]));
    return longest;
}

void VideoJumpTest::partsLeftOutForAWhileAreAskedForAgain()
{
    answerParts(503);
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    QSignalSpy shown(stage.player.get(), &VideoPlayer::pictureShown);
    const auto observer = observe(stage);
    stage.play(m_server->url(u"/tape.m3u8"_s), 12);
    QTRY_VERIFY_WITH_TIMEOUT(m_server->requests().contains(u"/tape%1.ts"_s.arg(lastMissing + 1)), 15'000);
    answerParts(200);
    QTRY_COMPARE_WITH_TIMEOUT(shown.count(), 2, 30'000);
    QTRY_VERIFY_WITH_TIMEOUT(stage.player->position() > 18.5, 15'000);
    QVERIFY(stage.player->position() < 30);
    QVERIFY(std::abs(secondShown(stage.window.grabWindow()) - stage.player->position()) < 2);
    QVERIFY2(longestStep() < 4, qPrintable(QString::number(longestStep())));
}

void VideoJumpTest::partsMissingForGoodArePassedOver()
{
    answerParts(404);
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    QSignalSpy shown(stage.player.get(), &VideoPlayer::pictureShown);
    stage.play(m_server->url(u"/tape.m3u8"_s), 13);
    QSignalSpy ended(stage.item.get(), &PlayerItem::didPlayToEnd);
    QTRY_VERIFY_WITH_TIMEOUT(stage.player->position() > 37.5, 30'000);
    QCOMPARE(shown.count(), 2);
    QVERIFY(std::abs(secondShown(stage.window.grabWindow()) - stage.player->position()) < 2);
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 30'000);
    QCOMPARE(shown.count(), 2);
    QVERIFY(!stage.hasFailed());
}

void VideoJumpTest::timeThatIsCountedAnewGoesOn()
{
    m_server->put(u"/anew.m3u8"_s, listOf({{2, 3}, {0, 1}, {9, 10}}));
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    QSignalSpy shown(stage.player.get(), &VideoPlayer::pictureShown);
    const auto observer = observe(stage);
    stage.play(m_server->url(u"/anew.m3u8"_s));
    QSignalSpy ended(stage.item.get(), &PlayerItem::didPlayToEnd);
    QTRY_VERIFY_WITH_TIMEOUT(stage.player->position() > 11, 30'000);
    QVERIFY(std::abs(secondShown(stage.window.grabWindow()) - (stage.player->position() - 8)) < 2);
    QTRY_VERIFY_WITH_TIMEOUT(stage.player->position() > 19, 30'000);
    QVERIFY(std::abs(secondShown(stage.window.grabWindow()) - (stage.player->position() + 20)) < 2);
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 30'000);
    QCOMPARE(shown.count(), 1);
    QCOMPARE(qRound(stage.player->duration()), 24);
    QVERIFY2(std::abs(m_positions.last() - 23) < 1.5, qPrintable(QString::number(m_positions.last())));
    QVERIFY2(longestStep() < 3, qPrintable(QString::number(longestStep())));
}

// It lands by whole parts, as the reader seeks by the list and cannot tell the time within one.
void VideoJumpTest::aStartBehindTimeThatIsCountedAnewIsThere()
{
    m_server->put(u"/anew.m3u8"_s, listOf({{0, 1}, {7, 8, 9}}));
    VideoStage stage(authority());
    QVERIFY(stage.isExposed());
    stage.play(m_server->url(u"/anew.m3u8"_s), 14);
    QSignalSpy ended(stage.item.get(), &PlayerItem::didPlayToEnd);
    QVERIFY(stage.waitForPicture());
    QTRY_VERIFY_WITH_TIMEOUT(stage.player->position() > 14.5, 15'000);
    QVERIFY(stage.player->position() < 17);
    const double expected = stage.player->position() + 20;
    const int second = secondShown(stage.window.grabWindow());
    QVERIFY2(std::abs(second - expected) < CountedRecording::segmentSeconds + 2, qPrintable(QString::number(second)));
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, 30'000);
}

QTEST_MAIN(VideoJumpTest)
#include "VideoJumpTest.moc"
