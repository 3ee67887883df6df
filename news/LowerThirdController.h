#pragma once

#include "Clock.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * Visibility of a lower third. It is shown from the start and hidden once, 8 seconds after the clock is set. Screen
 * thread only; the lower third creates and owns it; the clock outlives it.
 */
class LowerThirdController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::Clock* clock READ clock WRITE setClock NOTIFY clockChanged REQUIRED FINAL)
    Q_PROPERTY(bool isShown READ isShown NOTIFY isShownChanged FINAL)
    /** Duration of sliding in or out, in milliseconds. */
    Q_PROPERTY(int slideTime READ slideTime CONSTANT FINAL)

public:
    using QObject::QObject;

    static constexpr std::chrono::seconds showTime{8};
    static constexpr int slideTime() { return 500; }

    Clock* clock() const { return m_clock; }
    void setClock(Clock* clock)
    {
        if (m_clock == clock)
            return;
        m_clock = clock;
        m_hideTimer = clock && m_isShown ? clock->after(showTime, [this] { hide(); }) : nullptr;
        Q_EMIT clockChanged();
    }
    bool isShown() const { return m_isShown; }

Q_SIGNALS:
    void clockChanged();
    void isShownChanged();

private:
    void hide()
    {
        m_isShown = false;
        Q_EMIT isShownChanged();
    }

    QPointer<Clock> m_clock;
    bool m_isShown = true;
    std::unique_ptr<Clock::Timer> m_hideTimer;
};

} // namespace quillmere
