#include "ScreenSaverInhibitor.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr auto service = "org.freedesktop.ScreenSaver"_L1;

/** The one that is written down, and the one of old. */
constexpr std::array paths{"/org/freedesktop/ScreenSaver"_L1, "/ScreenSaver"_L1};

/** However late the answer, it is wanted: it carries what ends the inhibition. */
constexpr int withoutLimit = std::numeric_limits<int>::max();

QDBusMessage screenSaverCall(const QString& owner, int path, const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(owner, paths.at(size_t(path)), service, method);
    call.setArguments(arguments);
    return call;
}

bool isElsewhere(const QDBusError& error)
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
            [this](const QString&, const QString& before, const QString& now) { ownerChanged(before, now); });
}

ScreenSaverInhibitor::~ScreenSaverInhibitor()
{
    allow();
}

void ScreenSaverInhibitor::inhibit()
{
    m_wanted = true;
    update();
}

void ScreenSaverInhibitor::allow()
{
    m_wanted = false;
    update();
}

void ScreenSaverInhibitor::ownerChanged(const QString& before, const QString& now)
{
    if (m_holder == before)
        m_cookie.reset();
    m_ownerChanged = true;
    if (!now.isEmpty())
        update();
}

void ScreenSaverInhibitor::update()
{
    // On a bus that has gone, calls are not even answered by an error.
    if (m_asking || !m_bus.isConnected())
        return;
    if (m_wanted && !m_cookie)
        ask();
    else if (!m_wanted && m_cookie)
        giveBack(m_holder, *std::exchange(m_cookie, std::nullopt));
}

// The owner is asked by its unique name: only it knows the cookie, and Qt 6.8 no longer says who sent a reply.
void ScreenSaverInhibitor::ask()
{
    m_asking = true;
    m_ownerChanged = false;
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                       u"org.freedesktop.DBus"_s, u"GetNameOwner"_s);
    call.setArguments({QString(service)});
    whenAnswered(m_bus.asyncCall(call), [this](const QDBusPendingCall& answer) { onOwnerKnown(answer); });
}

void ScreenSaverInhibitor::onOwnerKnown(const QDBusPendingReply<QString>& owner)
{
    if (owner.isError()) {
        m_asking = false;
        if (m_ownerChanged)
            update();
        return;
    }
    m_holder = owner.value();
    const auto call = screenSaverCall(m_holder, m_path, u"Inhibit"_s, {m_application, m_reason});
    whenAnswered(m_bus.asyncCall(call, withoutLimit), [this](const QDBusPendingCall& answer) { answered(answer); });
}

void ScreenSaverInhibitor::answered(const QDBusPendingReply<quint32>& answer)
{
    m_asking = false;
    if (!answer.isError()) {
        m_cookie = answer.value();
        update();
        return;
    }
    const bool triesNext = isElsewhere(answer.error()) && size_t(m_path) + 1 < paths.size();
    m_path = triesNext ? m_path + 1 : 0;
    // Refused by whoever it is, it would be refused again; asked by nobody, whoever comes is asked then.
    if (triesNext || m_ownerChanged)
        update();
}

void ScreenSaverInhibitor::giveBack(const QString& holder, quint32 cookie)
{
    const auto call = screenSaverCall(holder, m_path, u"UnInhibit"_s, {QVariant::fromValue(cookie)});
    whenAnswered(m_bus.asyncCall(call, withoutLimit), {});
}

void ScreenSaverInhibitor::whenAnswered(const QDBusPendingCall& call,
                                        std::function<void(const QDBusPendingCall&)> answered)
{
    ++m_calls;
    auto* const watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, answered = std::move(answered)] {
        watcher->deleteLater();
        --m_calls;
        if (answered)
            answered(*watcher);
        if (m_calls == 0)
            Q_EMIT settled();
    });
}
