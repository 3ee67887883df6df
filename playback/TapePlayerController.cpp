#include "TapePlayerController.h"

#include "HubURL.h"
#include "MetadataItems.h"
#include "TapePlayerTexts.h"

void TapePlayerController::setStore(Store* store)
{
    if (m_store == store)
        return;
    m_store = store;
    Q_EMIT storeChanged();
}

void TapePlayerController::setTimepiece(Timepiece* timepiece)
{
    if (m_timepiece == timepiece)
        return;
    m_timepiece = timepiece;
    Q_EMIT timepieceChanged();
}

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
        Q_EMIT leave();
    return leaves;
}

bool TapePlayerController::release(int key)
{
    return controls() && controls()->release(key);
}

void TapePlayerController::dismantle()
{
    if (m_container)
        m_container->dismantle();
}

void TapePlayerController::play(const QUrl& url)
{
    m_container =
        std::make_unique<PlayerContainer>(url, m_startAt, metadataItems(m_cover), m_timepiece->clock(), m_makePlayer);
    connect(m_container.get(), &PlayerContainer::progress, this, [this](double seconds) {
        if (m_store)
            m_store->saveResume(m_tape.id, seconds);
    });
    connect(m_container.get(), &PlayerContainer::finished, this, [this] {
        if (m_store)
            m_store->removeResume(m_tape.id);
    });
    connect(m_container.get(), &PlayerContainer::failure, this, &TapePlayerController::fail);
    connect(m_container.get(), &PlayerContainer::leave, this, &TapePlayerController::leave);
    connect(m_container.get(), &PlayerContainer::playerChanged, this, &TapePlayerController::playerChanged);
    Q_EMIT playerChanged();
}

void TapePlayerController::fail(const QString& message)
{
    m_failure = message;
    Q_EMIT failureChanged();
}
