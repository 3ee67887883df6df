#include "DesktopLink.h"

#include <QGuiApplication>
#include <QThread>
#include <QTimer>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

QThread* thread = nullptr;

void stopThread()
{
    thread->quit();
    // A bus that does not respond may block the thread for ever. In that case the thread is leaked.
    if (thread->wait(QDeadlineTimer(1s)))
        delete thread;
    thread = nullptr;
}

/** Created at the first use; ends with the application object. Screen thread only. */
QThread& desktopThread()
{
    if (thread == nullptr) {
        thread = new QThread;
        thread->setObjectName(u"desktop"_s);
        thread->start(QThread::LowPriority);
        qAddPostRoutine(&stopThread);
    }
    return *thread;
}

/** How long closing waits for a slow screensaver service. After that, the service sees the connection close. */
constexpr auto closeTimeout = 5s;

QString nextConnectionName()
{
    static int last = 0;
    return u"desktop-%1"_s.arg(++last);
}

} // namespace

DesktopLink::DesktopLink(QString busAddress, QString reason, std::unique_ptr<MprisPlayer> mpris)
    : m_busAddress(std::move(busAddress)), m_application(QGuiApplication::applicationDisplayName()),
      m_reason(std::move(reason)), m_connection(nextConnectionName()), m_mpris(std::move(mpris))
{
    // As a child it moves to the desktop thread together with this object.
    if (m_mpris)
        m_mpris->setParent(this);
    QThread& thread = desktopThread();
    moveToThread(&thread);
    connect(&thread, &QThread::finished, this, &QObject::deleteLater);
    post([this] { open(); });
}

DesktopLink::~DesktopLink()
{
    m_mpris.reset();
    m_inhibitor.reset();
    QDBusConnection::disconnectFromBus(m_connection);
}

void DesktopLink::setState(const MprisState& state, bool inhibits)
{
    post([this, state, inhibits] { applyState(state, inhibits); });
}

void DesktopLink::notifySeeked(qint64 microseconds)
{
    post([this, microseconds] {
        if (m_inhibitor && m_mpris)
            m_mpris->notifySeeked(microseconds);
    });
}

void DesktopLink::close()
{
    m_isClosing = true;
    post([this] { shutDown(); });
}

void DesktopLink::open()
{
    // While another link blocked this thread, this link may have been closed already.
    if (m_isClosing)
        return;
    const auto bus = QDBusConnection::connectToBus(m_busAddress, m_connection);
    if (!bus.isConnected() || m_isClosing)
        return;
    m_inhibitor = std::make_unique<ScreenSaverInhibitor>(bus, m_application, m_reason);
    if (m_mpris)
        m_mpris->registerOn(bus);
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

} // namespace quillmere
