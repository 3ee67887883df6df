#include "RemoteInput.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QWindow>

#include <utility>

namespace quillmere {

namespace {

// Milliseconds. The release and the press of a repeat have the same time, and no system repeats faster than this.
constexpr quint64 maxRepeatGap = 1;
constexpr quint64 minRepeatInterval = 20;
// How long to wait for the press of a repeat if it arrives separately; too short to notice.
constexpr std::chrono::milliseconds releaseDelay{10};

} // namespace

RemoteInput::RemoteInput(QWindow* window, Clock& clock)
    : QObject(window), m_window(window), m_clock(clock), m_repeat(clock, [this] { sendRepeat(); })
{
    window->installEventFilter(this);
}

bool RemoteInput::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_window)
        return false;
    if (event->type() == QEvent::FocusOut)
        releaseHeld();
    if (m_isSending || (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease))
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const CanonicalKey* const canonical = canonicalKey(remoteButton(key.key(), key.nativeScanCode()));
    return canonical && translate(key, *canonical);
}

bool RemoteInput::translate(const QKeyEvent& event, const CanonicalKey& canonical)
{
    if (event.isAutoRepeat())
        return true;
    if (event.type() == QEvent::KeyRelease) {
        release(event, canonical);
        return true;
    }
    const bool repeats = isRepeat(event, canonical.button);
    m_pressedAt = event.timestamp();
    if (!repeats) {
        press(canonical);
        sendKey(QEvent::KeyPress, canonical.key, event.text());
    } else if (canonical.button == m_held || canonical.button == m_sentRelease) {
        m_held = canonical.button;
        m_releaseTimer.reset();
        m_repeat.resume();
    }
    return true;
}

void RemoteInput::press(const CanonicalKey& canonical)
{
    releaseHeld();
    if (canonical.ignoresRepeat)
        return;
    m_held = canonical.button;
    m_repeat.press();
}

void RemoteInput::release(const QKeyEvent& event, const CanonicalKey& canonical)
{
    m_released = canonical.button;
    m_releasedAt = event.timestamp();
    if (canonical.button != m_held) {
        sendKey(QEvent::KeyRelease, canonical.key);
        return;
    }
    // This may be the release of a repeat. It is sent only if no press follows; until then the button counts as held.
    m_repeat.release();
    m_releaseTimer = m_clock.after(releaseDelay, [this, held = m_held] {
        releaseHeld();
        m_sentRelease = held; // the press of the repeat may come even later
    });
}

/** Ends the repeat and sends the release. After focus is lost, another window gets the real release. */
void RemoteInput::releaseHeld()
{
    m_releaseTimer.reset();
    m_repeat.release();
    m_sentRelease = RemoteButton::None;
    if (const CanonicalKey* const canonical = canonicalKey(std::exchange(m_held, RemoteButton::None)))
        sendKey(QEvent::KeyRelease, canonical->key);
}

/**
 * X11 repeats a held key as a release and a press with the same time. Qt recognises a repeat only if both are in its
 * queue; on a busy machine they look like a new press.
 */
bool RemoteInput::isRepeat(const QKeyEvent& press, RemoteButton button) const
{
    return press.timestamp() > 0 && button == m_released && press.timestamp() - m_releasedAt <= maxRepeatGap &&
           m_releasedAt - m_pressedAt >= minRepeatInterval;
}

void RemoteInput::sendRepeat()
{
    if (const CanonicalKey* const canonical = canonicalKey(m_held))
        sendKey(QEvent::KeyPress, canonical->key, {}, true);
}

void RemoteInput::sendKey(QEvent::Type type, int key, const QString& text, bool isRepeat)
{
    const QScopedValueRollback guard(m_isSending, true);
    QKeyEvent event(type, key, Qt::NoModifier, text, isRepeat);
    QCoreApplication::sendEvent(m_window, &event);
}

} // namespace quillmere
