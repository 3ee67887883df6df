#pragma once

#include <QDBusConnection>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>
#include <optional>

namespace quillmere {

/**
 * Prevents the screensaver and screen blanking through the service `org.freedesktop.ScreenSaver` on the bus. The
 * service may be missing, start late, be slow or restart. No call blocks. Errors are not reported, because the viewer
 * could not do anything about them. Any one thread only. Destroying the object ends the inhibition.
 */
class ScreenSaverInhibitor : public QObject
{
    Q_OBJECT

public:
    /** Desktops show the application's name and the reason in their list of inhibitors. */
    ScreenSaverInhibitor(QDBusConnection bus, QString application, QString reason, QObject* parent = nullptr);
    ~ScreenSaverInhibitor() override;

    void inhibit();
    void allow();

    /** Whether no D-Bus call is pending. */
    bool isIdle() const { return m_pendingCalls == 0; }

Q_SIGNALS:
    void becameIdle();

private:
    void onOwnerChanged(const QString& before, const QString& now);
    void update();
    void requestInhibition();
    void onOwnerKnown(const QDBusPendingReply<QString>& owner);
    void onInhibitAnswered(const QDBusPendingReply<quint32>& answer);
    void uninhibit(const QString& serviceOwner, quint32 cookie);
    void watch(const QDBusPendingCall& call, std::function<void(const QDBusPendingCall&)> onAnswer);

    QDBusConnection m_bus;
    QString m_application;
    QString m_reason;
    QDBusServiceWatcher m_watcher;
    bool m_isWanted = false;
    bool m_isRequesting = false;     ///< a request to inhibit is pending
    bool m_ownerChanged = false;     ///< the service's owner has changed since that request
    int m_path = 0;                  ///< index into the possible object paths
    std::optional<quint32> m_cookie; ///< the service's id of the current inhibition
    QString m_serviceOwner;          ///< unique bus name of the service that was asked
    int m_pendingCalls = 0;
};

} // namespace quillmere
