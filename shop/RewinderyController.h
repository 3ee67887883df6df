#pragma once

#include "MarketList.h"
#include "ShelfList.h"
#include "Store.h"
#include "TapePath.h"

/**
 * The shop screen's state and texts. It loads nothing of its own when it is shown: it shows what the store holds.
 * Screen thread only; the screen makes and owns it; the store, set once when it is made, outlives it.
 */
class RewinderyController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    /** Whether the tape search covers the screen. */
    Q_PROPERTY(bool searching READ isSearching WRITE setSearching NOTIFY searchingChanged FINAL)
    /** The tapes opened from the shelves. */
    Q_PROPERTY(TapePath* path READ path CONSTANT FINAL)

    Q_PROPERTY(ShelfList* shelves READ shelves CONSTANT FINAL)
    Q_PROPERTY(MarketList* markets READ markets CONSTANT FINAL)
    /** Whether there are shelves to show; the state panel stands in for them. */
    Q_PROPERTY(bool showsShelves READ showsShelves NOTIFY shelvesChanged FINAL)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged FINAL)
    Q_PROPERTY(QString message READ message NOTIFY messageChanged FINAL)
    Q_PROPERTY(QString stockLine READ stockLine NOTIFY stockLineChanged FINAL)

public:
    explicit RewinderyController(QObject* parent = nullptr);

    Store* store() const { return m_store; }
    void setStore(Store* store);
    bool isSearching() const { return m_searching; }
    void setSearching(bool searching);
    TapePath* path() { return &m_path; }

    ShelfList* shelves() { return &m_shelves; }
    MarketList* markets() { return &m_markets; }
    bool showsShelves() const { return m_store && !m_store->shelves().isEmpty(); }
    bool isLoading() const { return m_store && m_store->isLoading(); }
    QString message() const;
    QString stockLine() const;

    /** Starts a load, a task of the store's that ends with the store; each call starts one more. */
    Q_INVOKABLE void retry();

    /**
     * The screen goes away: a market without tapes is not kept, as no picker is there to leave it with. One that could not
     * be loaded is kept, since its tapes are still unknown.
     */
    Q_INVOKABLE void leave();

Q_SIGNALS:
    void storeChanged();
    void searchingChanged();
    void shelvesChanged();
    void isLoadingChanged();
    void messageChanged();
    void stockLineChanged();

private:
    void showShelves();
    void showMarkets();

    Store* m_store = nullptr; ///< not there before it is set: bindings may look then, nothing acts
    bool m_searching = false;
    TapePath m_path;
    ShelfList m_shelves;
    QString m_shelvesMarket; ///< that the shown shelves belong to
    MarketList m_markets;
};
