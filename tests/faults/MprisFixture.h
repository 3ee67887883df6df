#pragma once

#include "DesktopPresence.h"

#include "PrivateBus.h"
#include "ScriptedVideoPlayer.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QProcess>
#include <QTest>

namespace quillmere {

using namespace Qt::StringLiterals;

/** A scripted player announced on a private D-Bus bus, and functions to read and control it like another program. */
struct MprisFixture
{
    static constexpr auto service = "org.mpris.MediaPlayer2.quillmere_tv"_L1;
    static constexpr auto path = "/org/mpris/MediaPlayer2"_L1;
    static constexpr auto playerInterface = "org.mpris.MediaPlayer2.Player"_L1;

    explicit MprisFixture(const QList<MetadataItem>& texts = {}) { start(texts); }

    /** Plays an item of known duration and announces the player. */
    void start(const QList<MetadataItem>& texts = {})
    {
        const auto item = std::make_shared<PlayerItem>(QUrl(u"https://hub.invalid/tape.m3u8"_s));
        item->setExternalMetadata(texts);
        player.setItem(item);
        player.setDuration(3600);
        player.setSeekable(true);
        player.play();
        player.showPicture();
        presence = std::make_unique<DesktopPresence>(player, u"A tape plays"_s, daemon.address());
        QTRY_COMPARE(property(playerInterface, u"PlaybackStatus"_s).toString(), u"Playing"_s);
    }

    /** Output of `playerctl`; if it fails, "failed: " and its error output. */
    QString playerctl(const QStringList& arguments)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, daemon.address());
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(u"playerctl"_s, arguments);
        process.waitForFinished();
        if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
            return u"failed: "_s + QString::fromUtf8(process.readAllStandardError());
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }

    QVariant property(const QString& interface, const QString& name)
    {
        auto call = QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
        call << interface << name;
        return QDBusReply<QVariant>(connection.call(call)).value();
    }

    QVariantMap metadata() { return qdbus_cast<QVariantMap>(property(playerInterface, u"Metadata"_s)); }

    void call(const QString& method, const QVariantList& arguments = {})
    {
        auto call = QDBusMessage::createMethodCall(service, path, playerInterface, method);
        call.setArguments(arguments);
        QCOMPARE(connection.call(call).type(), QDBusMessage::ReplyMessage);
    }

    bool hasName(const QString& name) const { return connection.interface()->isServiceRegistered(name); }
    bool isRegistered() const { return hasName(service); }

    PrivateBus daemon;
    QDBusConnection connection = daemon.connect();
    ScriptedVideoPlayer player;
    std::unique_ptr<DesktopPresence> presence;
};

} // namespace quillmere
