#pragma once

#include "BroadcastTexts.h"
#include "Clock.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace quillmere {

/**
 * Countdown to the next broadcast. It reads the clock once when it gets one, then every full second after that moment,
 * independent of delays of single ticks. Between ticks, its texts change only if an input changes. Screen thread only;
 * its parent owns it, the clock outlives it.
 */
class CountdownTimer : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /** Moment to count down to, in the format of the hub. */
    Q_PROPERTY(QString nextBroadcast READ nextBroadcast WRITE setNextBroadcast NOTIFY inputChanged FINAL)
    /** The hub's label of that moment; if empty, its date and time are shown. */
    Q_PROPERTY(QString label READ label WRITE setLabel NOTIFY inputChanged FINAL)
    Q_PROPERTY(quillmere::Clock* clock READ clock WRITE setClock NOTIFY inputChanged FINAL)
    /** Whether it ticks; false while it is not visible. */
    Q_PROPERTY(bool running READ isRunning WRITE setRunning NOTIFY inputChanged FINAL)
    Q_PROPERTY(bool counting READ isCounting NOTIFY readingChanged FINAL)
    Q_PROPERTY(QString headline READ headline NOTIFY readingChanged FINAL)
    /** Label or time of the broadcast; may be empty. */
    Q_PROPERTY(QString detail READ detail NOTIFY readingChanged FINAL)

public:
    using QObject::QObject;

    static constexpr std::chrono::milliseconds tickInterval{1000};

    const QString& nextBroadcast() const { return m_nextBroadcast; }
    void setNextBroadcast(const QString& nextBroadcast);
    const QString& label() const { return m_label; }
    void setLabel(const QString& label);
    Clock* clock() const { return m_clock; }
    void setClock(Clock* clock);
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
    void updateReading();

    QString m_nextBroadcast;
    QString m_label;
    QPointer<Clock> m_clock;
    bool m_running = false;
    std::chrono::milliseconds m_start{0};  ///< elapsed time of the clock at the first tick
    QDateTime m_lastTick;                  ///< wall clock time of the latest tick
    std::unique_ptr<Clock::Timer> m_timer; ///< exists while ticking
    CountdownReading m_reading = countdownReading({}, {}, {});
};

} // namespace quillmere
