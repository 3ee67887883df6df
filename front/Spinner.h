#pragma once

#include "PaintedItem.h"

#include <QColor>

namespace quillmere {

/**
 * A busy indicator: a wheel of twelve spokes that turns by one spoke ten times a second. It turns while it is visible,
 * and repaints only itself.
 */
class Spinner : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY artChanged FINAL)

public:
    static constexpr int spokes = 12;
    static constexpr int stepTime = 100; // milliseconds
    static constexpr double side = 44;   // implicit width and height, in points

    explicit Spinner(QQuickItem* parent = nullptr);

    QColor color() const { return m_color; }
    void setColor(QColor color) { setInput(m_color, color); }

    /** Index of the brightest spoke, clockwise; 0 is the top. */
    int brightestSpoke() const { return m_brightestSpoke; }
    bool isRunning() const { return m_stepTimer.isActive(); }

    void paint(QPainter& painter, const QSizeF& size) const override;

protected:
    void timerEvent(QTimerEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    QColor m_color = Qt::white;
    int m_brightestSpoke = 0;
    QBasicTimer m_stepTimer;
};

} // namespace quillmere
