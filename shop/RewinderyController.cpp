#include "RewinderyController.h"

#include "RewinderyTexts.h"
#include "Text.h"

namespace quillmere {

RewinderyController::RewinderyController(QObject* parent) : QObject(parent)
{
    connect(&m_markets, &MarketList::picked, this, [this](const QString& slug) { m_store->setMarket(slug); });
}

void RewinderyController::setStore(Store* store)
{
    if (m_store == store)
        return;
    m_store = store;
    connect(store, &Store::shelvesChanged, this, &RewinderyController::updateShelves);
    connect(store, &Store::statusChanged, this, &RewinderyController::updateMarkets);
    connect(store, &Store::marketChanged, this, &RewinderyController::updateMarkets);
    connect(store, &Store::tapesChanged, this, &RewinderyController::stockLineChanged);
    connect(store, &Store::isLoadingChanged, this, &RewinderyController::isLoadingChanged);
    connect(store, &Store::lastErrorChanged, this, &RewinderyController::messageChanged);
    updateMarkets();
    updateShelves();
    Q_EMIT storeChanged();
    Q_EMIT isLoadingChanged();
    Q_EMIT messageChanged();
}

void RewinderyController::setSearching(bool searching)
{
    if (searching == m_searching)
        return;
    m_searching = searching;
    Q_EMIT searchingChanged();
}

QString RewinderyController::message() const
{
    return m_store ? shortenedText(RewinderyTexts::message(m_store->lastError())) : QString();
}

QString RewinderyController::stockLine() const
{
    return m_store ? RewinderyTexts::stockLine(m_store->stockCount()) : QString();
}

void RewinderyController::retry()
{
    m_store->refresh();
}

void RewinderyController::disappear()
{
    if (!showsShelves() && !m_store->lastError())
        m_store->setMarket({});
}

void RewinderyController::updateShelves()
{
    const bool isSameMarket = m_store->shelvesMarket() == m_shelvesMarket;
    m_shelvesMarket = m_store->shelvesMarket();
    m_shelves.setShelves(m_store->shelves(), isSameMarket ? ShelfList::Market::Same : ShelfList::Market::Another);
    Q_EMIT shelvesChanged();
}

void RewinderyController::updateMarkets()
{
    m_markets.setMarkets(m_store->status().rewindery, m_store->market());
    Q_EMIT stockLineChanged();
}

} // namespace quillmere
