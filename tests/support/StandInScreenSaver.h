#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QList>
#include <QObject>

/**
 * A screensaver that writes down who inhibits it. It answers at once, or when the test says so; it takes its name when
 * made and gives it back with itself. One thread.
 */
class StandInScreenSaver : public QObject, protected QDBusContext
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

    explicit StandInScreenSaver(QDBusConnection bus,
                                const QString& path = QStringLiteral("/org/freedesktop/ScreenSaver"));
    ~StandInScreenSaver() override;

    const QList<Inhibition>& inhibitions() const { return m_inhibitions; }
    int asked() const { return m_asked; }

    void setLate(bool late) { m_late = late; }
    void setRefusing(bool refusing) { m_refusing = refusing; }
    void answerNow();

public Q_SLOTS:
    Q_SCRIPTABLE quint32 Inhibit(const QString& application, const QString& reason);
    Q_SCRIPTABLE void UnInhibit(quint32 cookie);

private:
    QDBusConnection m_bus;
    QString m_path;
    QList<Inhibition> m_inhibitions;
    QList<QDBusMessage> m_unanswered;
    quint32 m_lastCookie;
    int m_asked = 0;
    bool m_late = false;
    bool m_refusing = false;
};
