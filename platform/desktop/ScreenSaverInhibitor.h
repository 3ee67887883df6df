#pragma once

#include <QDBusConnection>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QObject>

#include <functional>
#include <optional>

/**
 * Keeps the screensaver and the blanking of the screen away, through whatever offers `org.freedesktop.ScreenSaver` on
 * the bus: there or not, late, slow or started again. Nothing here waits, and no failure is told, as there is nothing
 * that a viewer could do about it. Any one thread; destroying it ends the inhibition.
 */
class ScreenSaverInhibitor : public QObject
{
    Q_OBJECT

public:
    /** Desktops show the application's name and the reason in a list of what inhibits. */
    ScreenSaverInhibitor(QDBusConnection bus, QString application, QString reason, QObject* parent = nullptr);
    ~ScreenSaverInhibitor() override;

    void inhibit();
    void allow();

    /** Whether every call so far has been answered. */
    bool isSettled() const { return m_calls == 0; }

Q_SIGNALS:
    void settled();

private:
    void ownerChanged(const QString& before, const QString& now);
    void update();
    void ask();
    void onOwnerKnown(const QDBusPendingReply<QString>& owner);
    void answered(const QDBusPendingReply<quint32>& answer);
    void giveBack(const QString& holder, quint32 cookie);
    void whenAnswered(const QDBusPendingCall& call, std::function<void(const QDBusPendingCall&)> answered);

    QDBusConnection m_bus;
    QString m_application;
    QString m_reason;
    QDBusServiceWatcher m_watcher;
    bool m_wanted = false;
    bool m_asking = false;           ///< an Inhibit is on its way
    bool m_ownerChanged = false;     ///< since it was sent
    int m_path = 0;                  ///< which of the object's customary paths to ask at
    std::optional<quint32> m_cookie; ///< what the service gave for the inhibition
    QString m_holder;                ///< the service that was asked, by its unique name
    int m_calls = 0;                 ///< not answered yet
};
