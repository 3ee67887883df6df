#include "RemoteInput.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QWindow>

namespace {

// Shorter than any finger, longer than what lies between the two halves of a repeat.
constexpr quint64 shortestGap = 10; // milliseconds

} // namespace

RemoteInput::RemoteInput(QWindow* window, Clock& clock)
    : QObject(window), m_window(window), m_repeat(clock, [this] { makeStep(); })
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
        release(event, canonical.button);
    } else if (isRepeat(event, canonical.button)) {
        if (canonical.button == m_held)
            m_repeat.resume();
        return true;
    } else {
        press(canonical);
    }
    if (canonical.key == event.key())
        return false;
    QKeyEvent handedOn(event.type(), canonical.key, event.modifiers(), event.nativeScanCode(), event.nativeVirtualKey(),
                       event.nativeModifiers());
    handOn(handedOn);
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

void RemoteInput::release(const QKeyEvent& event, RemoteButton button)
{
    m_released = button;
    m_releasedAt = event.timestamp();
    // It stays the held one, as this may be the first half of a repeat.
    if (button == m_held)
        m_repeat.release();
}

/** Ends the repeats; after a loss of the focus the release will go to another window. */
void RemoteInput::letGo()
{
    m_repeat.release();
    m_held = RemoteButton::None;
}

/**
 * X11 repeats a held key as releases and presses at one and the same time, which Qt recognises only when it finds both
 * in its queue: on a busy machine they pass for a new press.
 */
bool RemoteInput::isRepeat(const QKeyEvent& press, RemoteButton button) const
{
    return press.timestamp() > 0 && button == m_released && press.timestamp() - m_releasedAt < shortestGap;
}

void RemoteInput::makeStep()
{
    if (const CanonicalKey* const canonical = canonicalKey(m_held)) {
        QKeyEvent step(QEvent::KeyPress, canonical->key, Qt::NoModifier, QString(), true);
        handOn(step);
    }
}

void RemoteInput::handOn(QKeyEvent& event)
{
    const QScopedValueRollback guard(m_handingOn, true);
    QCoreApplication::sendEvent(m_window, &event);
}
