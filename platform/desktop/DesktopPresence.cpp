#include "DesktopPresence.h"

#include "DesktopLink.h"
#include "IdleInhibitor.h"

#include <algorithm>
#include <cmath>

namespace quillmere {

namespace {

/** A larger forward step of the position, in seconds, is a seek and not normal playback. */
constexpr double seekThreshold = 2;

constexpr double microseconds = 1e6;

/** Accepts any number of seconds: clamps it to one year; 0 if it is not finite. */
qint64 toMicroseconds(double seconds)
{
    constexpr double year = 366 * 24 * 3600.0;
    return std::isfinite(seconds) ? std::llround(std::clamp(seconds, 0.0, year) * microseconds) : 0;
}

double toSeconds(qint64 time)
{
    return double(time) / microseconds;
}

} // namespace

DesktopPresence::DesktopPresence(VideoPlayer& player, const QString& reason, const QString& busAddress)
    : m_player(player)
{
    if (!busAddress.isEmpty()) {
        auto mpris = std::make_unique<MprisPlayer>();
        m_mpris = mpris.get();
        connectTo(*m_mpris);
        m_link = new DesktopLink(busAddress, reason, std::move(mpris));
    }
    connect(&m_player, &VideoPlayer::itemChanged, this, &DesktopPresence::onItemChanged);
    connect(&m_player, &VideoPlayer::timeControlChanged, this, &DesktopPresence::publishState);
    connect(&m_player, &VideoPlayer::durationChanged, this, &DesktopPresence::publishState);
    connect(&m_player, &VideoPlayer::seekableChanged, this, &DesktopPresence::publishState);
    connect(&m_player, &VideoPlayer::positionChanged, this, &DesktopPresence::onPositionChanged);
    onPositionChanged();
    onItemChanged();
}

DesktopPresence::~DesktopPresence()
{
    if (m_link != nullptr)
        m_link->close();
}

void DesktopPresence::connectTo(MprisPlayer& mpris)
{
    connect(&mpris, &MprisPlayer::playRequested, this, [this] { m_player.play(); });
    connect(&mpris, &MprisPlayer::pauseRequested, this, [this] { m_player.pause(); });
    connect(&mpris, &MprisPlayer::playPauseRequested, this, [this] {
        if (m_player.timeControl() == VideoPlayer::TimeControl::Paused)
            m_player.play();
        else
            m_player.pause();
    });
    connect(&mpris, &MprisPlayer::seekRequested, this, [this](qint64 offset) {
        m_player.seek(std::max(0.0, m_player.position() + toSeconds(offset)), SeekTolerance::AtOrAfter);
    });
    connect(&mpris, &MprisPlayer::positionRequested, this,
            [this](qint64 position) { m_player.seek(toSeconds(position), SeekTolerance::AtOrAfter); });
    connect(&mpris, &MprisPlayer::stopRequested, this, &DesktopPresence::stopRequested);
}

void DesktopPresence::onItemChanged()
{
    disconnect(m_itemStatus);
    if (const auto item = m_player.item())
        m_itemStatus = connect(item.get(), &PlayerItem::statusChanged, this, &DesktopPresence::publishState);
    publishState();
}

void DesktopPresence::publishState()
{
    const bool inhibits = m_player.timeControl() != VideoPlayer::TimeControl::Paused;
    MprisState now = state();
    if (now == m_publishedState && inhibits == bool(m_idleInhibitor))
        return;
    m_publishedState = std::move(now);
    if (!inhibits)
        m_idleInhibitor.reset();
    else if (!m_idleInhibitor)
        m_idleInhibitor = std::make_unique<IdleInhibitor>();
    if (m_link != nullptr)
        m_link->setState(m_publishedState, inhibits);
}

void DesktopPresence::onPositionChanged()
{
    const double before = std::exchange(m_position, m_player.position());
    if (m_link == nullptr)
        return;
    const qint64 position = toMicroseconds(m_position);
    m_mpris->setPosition(position);
    if (m_position < before || m_position > before + seekThreshold)
        m_link->notifySeeked(position);
}

MprisState DesktopPresence::state() const
{
    using Identifier = MetadataItem::Identifier;
    const auto item = m_player.item();
    if (!item)
        return {};
    MprisState state;
    state.length = toMicroseconds(m_player.duration());
    state.title = item->metadata(Identifier::Title);
    state.subtitle = item->metadata(Identifier::SubTitle);
    state.description = item->metadata(Identifier::Description);
    state.publisher = item->metadata(Identifier::Publisher);
    if (item->status() == PlayerItem::Status::Failed)
        return state;
    state.canPlay = true;
    state.canSeek = m_player.isSeekable();
    const bool isPaused = m_player.timeControl() == VideoPlayer::TimeControl::Paused;
    state.playback = isPaused ? MprisState::Playback::Paused : MprisState::Playback::Playing;
    return state;
}

} // namespace quillmere
