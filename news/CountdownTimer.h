#pragma once

#include "BroadcastTexts.h"
#include "Clock.h"
#include "Timepiece.h"

#include <QPointer>

#include <memory>

/**
 * The countdown to the next broadcast: read once when it gets its clock, and then at every whole second from there,
 * however late a tick may come. Between ticks nothing of it changes but by its inputs. Screen thread only; its parent owns
 * it, the timepiece outlives it.
 */
class CountdownTimer : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /** The moment to count down to, as the hub writes it. */
    Q_PROPERTY(QString nextBroadcast READ nextBroadcast WRITE setNextBroadcast NOTIFY inputChanged FINAL)
    /** What the hub calls that moment; empty for its date and time. */
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY inputChanged FINAL)
    Q_PROPERTY(Timepiece* timepiece READ timepiece WRITE setTimepiece NOTIFY inputChanged FINAL)
    /** Whether it ticks: while it is in sight. */
    Q_PROPERTY(bool running READ isRunning WRITE setRunning NOTIFY inputChanged FINAL)
    Q_PROPERTY(bool counting READ isCounting NOTIFY readingChanged FINAL)
    Q_PROPERTY(QString headline READ headline NOTIFY readingChanged FINAL)
    /** Empty when there is none. */
    Q_PROPERTY(QString detail READ detail NOTIFY readingChanged FINAL)

public:
    using QObject::QObject;

    static constexpr std::chrono::milliseconds tickTime{1000};

    const QString& nextBroadcast() const { return m_nextBroadcast; }
    void setNextBroadcast(const QString& nextBroadcast);
    const QString& label() const { return m_label; }
    void setLabel(const QString& label);
    Timepiece* timepiece() const { return m_timepiece; }
    void setTimepiece(Timepiece* timepiece);
    bool isRunning() const { return m_running; }
    void setRunning(bool running);

    bool isCounting() const { return m_reading.counting; }
    const QString& headline() const { return m_reading.headline; }
    const QString& detail() const { return m_reading.detail; }

Q_SIGNALS:
    void inputChanged();
    void readingChanged();

private:
    void tick();
    void read();

    QString m_nextBroadcast;
    QString m_label;
    QPointer<Timepiece> m_timepiece;
    bool m_running = false;
    std::chrono::milliseconds m_start{0}; ///< by the clock's elapsed time
    QDateTime m_tick;                     ///< the wall clock's time at the latest tick
    std::unique_ptr<Clock::Timer> m_next; ///< only while it ticks
    CountdownReading m_reading = countdownReading({}, {}, {});
};
