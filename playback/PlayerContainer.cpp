#include "PlayerContainer.h"

#include "DesktopPresence.h"
#include "PlayerController.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace quillmere {

PlayerContainer::PlayerContainer(const QUrl& url, double startAt, const QList<MetadataItem>& metadata,
                                 const Actions& actions, Clock& clock, const CreatePlayer& createPlayer)
{
    const auto item = std::make_shared<PlayerItem>(url);
    item->setExternalMetadata(metadata);
    m_player = createPlayer(clock);
    m_player->setItem(item);
    m_player->setAutomaticallyWaitsToMinimizeStalling(true);

    m_controller = std::make_unique<PlayerController>(clock);
    m_controller->setPlayer(m_player.get());
    QObject::connect(m_controller.get(), &PlayerController::dismissRequested, m_controller.get(), actions.onDismiss);

    m_coordinator = std::make_unique<Coordinator>(actions.onProgress, actions.onFinished, actions.onFailure);
    m_coordinator->attach(m_player, *item, startAt);

    m_presence = std::make_unique<DesktopPresence>(*m_player, u"Playing a tape"_s);
    QObject::connect(m_presence.get(), &DesktopPresence::stopRequested, m_presence.get(), actions.onDismiss);
}

PlayerContainer::~PlayerContainer()
{
    tearDown();
}

std::shared_ptr<VideoPlayer> PlayerContainer::tearDown()
{
    if (!m_player)
        return nullptr;
    m_presence.reset();
    m_coordinator->tearDown();
    m_player->pause();
    m_controller->setPlayer(nullptr);
    m_player->setItem(nullptr);
    return std::exchange(m_player, nullptr);
}

} // namespace quillmere
