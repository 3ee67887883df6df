#pragma once

#include "Clock.h"
#include "Store.h"
#include "Timepiece.h"

#include <QColor>
#include <QPointer>
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

    /** Whether a door's screen covers this one, or would if it existed. */
    Q_PROPERTY(bool showNews READ showNews WRITE setShowNews NOTIFY showNewsChanged FINAL)
    Q_PROPERTY(bool showStore READ showStore WRITE setShowStore NOTIFY showStoreChanged FINAL)

    Q_PROPERTY(QString hubHost READ hubHost CONSTANT FINAL)
    Q_PROPERTY(bool towerLive READ towerLive NOTIFY statusChanged FINAL)
    Q_PROPERTY(QString newsSubtitle READ newsSubtitle NOTIFY statusChanged FINAL)
    Q_PROPERTY(QString storeSubtitle READ storeSubtitle NOTIFY statusChanged FINAL)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusLineChanged FINAL)
    Q_PROPERTY(int statusSize READ statusSize NOTIFY statusLineChanged FINAL)
    Q_PROPERTY(QColor statusColor READ statusColor NOTIFY statusLineChanged FINAL)

    /** Whether back was pressed once, and pressed again now leaves. */
    Q_PROPERTY(bool noticeShown READ noticeShown NOTIFY noticeShownChanged FINAL)
    Q_PROPERTY(QString notice READ notice CONSTANT FINAL)

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

    QString hubHost() const;
    bool towerLive() const;
    QString newsSubtitle() const;
    QString storeSubtitle() const;
    QString statusText() const;
    int statusSize() const;
    QColor statusColor() const;
    bool noticeShown() const { return m_notice != nullptr; }
    QString notice() const;

    /** The screen has come into view: the store refreshes, a task of the store's that ends with the store. */
    Q_INVOKABLE void appear();

    /** Takes a remote's key (a Qt::Key); answers whether it meant something here. */
    Q_INVOKABLE bool press(int key);

Q_SIGNALS:
    void storeChanged();
    void timepieceChanged();
    void showNewsChanged();
    void showStoreChanged();
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
    std::unique_ptr<Clock::Timer> m_notice; ///< runs while the notice is shown
};
