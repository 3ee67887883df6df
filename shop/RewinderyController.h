#pragma once

#include "MarketList.h"
#include "ShelfList.h"
#include "Store.h"
#include "TapePath.h"

namespace quillmere {

/**
 * State and texts of the shop's screen. Shows the data of the store; starts no load when the screen is shown.
 * Screen thread only; the screen creates and owns it; the store is set once and must outlive it.
 */
class RewinderyController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    /** Whether the tape search covers the screen. */
    Q_PROPERTY(bool searching READ isSearching WRITE setSearching NOTIFY searchingChanged FINAL)
    /** The tapes opened from the shelves. */
    Q_PROPERTY(quillmere::TapePath* path READ path CONSTANT FINAL)

    Q_PROPERTY(quillmere::ShelfList* shelves READ shelves CONSTANT FINAL)
    Q_PROPERTY(quillmere::MarketList* markets READ markets CONSTANT FINAL)
    /** Whether there are shelves to show; else the state panel is shown. */
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

    /** Starts a load, which is a task of the store and ends with it. Every call starts another one. */
    Q_INVOKABLE void retry();

    /**
     * The screen was hidden. A market without tapes is deselected, because the viewer cannot: its screen has no picker.
     * A market that failed to load stays selected, because its tapes are unknown.
     */
    Q_INVOKABLE void disappear();

Q_SIGNALS:
    void storeChanged();
    void searchingChanged();
    void shelvesChanged();
    void isLoadingChanged();
    void messageChanged();
    void stockLineChanged();

private:
    void updateShelves();
    void updateMarkets();

    Store* m_store = nullptr; ///< null until set; bindings may read properties before, but no invokable is called
    bool m_searching = false;
    TapePath m_path;
    ShelfList m_shelves;
    QString m_shelvesMarket; ///< the market of the shown shelves
    MarketList m_markets;
};

} // namespace quillmere
