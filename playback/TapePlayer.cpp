#include "TapePlayer.h"

#include "HubURL.h"
#include "StreamPlayer.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double shortestSkip = 1.0; // a start this near to the top is the top

std::unique_ptr<VideoPlayer> makeStreamPlayer()
{
    return std::make_unique<StreamPlayer>(VideoOptions{hubCertificates(), u"Quillmere Television"_s});
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
    connect(m_player.get(), &VideoPlayer::failed, this,
            [this] { fail(u"The tape wouldn't play. It may still be being archived."_s); });
    Q_EMIT playerChanged();
    m_player->load(*url, m_startAt > shortestSkip ? m_startAt : 0);
}

bool TapePlayer::takeKey(int key)
{
    if (key != Qt::Key_Select && key != Qt::Key_MediaTogglePlayPause)
        return false;
    togglePause();
    return true;
}

void TapePlayer::togglePause()
{
    if (!m_player)
        return;
    if (m_player->state() == VideoPlayer::State::Playing)
        m_player->pause();
    else
        m_player->play();
}

void TapePlayer::fail(const QString& message)
{
    m_failure = message;
    Q_EMIT failureChanged();
}
