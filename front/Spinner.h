#pragma once

#include "PaintedItem.h"

#include <QColor>

/**
 * A wheel that turns by one of its twelve spokes ten times a second, to say that something is under way. It turns while
 * it can be seen, and repaints nothing but itself.
 */
class Spinner : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY artChanged FINAL)

public:
    static constexpr int spokes = 12;
    static constexpr int stepTime = 100; // milliseconds
    static constexpr double side = 44;   // points, at its natural size

    explicit Spinner(QQuickItem* parent = nullptr);

    QColor color() const { return m_color; }
    void setColor(QColor color);

    /** The spoke that is brightest, clockwise from the one at the top. */
    int leader() const { return m_leader; }
    bool isTurning() const { return m_steps.isActive(); }

    void paint(QPainter& painter, const QSizeF& size) const override;

protected:
    void timerEvent(QTimerEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    QColor m_color = Qt::white;
    int m_leader = 0;
    QBasicTimer m_steps;
};
