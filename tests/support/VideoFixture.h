#pragma once

#include "StreamPlayer.h"
#include "StreamServer.h"
#include "SystemClock.h"
#include "VideoView.h"

#include <QFile>
#include <QProcess>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace quillmere {

inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** Whether libmpv or the video plug-in is loaded into this process. */
inline bool isPlayerMapped()
{
    const QByteArray maps = readFile(QStringLiteral("/proc/self/maps"));
    return maps.contains("libmpv") || maps.contains("quillmere-video");
}

/** A temporary folder with a stream and certificates, created by make-stream. `isReady` is false if that failed. */
class StreamFolder
{
public:
    StreamFolder()
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QStringLiteral(QUILLMERE_TEST_SUPPORT "/make-stream"), {m_folder.path()});
        m_ready = process.waitForFinished(60'000) && process.exitCode() == 0;
    }

    bool isReady() const { return m_ready; }
    QString path() const { return m_folder.path(); }
    QByteArray read(const QString& name) const { return readFile(m_folder.filePath(name)); }

    /** Runs ffmpeg in the folder with a generated input. No argument contains a blank. */
    bool generate(const QString& arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(QStringLiteral("ffmpeg"),
                      (QStringLiteral("-v error -nostdin -f lavfi -i ") + arguments).split(QLatin1Char(' ')));
        return process.waitForFinished() && process.exitCode() == 0;
    }

private:
    QTemporaryDir m_folder;
    bool m_ready = false;
};

/** A real player in a view in a window. */
struct VideoFixture
{
    explicit VideoFixture(const QByteArray& certificates, QSize size = {640, 360})
        : player(std::make_unique<StreamPlayer>(VideoOptions{certificates, QStringLiteral("Test")}, clock)),
          view(std::make_unique<VideoView>(window.contentItem()))
    {
        window.setColor(Qt::blue);
        window.resize(size);
        view->setSize(size);
        view->setPlayer(player.get());
        window.show();
        [this] { QVERIFY(QTest::qWaitForWindowExposed(&window)); }();
    }

    /** Plays a stream from `startAt` seconds, in place of the current one. */
    void play(const QUrl& url, double startAt = 0, PlayerItem::Kind kind = PlayerItem::Kind::Recording)
    {
        item = std::make_shared<PlayerItem>(url, kind);
        ended = std::make_unique<QSignalSpy>(item.get(), &PlayerItem::didPlayToEnd);
        player->setItem(item);
        player->seek(startAt, SeekTolerance::AtOrAfter);
        player->play();
    }

    bool waitForPicture(int milliseconds = 15'000)
    {
        return QTest::qWaitFor(
            [this] { return player->timeControl() == VideoPlayer::TimeControl::Playing && player->position() > 0; },
            milliseconds);
    }

    QImage picture() { return window.grabWindow(); }

    bool hasFailed() const { return item->status() == PlayerItem::Status::Failed; }
    VideoFailure failure() const { return item->error().value_or(VideoFailure{}); }

    /** Grabs the window ten times, each time after the position has advanced; returns how many pictures are new. */
    int newPictures()
    {
        int count = 0;
        QImage last;
        for (int grab = 0; grab < 10; ++grab) {
            const double before = player->position();
            if (!QTest::qWaitFor([this, before] { return player->position() > before + 0.1; }))
                break;
            const QImage now = picture();
            count += !last.isNull() && now != last;
            last = now;
        }
        return count;
    }

    SystemClock clock;
    QQuickWindow window;
    std::unique_ptr<StreamPlayer> player;
    QSignalSpy shown{player.get(), &VideoPlayer::pictureShown};
    std::unique_ptr<VideoView> view;
    std::shared_ptr<PlayerItem> item;  ///< set by `play`
    std::unique_ptr<QSignalSpy> ended; ///< ends of `item`
};

/** Base of tests that use a folder of streams, and a fresh server of that folder in every test function. */
class StreamFixture : public QObject
{
    Q_OBJECT

protected:
    StreamFolder m_folder;
    std::unique_ptr<StreamServer> m_server;
    QUrl m_stream; ///< a stream of six segments of two seconds

    /** Creates more streams in the folder, once. Returns false on failure. */
    virtual bool createStreams() { return true; }

    QByteArray authority() const { return m_folder.read(QStringLiteral("authority.pem")); }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_folder.isReady() && createStreams());
        VideoPlugins::addFolder(QStringLiteral(QUILLMERE_TEST_PLUGINS));
    }

    void init()
    {
        m_server = std::make_unique<StreamServer>(m_folder.path());
        m_stream = m_server->url(QStringLiteral("/index.m3u8"));
    }
};

} // namespace quillmere
