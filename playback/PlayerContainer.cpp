#include "PlayerContainer.h"

#include "Coordinator.h"
#include "DesktopPresence.h"
#include "PlayerController.h"

#include <utility>

using namespace Qt::StringLiterals;

PlayerContainer::PlayerContainer(const QUrl& url, double startAt, const QList<MetadataItem>& metadata, Clock& clock,
                                 const MakePlayer& makePlayer)
{
    const auto item = std::make_shared<PlayerItem>(url);
    item->setExternalMetadata(metadata);
    m_player = makePlayer(clock);
    m_player->setItem(item);
    m_player->setAutomaticallyWaitsToMinimizeStalling(true);

    m_controller = std::make_unique<PlayerController>(clock);
    m_controller->setPlayer(m_player.get());
    connect(m_controller.get(), &PlayerController::leave, this, &PlayerContainer::leave);

    m_coordinator = std::make_unique<Coordinator>([this](double seconds) { Q_EMIT progress(seconds); },
                                                  [this] { Q_EMIT finished(); },
                                                  [this](const QString& message) { Q_EMIT failure(message); });
    m_coordinator->attach(m_player, *item, startAt);

    m_presence = std::make_unique<DesktopPresence>(*m_player, u"Playing a tape"_s);
    connect(m_presence.get(), &DesktopPresence::stopRequested, this, &PlayerContainer::leave);
}

PlayerContainer::~PlayerContainer()
{
    dismantle();
}

void PlayerContainer::dismantle()
{
    if (!m_player)
        return;
    m_presence.reset();
    m_coordinator->tearDown();
    m_player->pause();
    m_controller->setPlayer(nullptr);
    const auto leaving = std::exchange(m_player, nullptr);
    Q_EMIT playerChanged();
    leaving->setItem(nullptr);
}
