#include "ScreenSaverInhibitor.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr auto service = "org.freedesktop.ScreenSaver"_L1;

/** Possible object paths: the specified one, and the one that older services use. */
constexpr std::array paths{"/org/freedesktop/ScreenSaver"_L1, "/ScreenSaver"_L1};

/** Even a late answer is needed: it contains the cookie that ends the inhibition. */
constexpr int noTimeout = std::numeric_limits<int>::max();

QDBusMessage screenSaverCall(const QString& owner, int path, const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(owner, paths.at(size_t(path)), service, method);
    call.setArguments(arguments);
    return call;
}

bool isUnknownTarget(const QDBusError& error)
{
    return error.type() == QDBusError::UnknownObject || error.type() == QDBusError::UnknownInterface ||
           error.type() == QDBusError::UnknownMethod;
}

} // namespace

ScreenSaverInhibitor::ScreenSaverInhibitor(QDBusConnection bus, QString application, QString reason, QObject* parent)
    : QObject(parent), m_bus(std::move(bus)), m_application(std::move(application)), m_reason(std::move(reason)),
      m_watcher(service, m_bus)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& before, const QString& now) { onOwnerChanged(before, now); });
}

ScreenSaverInhibitor::~ScreenSaverInhibitor()
{
    allow();
}

void ScreenSaverInhibitor::inhibit()
{
    m_isWanted = true;
    update();
}

void ScreenSaverInhibitor::allow()
{
    m_isWanted = false;
    update();
}

void ScreenSaverInhibitor::onOwnerChanged(const QString& before, const QString& now)
{
    if (m_serviceOwner == before)
        m_cookie.reset();
    m_ownerChanged = true;
    if (!now.isEmpty())
        update();
}

void ScreenSaverInhibitor::update()
{
    // On a closed connection, calls do not even return an error.
    if (m_isRequesting || !m_bus.isConnected())
        return;
    if (m_isWanted && !m_cookie)
        requestInhibition();
    else if (!m_isWanted && m_cookie)
        uninhibit(m_serviceOwner, *std::exchange(m_cookie, std::nullopt));
}

// First asks for the service's unique name. UnInhibit must go to the same owner, because only it knows the cookie, and
// since Qt 6.8 the sender of a reply is not available.
void ScreenSaverInhibitor::requestInhibition()
{
    m_isRequesting = true;
    m_ownerChanged = false;
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                       u"org.freedesktop.DBus"_s, u"GetNameOwner"_s);
    call.setArguments({QString(service)});
    watch(m_bus.asyncCall(call), [this](const QDBusPendingCall& answer) { onOwnerKnown(answer); });
}

void ScreenSaverInhibitor::onOwnerKnown(const QDBusPendingReply<QString>& owner)
{
    if (owner.isError()) {
        m_isRequesting = false;
        if (m_ownerChanged)
            update();
        return;
    }
    m_serviceOwner = owner.value();
    const auto call = screenSaverCall(m_serviceOwner, m_path, u"Inhibit"_s, {m_application, m_reason});
    watch(m_bus.asyncCall(call, noTimeout), [this](const QDBusPendingCall& answer) { onInhibitAnswered(answer); });
}

void ScreenSaverInhibitor::onInhibitAnswered(const QDBusPendingReply<quint32>& answer)
{
    m_isRequesting = false;
    if (!answer.isError()) {
        m_cookie = answer.value();
        update();
        return;
    }
    const bool triesNext = isUnknownTarget(answer.error()) && size_t(m_path) + 1 < paths.size();
    m_path = triesNext ? m_path + 1 : 0;
    // A service that refuses is not asked again. If the owner has changed in the meantime, the new one is asked.
    if (triesNext || m_ownerChanged)
        update();
}

void ScreenSaverInhibitor::uninhibit(const QString& serviceOwner, quint32 cookie)
{
    const auto call = screenSaverCall(serviceOwner, m_path, u"UnInhibit"_s, {QVariant::fromValue(cookie)});
    watch(m_bus.asyncCall(call, noTimeout), {});
}

void ScreenSaverInhibitor::watch(const QDBusPendingCall& call, std::function<void(const QDBusPendingCall&)> onAnswer)
{
    ++m_pendingCalls;
    auto* const watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, onAnswer = std::move(onAnswer)] {
        watcher->deleteLater();
        --m_pendingCalls;
        if (onAnswer)
            onAnswer(*watcher);
        if (m_pendingCalls == 0)
            Q_EMIT becameIdle();
    });
}

} // namespace quillmere
