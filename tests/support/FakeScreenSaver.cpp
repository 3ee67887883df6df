#include "FakeScreenSaver.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr auto service = "org.freedesktop.ScreenSaver"_L1;

} // namespace

FakeScreenSaver::FakeScreenSaver(QDBusConnection bus, const QString& path)
    : m_bus(std::move(bus)), m_path(path), m_lastCookie(0)
{
    m_bus.registerObject(m_path, this, QDBusConnection::ExportScriptableSlots);
    m_bus.registerService(service);
}

FakeScreenSaver::~FakeScreenSaver()
{
    m_bus.unregisterService(service);
    m_bus.unregisterObject(m_path);
}

quint32 FakeScreenSaver::Inhibit(const QString& application, const QString& reason)
{
    ++m_inhibitCalls;
    if (m_refusing) {
        sendErrorReply(QDBusError::AccessDenied);
        return 0;
    }
    m_inhibitions.append({++m_lastCookie, application, reason});
    if (m_isReplyDelayed) {
        setDelayedReply(true);
        m_delayedReplies.append(message().createReply(m_lastCookie));
    }
    return m_lastCookie;
}

void FakeScreenSaver::UnInhibit(quint32 cookie)
{
    m_inhibitions.removeIf([cookie](const Inhibition& inhibition) { return inhibition.cookie == cookie; });
}

void FakeScreenSaver::sendDelayedReplies()
{
    for (const QDBusMessage& answer : std::exchange(m_delayedReplies, {}))
        m_bus.send(answer);
}

} // namespace quillmere
