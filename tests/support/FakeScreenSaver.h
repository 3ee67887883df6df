#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QList>
#include <QObject>

namespace quillmere {

/**
 * A fake screensaver service that records its inhibitors. It replies at once, or when the test says so. It registers
 * its service name when created and unregisters it when destroyed. Single-threaded.
 */
class FakeScreenSaver : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

public:
    struct Inhibition
    {
        quint32 cookie;
        QString application;
        QString reason;
    };

    explicit FakeScreenSaver(QDBusConnection bus, const QString& path = QStringLiteral("/org/freedesktop/ScreenSaver"));
    ~FakeScreenSaver() override;

    const QList<Inhibition>& inhibitions() const { return m_inhibitions; }
    int inhibitCalls() const { return m_inhibitCalls; }

    void setReplyDelayed(bool delayed) { m_isReplyDelayed = delayed; }
    void setRefusing(bool refusing) { m_refusing = refusing; }
    void sendDelayedReplies();

public Q_SLOTS:
    Q_SCRIPTABLE quint32 Inhibit(const QString& application, const QString& reason);
    Q_SCRIPTABLE void UnInhibit(quint32 cookie);

private:
    QDBusConnection m_bus;
    QString m_path;
    QList<Inhibition> m_inhibitions;
    QList<QDBusMessage> m_delayedReplies;
    quint32 m_lastCookie;
    int m_inhibitCalls = 0;
    bool m_isReplyDelayed = false;
    bool m_refusing = false;
};

} // namespace quillmere
