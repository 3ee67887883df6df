#pragma once

#include "CassetteRow.h"

namespace quillmere {

/**
 * The stack of tapes opened from a screen of cassettes; the last one's screen is on top. The tapes are copies, so later
 * changes of the row do not affect them. Screen thread only; owned by the screen's controller.
 */
class TapePath : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created by the controller of a screen of cassettes.")
    /** Number of open tapes. */
    Q_PROPERTY(int depth READ depth NOTIFY depthChanged FINAL)

public:
    using QObject::QObject;

    int depth() const { return int(m_tapes.size()); }
    /** The tape at a level; 0 is the first. */
    Q_INVOKABLE quillmere::Tape tapeAt(int level) const { return m_tapes.value(level); }

    /** The viewer selected a cassette: pushes its tape. */
    Q_INVOKABLE void open(quillmere::CassetteRow* cassettes, int cassette);
    /** The viewer went back: removes the last tape, if there is one. */
    Q_INVOKABLE void pop();

Q_SIGNALS:
    void depthChanged();

private:
    QList<Tape> m_tapes;
};

} // namespace quillmere
