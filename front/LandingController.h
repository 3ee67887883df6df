#pragma once

#include "Clock.h"
#include "Store.h"

#include <QColor>
#include <QPointer>
#include <QQmlComponent>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * State and texts of the front screen. Screen thread only. The screen creates and owns it. Store and clock are set
 * once, at creation, and outlive it.
 */
class LandingController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    Q_PROPERTY(quillmere::Clock* clock MEMBER m_clock NOTIFY clockChanged REQUIRED FINAL)

    /** Whether a door is open. Its screen, if there is one, covers the front screen. */
    Q_PROPERTY(bool showNews READ showNews WRITE setShowNews NOTIFY showNewsChanged FINAL)
    Q_PROPERTY(bool showStore READ showStore WRITE setShowStore NOTIFY showStoreChanged FINAL)

    /** Screens behind the doors; null if none. Not owned. */
    Q_PROPERTY(QQmlComponent* newsScreen READ newsScreen WRITE setNewsScreen NOTIFY coverChanged FINAL)
    Q_PROPERTY(QQmlComponent* shopScreen READ shopScreen WRITE setShopScreen NOTIFY coverChanged FINAL)
    /** Screen that currently covers the front screen; null if none. */
    Q_PROPERTY(QQmlComponent* cover READ cover NOTIFY coverChanged FINAL)

    Q_PROPERTY(QString hubHost READ hubHost CONSTANT FINAL)
    Q_PROPERTY(bool towerLive READ towerLive NOTIFY statusChanged FINAL)
    Q_PROPERTY(QString newsSubtitle READ newsSubtitle NOTIFY statusChanged FINAL)
    Q_PROPERTY(QString storeSubtitle READ storeSubtitle NOTIFY statusChanged FINAL)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusLineChanged FINAL)
    Q_PROPERTY(int statusSize READ statusSize NOTIFY statusLineChanged FINAL)
    Q_PROPERTY(QColor statusColor READ statusColor NOTIFY statusLineChanged FINAL)

    /** Whether the quit notice is shown: back was pressed once, and a second press quits the program. */
    Q_PROPERTY(bool noticeShown READ noticeShown NOTIFY noticeShownChanged FINAL)

public:
    using QObject::QObject;

    Store* store() const { return m_store; }
    void setStore(Store* store);

    bool showNews() const { return m_showNews; }
    void setShowNews(bool showNews);
    bool showStore() const { return m_showStore; }
    void setShowStore(bool showStore);

    QQmlComponent* newsScreen() const { return m_newsScreen; }
    void setNewsScreen(QQmlComponent* screen);
    QQmlComponent* shopScreen() const { return m_shopScreen; }
    void setShopScreen(QQmlComponent* screen);
    QQmlComponent* cover() const;

    QString hubHost() const;
    bool towerLive() const;
    QString newsSubtitle() const;
    QString storeSubtitle() const;
    QString statusText() const;
    int statusSize() const;
    QColor statusColor() const;
    bool noticeShown() const { return m_noticeTimer != nullptr; }

    /** Called when the screen comes into view. Starts a refresh of the store, which is a task of the store itself. */
    Q_INVOKABLE void appear();

    /** Handles a key of the remote (a Qt::Key). Returns whether it was handled; always false while a cover is shown. */
    Q_INVOKABLE bool press(int key);

    /** Closes the screen that covers the front screen. */
    Q_INVOKABLE void dismissCover();

Q_SIGNALS:
    void storeChanged();
    void clockChanged();
    void showNewsChanged();
    void showStoreChanged();
    void coverChanged();
    void statusChanged();
    void statusLineChanged();
    void noticeShownChanged();

    /** The viewer quits the program. */
    void quitRequested();

private:
    void onBack();
    void setNoticeTimer(std::unique_ptr<Clock::Timer> notice);

    QPointer<Store> m_store;
    QPointer<Clock> m_clock;
    bool m_showNews = false;
    bool m_showStore = false;
    QPointer<QQmlComponent> m_newsScreen;
    QPointer<QQmlComponent> m_shopScreen;
    std::unique_ptr<Clock::Timer> m_noticeTimer; ///< exists while the quit notice is shown
};

} // namespace quillmere
