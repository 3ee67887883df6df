#include "DesktopLink.h"

#include "DesktopThread.h"

#include <QThread>
#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/** How long closing waits for a slow screensaver service. After that, the service sees the connection close. */
constexpr auto closeTimeout = 5s;

QString nextConnectionName()
{
    static int last = 0;
    return u"desktop-%1"_s.arg(++last);
}

} // namespace

DesktopLink::DesktopLink(Options options) : m_options(std::move(options)), m_connection(nextConnectionName())
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
        this, [this, state, inhibits] { applyState(state, inhibits); }, Qt::QueuedConnection);
}

void DesktopLink::notifySeeked(qint64 microseconds)
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
    m_isClosing = true;
    QMetaObject::invokeMethod(this, &DesktopLink::shutDown, Qt::QueuedConnection);
}

void DesktopLink::open()
{
    // While another link blocked this thread, this link may have been closed already.
    if (m_isClosing)
        return;
    const auto bus = QDBusConnection::connectToBus(m_options.busAddress, m_connection);
    if (!bus.isConnected() || m_isClosing)
        return;
    m_inhibitor = std::make_unique<ScreenSaverInhibitor>(bus, m_options.application.name, m_options.reason);
    if (!m_options.hasMprisPlayer)
        return;
    m_mpris = std::make_unique<MprisPlayer>(bus, m_options.application, [this] { return m_position.load(); });
    connect(m_mpris.get(), &MprisPlayer::playRequested, this, &DesktopLink::playRequested);
    connect(m_mpris.get(), &MprisPlayer::pauseRequested, this, &DesktopLink::pauseRequested);
    connect(m_mpris.get(), &MprisPlayer::playPauseRequested, this, &DesktopLink::playPauseRequested);
    connect(m_mpris.get(), &MprisPlayer::stopRequested, this, &DesktopLink::stopRequested);
    connect(m_mpris.get(), &MprisPlayer::seekRequested, this, &DesktopLink::seekRequested);
    connect(m_mpris.get(), &MprisPlayer::positionRequested, this, &DesktopLink::positionRequested);
}

void DesktopLink::applyState(const MprisState& state, bool inhibits)
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

void DesktopLink::shutDown()
{
    m_mpris.reset();
    if (m_inhibitor)
        m_inhibitor->allow();
    if (!m_inhibitor || m_inhibitor->isIdle()) {
        deleteLater();
        return;
    }
    connect(m_inhibitor.get(), &ScreenSaverInhibitor::becameIdle, this, &QObject::deleteLater);
    QTimer::singleShot(closeTimeout, this, &QObject::deleteLater);
}
