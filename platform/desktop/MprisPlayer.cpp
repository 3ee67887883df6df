#include "MprisPlayer.h"

#include "MprisPlayerInterface.h"
#include "MprisRootInterface.h"
#include "Text.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr auto objectPath = "/org/mpris/MediaPlayer2"_L1;
constexpr auto busName = "org.mpris.MediaPlayer2.quillmere_tv"_L1;

/** In UTF-16 units. Longer than any text that a client shows, and short enough for a D-Bus message. */
constexpr qsizetype longestText = 4000;

QDBusObjectPath nextTrackId()
{
    static std::atomic_int last = 0;
    return QDBusObjectPath(u"/tv/quillmere/tape/%1"_s.arg(++last));
}

void insertText(QVariantMap& metadata, const QString& key, const QString& text)
{
    if (!text.isEmpty())
        metadata.insert(key, truncatedText(text, longestText));
}

void insertList(QVariantMap& metadata, const QString& key, const QString& text)
{
    if (!text.isEmpty())
        metadata.insert(key, QStringList(truncatedText(text, longestText)));
}

} // namespace

MprisPlayer::MprisPlayer()
    : m_applicationName(QGuiApplication::applicationDisplayName()), m_desktopEntry(QGuiApplication::desktopFileName())
{}

MprisPlayer::~MprisPlayer()
{
    if (!m_serviceName.isEmpty())
        m_bus->unregisterService(m_serviceName);
    if (m_bus)
        m_bus->unregisterObject(objectPath);
}

void MprisPlayer::registerOn(const QDBusConnection& bus)
{
    m_bus = bus;
    m_trackId = nextTrackId();
    m_interface = new MprisPlayerInterface(this);
    new MprisRootInterface(this);
    m_bus->registerObject(objectPath, this);
    if (!registerName(busName))
        registerName(busName + u".instance%1"_s.arg(QGuiApplication::applicationPid()));
}

bool MprisPlayer::registerName(const QString& name)
{
    if (!m_bus->registerService(name))
        return false;
    m_serviceName = name;
    return true;
}

QVariantMap MprisPlayer::metadata() const
{
    QVariantMap metadata{{u"mpris:trackid"_s, QVariant::fromValue(m_trackId)}};
    if (m_state.length > 0)
        metadata.insert(u"mpris:length"_s, m_state.length);
    insertText(metadata, u"xesam:title"_s, m_state.title);
    insertText(metadata, u"xesam:album"_s, m_state.subtitle);
    insertList(metadata, u"xesam:artist"_s, m_state.publisher);
    insertList(metadata, u"xesam:comment"_s, m_state.description);
    return metadata;
}

void MprisPlayer::setState(MprisState state)
{
    const QVariantMap before = m_interface->notifiedProperties();
    m_state = std::move(state);
    QVariantMap changes;
    const QVariantMap now = m_interface->notifiedProperties();
    for (auto property = now.cbegin(); property != now.cend(); ++property) {
        if (before.value(property.key()) != property.value())
            changes.insert(property.key(), property.value());
    }
    if (changes.isEmpty())
        return;
    QDBusMessage signal =
        QDBusMessage::createSignal(objectPath, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    signal << u"org.mpris.MediaPlayer2.Player"_s << changes << QStringList();
    m_bus->send(signal);
}

void MprisPlayer::notifySeeked(qint64 microseconds)
{
    Q_EMIT m_interface->Seeked(microseconds);
}

} // namespace quillmere
