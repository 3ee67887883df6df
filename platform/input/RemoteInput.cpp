#include "RemoteInput.h"

#include "RemoteButton.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QWindow>

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
    if (canonical->actsOnceAPress && event.isAutoRepeat())
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
