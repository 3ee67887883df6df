#include "Coordinator.h"

#include "PlaybackTexts.h"

#include <QPointer>

namespace quillmere {

namespace {

constexpr double startTolerance = 1.0; // seconds; a start position up to this plays from the beginning
constexpr std::chrono::seconds reportInterval{10};

} // namespace

Coordinator::Coordinator(OnProgress onProgress, OnFinished onFinished, OnFailure onFailure)
    : m_onProgress(std::move(onProgress)), m_onFinished(std::move(onFinished)), m_onFailure(std::move(onFailure))
{}

Coordinator::~Coordinator()
{
    tearDown();
}

void Coordinator::attach(std::shared_ptr<VideoPlayer> player, const PlayerItem& item, double startAt)
{
    m_player = std::move(player);
    start(startAt);
    m_timeObserver = m_player->addPeriodicTimeObserver(reportInterval, [coordinator = QPointer(this)](double seconds) {
        if (coordinator && coordinator->m_player)
            coordinator->m_onProgress(seconds);
    });
    observeStatus(item);
    disconnect(m_endObserver);
    m_endObserver = connect(&item, &PlayerItem::didPlayToEnd, this, [this] { m_onFinished(); });
}

void Coordinator::tearDown()
{
    m_timeObserver.reset();
    disconnect(m_statusObservation);
    disconnect(m_endObserver);
    m_player.reset();
}

void Coordinator::start(double startAt)
{
    if (startAt > startTolerance) {
        // Play even if the seek failed, but not after tearDown() or with another player.
        m_player->seek(startAt, SeekTolerance::AtOrAfter,
                       [coordinator = QPointer(this), player = m_player.get()](bool) {
                           if (coordinator && coordinator->m_player.get() == player)
                               coordinator->m_player->play();
                       });
    } else {
        m_player->play();
    }
}

void Coordinator::observeStatus(const PlayerItem& item)
{
    disconnect(m_statusObservation);
    m_statusObservation = connect(&item, &PlayerItem::statusChanged, this, [this, &item] {
        if (item.status() != PlayerItem::Status::Failed)
            return;
        const QString cause = failureText(item.error());
        const auto report = [this, message = cause.isEmpty() ? TapePlayerTexts::wouldNotPlay() : cause] {
            if (m_player)
                m_onFailure(message);
        };
        // Queued: the callback may destroy the player, which is still inside the call that emitted this signal.
        QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
    });
}

} // namespace quillmere
