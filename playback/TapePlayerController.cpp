#include "TapePlayerController.h"

#include "HubURL.h"
#include "PlaybackTexts.h"

namespace quillmere {

void TapePlayerController::componentComplete()
{
    const auto url = m_tape.streamURLPath.isEmpty() ? std::nullopt : hubURL(m_tape.streamURLPath);
    if (url)
        play(*url);
    else
        fail(TapePlayerTexts::noPlayableCopy());
}

bool TapePlayerController::press(int key, bool isAutoRepeat)
{
    if (controls())
        return controls()->press(key, isAutoRepeat);
    const bool leaves = key == Qt::Key_Back || key == Qt::Key_MediaStop;
    if (leaves && !isAutoRepeat)
        Q_EMIT dismissRequested();
    return leaves;
}

bool TapePlayerController::release(int key)
{
    return controls() && controls()->release(key);
}

void TapePlayerController::tearDown()
{
    // Kept until the view no longer shows it.
    if (const auto player = m_container ? m_container->tearDown() : nullptr)
        Q_EMIT playerChanged();
}

void TapePlayerController::play(const QUrl& url)
{
    const PlayerContainer::Actions actions{
        [this](double seconds) {
            if (m_store)
                m_store->saveResume(m_tape.id, seconds);
        },
        [this] {
            if (m_store)
                m_store->removeResume(m_tape.id);
        },
        [this](const QString& message) { fail(message); },
        [this] { Q_EMIT dismissRequested(); },
    };
    m_container =
        std::make_unique<PlayerContainer>(url, m_startAt, metadataItems(m_cover), actions, *m_clock, m_createPlayer);
    Q_EMIT playerChanged();
}

void TapePlayerController::fail(const QString& message)
{
    m_failure = message;
    Q_EMIT failureChanged();
}

} // namespace quillmere
