#pragma once

#include "Clock.h"
#include "Store.h"
#include "Timepiece.h"

#include <QColor>
#include <QPointer>
#include <QQmlComponent>
#include <QtQml/qqmlregistration.h>

/**
 * The front screen's state and texts. Screen thread only; the screen makes and owns it; store and timepiece, set once
 * when it is made, outlive it.
 */
class LandingController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    Q_PROPERTY(Timepiece* timepiece READ timepiece WRITE setTimepiece NOTIFY timepieceChanged REQUIRED FINAL)

    /** Whether a door was selected: its screen covers this one, if there is any. */
    Q_PROPERTY(bool showNews READ showNews WRITE setShowNews NOTIFY showNewsChanged FINAL)
    Q_PROPERTY(bool showStore READ showStore WRITE setShowStore NOTIFY showStoreChanged FINAL)

    /** The screens behind the doors, null for none; their maker outlives this. */
    Q_PROPERTY(QQmlComponent* newsScreen READ newsScreen WRITE setNewsScreen NOTIFY coverChanged FINAL)
    Q_PROPERTY(QQmlComponent* shopScreen READ shopScreen WRITE setShopScreen NOTIFY coverChanged FINAL)
    /** The one that covers this screen, null while none does. */
    Q_PROPERTY(QQmlComponent* cover READ cover NOTIFY coverChanged FINAL)

    Q_PROPERTY(QString hubHost READ hubHost CONSTANT FINAL)
    Q_PROPERTY(bool towerLive READ towerLive NOTIFY statusChanged FINAL)
    Q_PROPERTY(QString newsSubtitle READ newsSubtitle NOTIFY statusChanged FINAL)
    Q_PROPERTY(QString storeSubtitle READ storeSubtitle NOTIFY statusChanged FINAL)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusLineChanged FINAL)
    Q_PROPERTY(int statusSize READ statusSize NOTIFY statusLineChanged FINAL)
    Q_PROPERTY(QColor statusColor READ statusColor NOTIFY statusLineChanged FINAL)

    /** Whether back was pressed once, and pressed again now leaves. */
    Q_PROPERTY(bool noticeShown READ noticeShown NOTIFY noticeShownChanged FINAL)

public:
    using QObject::QObject;

    Store* store() const { return m_store; }
    void setStore(Store* store);
    Timepiece* timepiece() const { return m_timepiece; }
    void setTimepiece(Timepiece* timepiece);

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
    bool noticeShown() const { return m_notice != nullptr; }

    /** The screen has come into view: the store refreshes, a task of the store's that ends with the store. */
    Q_INVOKABLE void appear();

    /** Takes a remote's key (a Qt::Key); answers whether it meant something here; under a cover none does. */
    Q_INVOKABLE bool press(int key);

    /** The viewer leaves the screen that covers this one. */
    Q_INVOKABLE void dismissCover();

Q_SIGNALS:
    void storeChanged();
    void timepieceChanged();
    void showNewsChanged();
    void showStoreChanged();
    void coverChanged();
    void statusChanged();
    void statusLineChanged();
    void noticeShownChanged();

    /** The viewer switches the set off. */
    void leave();

private:
    void back();
    void setNotice(std::unique_ptr<Clock::Timer> notice);

    QPointer<Store> m_store;
    QPointer<Timepiece> m_timepiece;
    bool m_showNews = false;
    bool m_showStore = false;
    QPointer<QQmlComponent> m_newsScreen;
    QPointer<QQmlComponent> m_shopScreen;
    std::unique_ptr<Clock::Timer> m_notice; ///< runs while the notice is shown
};
