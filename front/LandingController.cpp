#include "LandingController.h"

#include "HubURL.h"
#include "StationTexts.h"
#include "Text.h"

using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr auto noticeDuration = 3s;

StatusLine statusLineOf(const Store* store)
{
    return statusLine(store->lastError(), store->isLoading(), store->hasLoadedOnce());
}

} // namespace

void LandingController::setStore(Store* store)
{
    if (m_store == store)
        return;
    if (m_store)
        disconnect(m_store, nullptr, this, nullptr);
    m_store = store;
    if (store) {
        connect(store, &Store::statusChanged, this, &LandingController::statusChanged);
        connect(store, &Store::lastErrorChanged, this, &LandingController::statusLineChanged);
        connect(store, &Store::isLoadingChanged, this, &LandingController::statusLineChanged);
        connect(store, &Store::hasLoadedOnceChanged, this, &LandingController::statusLineChanged);
    }
    Q_EMIT storeChanged();
    Q_EMIT statusChanged();
    Q_EMIT statusLineChanged();
}

void LandingController::setShowNews(bool showNews)
{
    if (m_showNews == showNews)
        return;
    m_showNews = showNews;
    setNoticeTimer(nullptr);
    Q_EMIT showNewsChanged();
    Q_EMIT coverChanged();
}

void LandingController::setShowStore(bool showStore)
{
    if (m_showStore == showStore)
        return;
    m_showStore = showStore;
    setNoticeTimer(nullptr);
    Q_EMIT showStoreChanged();
    Q_EMIT coverChanged();
}

void LandingController::setNewsScreen(QQmlComponent* screen)
{
    if (m_newsScreen == screen)
        return;
    m_newsScreen = screen;
    Q_EMIT coverChanged();
}

void LandingController::setShopScreen(QQmlComponent* screen)
{
    if (m_shopScreen == screen)
        return;
    m_shopScreen = screen;
    Q_EMIT coverChanged();
}

QQmlComponent* LandingController::cover() const
{
    if (m_showNews && m_newsScreen)
        return m_newsScreen;
    return m_showStore ? m_shopScreen.data() : nullptr;
}

void LandingController::dismissCover()
{
    if (m_showNews && m_newsScreen)
        setShowNews(false);
    else
        setShowStore(false);
}

QString LandingController::hubHost() const
{
    return hubBase().host();
}

bool LandingController::towerLive() const
{
    return m_store && m_store->status().news.towerLive;
}

QString LandingController::newsSubtitle() const
{
    return m_store ? shortenedText(newsDoorSubtitle(m_store->status().news)) : QString();
}

QString LandingController::storeSubtitle() const
{
    if (!m_store)
        return {};
    const CatalogSummary& shop = m_store->status().rewindery;
    return storeDoorSubtitle(shop.tapes, shop.markets.size());
}

QString LandingController::statusText() const
{
    return m_store ? shortenedText(statusLineOf(m_store).text) : QString();
}

int LandingController::statusSize() const
{
    return m_store ? statusLineOf(m_store).size : 1;
}

QColor LandingController::statusColor() const
{
    return m_store ? statusLineOf(m_store).color : QColor();
}

void LandingController::appear()
{
    m_store->refresh();
}

bool LandingController::press(int key)
{
    if (cover())
        return false;
    switch (key) {
    case Qt::Key_MediaTogglePlayPause:
    case Qt::Key_MediaPlay:
    case Qt::Key_MediaPause:
        m_store->refresh();
        return true;
    case Qt::Key_Back:
        onBack();
        return true;
    default:
        return false;
    }
}

void LandingController::onBack()
{
    if (m_noticeTimer) {
        setNoticeTimer(nullptr);
        Q_EMIT quitRequested();
        return;
    }
    setNoticeTimer(m_clock->after(noticeDuration, [this] { setNoticeTimer(nullptr); }));
}

void LandingController::setNoticeTimer(std::unique_ptr<Clock::Timer> notice)
{
    const bool wasShown = noticeShown();
    m_noticeTimer = std::move(notice);
    if (noticeShown() != wasShown)
        Q_EMIT noticeShownChanged();
}

} // namespace quillmere
