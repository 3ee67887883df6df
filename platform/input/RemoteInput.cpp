#include "RemoteInput.h"

#include "RemoteButton.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QWindow>

namespace {

// Shorter than any finger, longer than what lies between the two halves of a repeat.
constexpr quint64 shortestGap = 10; // milliseconds

} // namespace

RemoteInput::RemoteInput(QWindow* window) : QObject(window), m_window(window)
{
    window->installEventFilter(this);
}

bool RemoteInput::eventFilter(QObject* watched, QEvent* event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (m_handingOn || watched != m_window || !isKey)
        return false;
    return translate(static_cast<const QKeyEvent&>(*event));
}

bool RemoteInput::translate(const QKeyEvent& event)
{
    const CanonicalKey* canonical = canonicalKey(remoteButton(event.key(), event.nativeScanCode()));
    if (!canonical)
        return false;
    if (isRepeat(event) && canonical->actsOnceAPress)
        return true;
    if (canonical->key == event.key())
        return false;
    QKeyEvent handedOn(event.type(), canonical->key, event.modifiers(), event.nativeScanCode(),
                       event.nativeVirtualKey(), event.nativeModifiers(), QString(), event.isAutoRepeat(),
                       ushort(event.count()));
    const QScopedValueRollback guard(m_handingOn, true);
    QCoreApplication::sendEvent(m_window, &handedOn);
    return true;
}

/**
 * X11 repeats a held key as releases and presses at one and the same time, which Qt recognises only when it finds both
 * in its queue: on a busy machine they pass for a new press.
 */
bool RemoteInput::isRepeat(const QKeyEvent& event)
{
    if (event.isAutoRepeat())
        return true;
    if (event.type() == QEvent::KeyRelease) {
        m_releasedKey = event.key();
        m_releasedAt = event.timestamp();
        return false;
    }
    return event.timestamp() > 0 && event.key() == m_releasedKey && event.timestamp() - m_releasedAt < shortestGap;
}
