#include "TapePlayer.h"

#include "HubURL.h"
#include "StreamPlayer.h"
#include "SystemClock.h"

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<VideoPlayer> makeStreamPlayer()
{
    static SystemClock clock;
    return std::make_unique<StreamPlayer>(VideoOptions{hubCertificates(), u"Quillmere Television"_s}, clock);
}

} // namespace

TapePlayer::TapePlayer(QObject* parent) : TapePlayer(&makeStreamPlayer, parent) {}

TapePlayer::TapePlayer(MakePlayer makePlayer, QObject* parent) : QObject(parent), m_makePlayer(std::move(makePlayer)) {}

void TapePlayer::componentComplete()
{
    const auto url = m_tape.streamURLPath.isEmpty() ? std::nullopt : hubURL(m_tape.streamURLPath);
    if (!url) {
        fail(u"This tape has no playable copy on the shelf."_s);
        return;
    }
    m_player = m_makePlayer();
    const auto item = std::make_shared<PlayerItem>(*url);
    connect(item.get(), &PlayerItem::statusChanged, this, [this, item = item.get()] {
        if (item->status() == PlayerItem::Status::Failed)
            fail(u"The tape wouldn't play. It may still be being archived."_s);
    });
    Q_EMIT playerChanged();
    m_player->setItem(item);
    m_player->seek(m_startAt, SeekTolerance::AtOrAfter);
    m_player->play();
}

bool TapePlayer::press(int key)
{
    switch (key) {
    case Qt::Key_Select:
    case Qt::Key_MediaTogglePlayPause:
        setPaused(m_player && m_player->timeControl() != VideoPlayer::TimeControl::Paused);
        return true;
    case Qt::Key_MediaPlay:
        setPaused(false);
        return true;
    case Qt::Key_MediaPause:
        setPaused(true);
        return true;
    case Qt::Key_MediaStop:
    case Qt::Key_Back:
        Q_EMIT leave();
        return true;
    default:
        return false;
    }
}

void TapePlayer::end()
{
    if (m_player)
        m_player->setItem(nullptr);
}

void TapePlayer::setPaused(bool paused)
{
    if (!m_player)
        return;
    if (paused)
        m_player->pause();
    else
        m_player->play();
}

void TapePlayer::fail(const QString& message)
{
    m_failure = message;
    Q_EMIT failureChanged();
}
