#pragma once

#include "PaintedItem.h"

namespace quillmere {

/**
 * Progress bar of a recording: the played part, the buffered part and the playhead. Both parts are fractions of the
 * duration, 0 to 1.
 */
class PlayheadBar : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double played READ played WRITE setPlayed NOTIFY artChanged FINAL)
    Q_PROPERTY(double buffered READ buffered WRITE setBuffered NOTIFY artChanged FINAL)
    /** Whether the viewer is scrubbing; the playhead is then larger. */
    Q_PROPERTY(bool scrubbing READ isScrubbing WRITE setScrubbing NOTIFY artChanged FINAL)

public:
    explicit PlayheadBar(QQuickItem* parent = nullptr);

    double played() const { return m_played; }
    void setPlayed(double played) { setInput(m_played, played); }
    double buffered() const { return m_buffered; }
    void setBuffered(double buffered) { setInput(m_buffered, buffered); }
    bool isScrubbing() const { return m_scrubbing; }
    void setScrubbing(bool scrubbing) { setInput(m_scrubbing, scrubbing); }

    qreal bleed() const override;
    void paint(QPainter& painter, const QSizeF& size) const override;

private:
    double m_played = 0;
    double m_buffered = 0;
    bool m_scrubbing = false;
};

} // namespace quillmere
