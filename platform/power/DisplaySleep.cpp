#include "DisplaySleep.h"

#include "DisplayPower.h"
#include "IdleInhibitor.h"
#include "Logging.h"

#include <QKeyEvent>
#include <QRegularExpression>
#include <QWindow>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

using std::chrono::milliseconds;

namespace {

/** Time to show the black picture before the output goes off: some outputs stay on or switch on again by themselves. */
constexpr milliseconds timeToDraw = 500ms;

/**
 * X11 repeats a held key as pairs of release and press with equal time stamps. Qt does not always detect the repeat.
 */
constexpr quint64 maxRepeatGap = 1; // milliseconds

milliseconds unitOf(QStringView name)
{
    if (name.startsWith(u'h'))
        return 1h;
    return name.startsWith(u's') ? milliseconds(1s) : milliseconds(1min);
}

} // namespace

DisplaySleep::DisplaySleep(QWindow& window, Clock& clock, DisplayPower& power, milliseconds delay)
    : m_window(window), m_clock(clock), m_power(power), m_delay(delay)
{
    m_window.installEventFilter(this);
    connect(&IdleInhibitors::instance(), &IdleInhibitors::activeChanged, this, &DisplaySleep::onInhibition);
    if (!IdleInhibitor::isAnyActive())
        restart();
}

std::optional<milliseconds> DisplaySleep::parseDelay(const QString& text)
{
    static const QRegularExpression form(u"^(\\d{1,6})\\s*(s|sec|m|min|h|)$"_s);
    const QRegularExpressionMatch match = form.match(text.trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    return match.capturedView(1).toInt() * unitOf(match.capturedView(2));
}

bool DisplaySleep::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != &m_window)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        return onKey(static_cast<const QKeyEvent&>(*event));
    case QEvent::FocusOut:
        m_wakingKey.reset(); // another window gets its release
        return false;
    default:
        return false;
    }
}

bool DisplaySleep::isWakingKey(const QKeyEvent& event) const
{
    if (!m_wakingKey)
        return false;
    return m_wakingKey->scanCode != 0 ? m_wakingKey->scanCode == event.nativeScanCode()
                                      : m_wakingKey->key == event.key();
}

/** Whether to hide the event from the window, because it belongs to the key press that woke the display. */
bool DisplaySleep::onKey(const QKeyEvent& event)
{
    const bool isPress = event.type() == QEvent::KeyPress;
    m_idleSince = m_clock.elapsed();
    if (m_isAsleep && isPress) {
        wake();
        m_wakingKey = Key{event.key(), event.nativeScanCode()};
        m_releasedAt = 0;
        return true;
    }
    if (!isWakingKey(event))
        return false;
    if (!isPress) {
        if (!event.isAutoRepeat())
            m_releasedAt = std::max<quint64>(event.timestamp(), 1);
        return true;
    }
    const bool isRepeat = event.isAutoRepeat() || m_releasedAt == 0 ||
                          (event.timestamp() > 0 && event.timestamp() - m_releasedAt <= maxRepeatGap);
    if (isRepeat)
        m_releasedAt = 0;
    else
        m_wakingKey.reset();
    return isRepeat;
}

void DisplaySleep::onInhibition(bool isInhibited)
{
    if (!isInhibited)
        restart();
    else if (m_isAsleep)
        wake();
    else
        m_timer.reset();
}

void DisplaySleep::restart()
{
    m_idleSince = m_clock.elapsed();
    startTimer(m_delay);
}

void DisplaySleep::startTimer(milliseconds delay)
{
    m_timer = m_clock.after(delay, [this] { onTimeout(); });
}

/** Keys only update m_idleSince. The timer is extended here, when it fires. */
void DisplaySleep::onTimeout()
{
    const milliseconds left = m_idleSince + m_delay - m_clock.elapsed();
    if (left > 0ms)
        startTimer(left);
    else
        sleep();
}

void DisplaySleep::sleep()
{
    m_isAsleep = true;
    qCInfo(logDisplay) << "asleep";
    m_wakingKey.reset();
    Q_EMIT asleepChanged(true);
    m_timer = m_clock.after(timeToDraw, [this] {
        m_isOff = true;
        m_power.switchOff();
    });
}

void DisplaySleep::wake()
{
    m_isAsleep = false;
    qCInfo(logDisplay) << "awake";
    m_timer.reset();
    if (!IdleInhibitor::isAnyActive())
        restart();
    finishWaking();
}

QCoro::Task<> DisplaySleep::finishWaking()
{
    const std::stop_token token = m_tasks.token();
    if (std::exchange(m_isOff, false)) {
        const auto isOn = m_power.switchOn();
        co_await isOn;
    }
    if (!token.stop_requested() && !m_isAsleep)
        Q_EMIT asleepChanged(false);
}

} // namespace quillmere
