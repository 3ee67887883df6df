#pragma once

#include "CassetteRow.h"

/**
 * The tapes that were opened from a screen of cassettes, one over the other; the last one's screen is in front. A tape
 * stays as it was opened, whatever becomes of its row. Screen thread only; owned by the screen's controller.
 */
class TapePath : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The controller of a screen of cassettes makes it.")
    /** How many tapes are open. */
    Q_PROPERTY(int depth READ depth NOTIFY depthChanged FINAL)

public:
    using QObject::QObject;

    int depth() const { return int(m_tapes.size()); }
    /** The tape at a level, 0 for the first. */
    Q_INVOKABLE Tape tapeAt(int level) const { return m_tapes.value(level); }

    /** The viewer chooses a cassette: its tape comes to the front. */
    Q_INVOKABLE void open(CassetteRow* cassettes, int cassette);
    /** The viewer goes back by one, if any is open. */
    Q_INVOKABLE void pop();

Q_SIGNALS:
    void depthChanged();

private:
    QList<Tape> m_tapes;
};
