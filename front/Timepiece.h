#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

class Clock;

/** The clock in the form in which the screens hand it on. Screen thread only; the clock outlives it. */
class Timepiece : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application entry makes it.")

public:
    explicit Timepiece(Clock& clock, QObject* parent = nullptr) : QObject(parent), m_clock(clock) {}

    Clock& clock() const { return m_clock; }

private:
    Clock& m_clock;
};
