#include "LandingController.h"

#include "HubURL.h"
#include "LandingTexts.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto noticeTime = 3s;

StatusLine lineOf(const Store* store)
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

void LandingController::setTimepiece(Timepiece* timepiece)
{
    if (m_timepiece == timepiece)
        return;
    m_timepiece = timepiece;
    Q_EMIT timepieceChanged();
}

void LandingController::setShowNews(bool showNews)
{
    if (m_showNews == showNews)
        return;
    m_showNews = showNews;
    setNotice(nullptr);
    Q_EMIT showNewsChanged();
}

void LandingController::setShowStore(bool showStore)
{
    if (m_showStore == showStore)
        return;
    m_showStore = showStore;
    setNotice(nullptr);
    Q_EMIT showStoreChanged();
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
    return m_store ? newsDoorSubtitle(m_store->status().news) : QString();
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
    return m_store ? lineOf(m_store).text : QString();
}

int LandingController::statusSize() const
{
    return m_store ? lineOf(m_store).size : 1;
}

QColor LandingController::statusColor() const
{
    return m_store ? lineOf(m_store).color : QColor();
}

QString LandingController::notice() const
{
    return u"Press back again to switch the set off"_s;
}

void LandingController::appear()
{
    m_store->refresh();
}

bool LandingController::press(int key)
{
    switch (key) {
    case Qt::Key_MediaTogglePlayPause:
    case Qt::Key_MediaPlay:
    case Qt::Key_MediaPause:
        m_store->refresh();
        return true;
    case Qt::Key_Back:
        back();
        return true;
    default:
        return false;
    }
}

void LandingController::back()
{
    if (m_notice) {
        setNotice(nullptr);
        Q_EMIT leave();
        return;
    }
    setNotice(m_timepiece->clock().after(noticeTime, [this] { setNotice(nullptr); }));
}

void LandingController::setNotice(std::unique_ptr<Clock::Timer> notice)
{
    const bool wasShown = noticeShown();
    m_notice = std::move(notice);
    if (noticeShown() != wasShown)
        Q_EMIT noticeShownChanged();
}
