#include "StandInScreenSaver.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr auto service = "org.freedesktop.ScreenSaver"_L1;

} // namespace

StandInScreenSaver::StandInScreenSaver(QDBusConnection bus, const QString& path)
    : m_bus(std::move(bus)), m_path(path), m_lastCookie(0)
{
    m_bus.registerObject(m_path, this, QDBusConnection::ExportScriptableSlots);
    m_bus.registerService(service);
}

StandInScreenSaver::~StandInScreenSaver()
{
    m_bus.unregisterService(service);
    m_bus.unregisterObject(m_path);
}

quint32 StandInScreenSaver::Inhibit(const QString& application, const QString& reason)
{
    ++m_asked;
    if (m_refusing) {
        sendErrorReply(QDBusError::AccessDenied);
        return 0;
    }
    m_inhibitions.append({++m_lastCookie, application, reason});
    if (m_late) {
        setDelayedReply(true);
        m_unanswered.append(message().createReply(m_lastCookie));
    }
    return m_lastCookie;
}

void StandInScreenSaver::UnInhibit(quint32 cookie)
{
    m_inhibitions.removeIf([cookie](const Inhibition& inhibition) { return inhibition.cookie == cookie; });
}

void StandInScreenSaver::answerNow()
{
    for (const QDBusMessage& answer : std::exchange(m_unanswered, {}))
        m_bus.send(answer);
}
