#pragma once

#include "PaintedItem.h"

/**
 * The length of a recording, with what has been played, what is there to be played, and the playhead between them. Parts
 * are fractions of the length, 0 to 1.
 */
class PlayheadBar : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double played READ played WRITE setPlayed NOTIFY artChanged FINAL)
    Q_PROPERTY(double buffered READ buffered WRITE setBuffered NOTIFY artChanged FINAL)
    /** Whether the viewer moves the playhead, which is then larger. */
    Q_PROPERTY(bool held READ isHeld WRITE setHeld NOTIFY artChanged FINAL)

public:
    explicit PlayheadBar(QQuickItem* parent = nullptr);

    double played() const { return m_played; }
    void setPlayed(double played);
    double buffered() const { return m_buffered; }
    void setBuffered(double buffered);
    bool isHeld() const { return m_held; }
    void setHeld(bool held);

    qreal bleed() const override;
    void paint(QPainter& painter, const QSizeF& size) const override;

private:
    double m_played = 0;
    double m_buffered = 0;
    bool m_held = false;
};
