#include "DesktopLink.h"

#include "DesktopThread.h"

#include <QThread>
#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/** How long a slow screensaver may take to answer before it is left to notice that the connection is gone. */
constexpr auto patience = 5s;

QString nextConnection()
{
    static int last = 0;
    return u"desktop-%1"_s.arg(++last);
}

} // namespace

DesktopLink::DesktopLink(Terms terms) : m_terms(std::move(terms)), m_connection(nextConnection())
{
    QThread& thread = DesktopThread::get();
    moveToThread(&thread);
    connect(&thread, &QThread::finished, this, &QObject::deleteLater);
    QMetaObject::invokeMethod(this, &DesktopLink::open, Qt::QueuedConnection);
}

DesktopLink::~DesktopLink()
{
    m_mpris.reset();
    m_inhibitor.reset();
    QDBusConnection::disconnectFromBus(m_connection);
}

void DesktopLink::setState(const MprisState& state, bool inhibits)
{
    QMetaObject::invokeMethod(
        this, [this, state, inhibits] { takeState(state, inhibits); }, Qt::QueuedConnection);
}

void DesktopLink::tellSeeked(qint64 microseconds)
{
    QMetaObject::invokeMethod(
        this,
        [this, microseconds] {
            if (m_mpris)
                Q_EMIT m_mpris->seeked(microseconds);
        },
        Qt::QueuedConnection);
}

void DesktopLink::close()
{
    m_closing = true;
    QMetaObject::invokeMethod(this, &DesktopLink::leave, Qt::QueuedConnection);
}

void DesktopLink::open()
{
    // While an earlier link was waiting for the bus, this one's player may have come and gone.
    if (m_closing)
        return;
    const auto bus = QDBusConnection::connectToBus(m_terms.busAddress, m_connection);
    if (!bus.isConnected() || m_closing)
        return;
    m_inhibitor = std::make_unique<ScreenSaverInhibitor>(bus, m_terms.application.name, m_terms.reason);
    if (!m_terms.isDrivable)
        return;
    m_mpris = std::make_unique<MprisPlayer>(bus, m_terms.application, [this] { return m_position.load(); });
    connect(m_mpris.get(), &MprisPlayer::playRequested, this, &DesktopLink::playRequested);
    connect(m_mpris.get(), &MprisPlayer::pauseRequested, this, &DesktopLink::pauseRequested);
    connect(m_mpris.get(), &MprisPlayer::playPauseRequested, this, &DesktopLink::playPauseRequested);
    connect(m_mpris.get(), &MprisPlayer::stopRequested, this, &DesktopLink::stopRequested);
    connect(m_mpris.get(), &MprisPlayer::seekRequested, this, &DesktopLink::seekRequested);
    connect(m_mpris.get(), &MprisPlayer::positionRequested, this, &DesktopLink::positionRequested);
}

void DesktopLink::takeState(const MprisState& state, bool inhibits)
{
    if (!m_inhibitor)
        return;
    if (m_mpris)
        m_mpris->setState(state);
    if (inhibits)
        m_inhibitor->inhibit();
    else
        m_inhibitor->allow();
}

void DesktopLink::leave()
{
    m_mpris.reset();
    if (m_inhibitor)
        m_inhibitor->allow();
    if (!m_inhibitor || m_inhibitor->isSettled()) {
        deleteLater();
        return;
    }
    connect(m_inhibitor.get(), &ScreenSaverInhibitor::settled, this, &QObject::deleteLater);
    QTimer::singleShot(patience, this, &QObject::deleteLater);
}
