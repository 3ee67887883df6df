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
    }

    bool isExposed() { return QTest::qWaitForWindowExposed(&window); }

    /** Plays a stream from `startAt` seconds, in place of the current one. */
    void play(const QUrl& url, double startAt = 0, PlayerItem::Kind kind = PlayerItem::Kind::Recording)
    {
        item = std::make_shared<PlayerItem>(url, kind);
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
            const QImage now = window.grabWindow();
            count += !last.isNull() && now != last;
            last = now;
        }
        return count;
    }

    SystemClock clock;
    QQuickWindow window;
    std::unique_ptr<StreamPlayer> player;
    std::unique_ptr<VideoView> view;
    std::shared_ptr<PlayerItem> item; ///< set by `play`
};

} // namespace quillmere
