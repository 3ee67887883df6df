#pragma once

#include "Clock.h"
#include "Timepiece.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

/**
 * How long a lower third stays: it is there when it is made, and goes once, 8 seconds after it was given its timepiece.
 * Screen thread only; the lower third makes and owns it; the timepiece outlives it.
 */
class LowerThirdController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Timepiece* timepiece READ timepiece WRITE setTimepiece NOTIFY timepieceChanged REQUIRED FINAL)
    Q_PROPERTY(bool isShown READ isShown NOTIFY isShownChanged FINAL)
    /** How long it takes to come and to go, in milliseconds. */
    Q_PROPERTY(int slideTime READ slideTime CONSTANT FINAL)

public:
    using QObject::QObject;

    static constexpr std::chrono::seconds stay{8};
    static constexpr int slideTime() { return 500; }

    Timepiece* timepiece() const { return m_timepiece; }
    void setTimepiece(Timepiece* timepiece);
    bool isShown() const { return m_isShown; }

Q_SIGNALS:
    void timepieceChanged();
    void isShownChanged();

private:
    void leave();

    QPointer<Timepiece> m_timepiece;
    bool m_isShown = true;
    std::unique_ptr<Clock::Timer> m_leaving;
};
