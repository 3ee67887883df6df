#include "RemoteInput.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QWindow>

#include <utility>

namespace {

// Milliseconds. Both halves of a repeat bear one time, and no system repeats faster than this.
constexpr quint64 longestGap = 1;
constexpr quint64 shortestRepeat = 20;
// How long the second half may follow in a piece of its own; nobody feels it.
constexpr std::chrono::milliseconds patience{10};

} // namespace

RemoteInput::RemoteInput(QWindow* window, Clock& clock)
    : QObject(window), m_window(window), m_clock(clock), m_repeat(clock, [this] { makeStep(); })
{
    window->installEventFilter(this);
}

bool RemoteInput::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_window)
        return false;
    if (event->type() == QEvent::FocusOut)
        letGo();
    if (m_handingOn || (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease))
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
    const bool goesOn = isRepeat(event, canonical.button);
    m_pressedAt = event.timestamp();
    if (!goesOn) {
        press(canonical);
        handOn(QEvent::KeyPress, canonical.key, event.text());
    } else if (canonical.button == m_held || canonical.button == m_told) {
        m_held = canonical.button;
        m_letGo.reset();
        m_repeat.resume();
    }
    return true;
}

void RemoteInput::press(const CanonicalKey& canonical)
{
    letGo();
    if (canonical.actsOnceAPress)
        return;
    m_held = canonical.button;
    m_repeat.press();
}

void RemoteInput::release(const QKeyEvent& event, const CanonicalKey& canonical)
{
    m_released = canonical.button;
    m_releasedAt = event.timestamp();
    if (canonical.button != m_held) {
        handOn(QEvent::KeyRelease, canonical.key);
        return;
    }
    // It may be the first half of a repeat: it is told when the second half has not come, and is the held one till then.
    m_repeat.release();
    m_letGo = m_clock.after(patience, [this, held = m_held] {
        letGo();
        m_told = held; // the second half may come even later
    });
}

/** Ends the repeats; after a loss of the focus the release will go to another window. */
void RemoteInput::letGo()
{
    m_letGo.reset();
    m_repeat.release();
    m_told = RemoteButton::None;
    if (const CanonicalKey* const canonical = canonicalKey(std::exchange(m_held, RemoteButton::None)))
        handOn(QEvent::KeyRelease, canonical->key);
}

/**
 * X11 repeats a held key as releases and presses at one and the same time, which Qt recognises only when it finds both
 * in its queue: on a busy machine they pass for a new press.
 */
bool RemoteInput::isRepeat(const QKeyEvent& press, RemoteButton button) const
{
    return press.timestamp() > 0 && button == m_released && press.timestamp() - m_releasedAt <= longestGap &&
           m_releasedAt - m_pressedAt >= shortestRepeat;
}

void RemoteInput::makeStep()
{
    if (const CanonicalKey* const canonical = canonicalKey(m_held))
        handOn(QEvent::KeyPress, canonical->key, {}, true);
}

void RemoteInput::handOn(QEvent::Type type, int key, const QString& text, bool isRepeat)
{
    const QScopedValueRollback guard(m_handingOn, true);
    QKeyEvent event(type, key, Qt::NoModifier, text, isRepeat);
    QCoreApplication::sendEvent(m_window, &event);
}
