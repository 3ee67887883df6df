#pragma once

#include <QQuickItem>

class Canvas;

/**
 * An item of a screen that reaches to the edges of the display, past those of the canvas it stands on; without a canvas
 * it fills its parent. Its parent stands unscaled at the canvas's origin. Screen thread only; its parent item owns it.
 */
class FullBleed : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit FullBleed(QQuickItem* parent = nullptr);

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void follow();
    void stretch();

    const Canvas* m_canvas = nullptr;
    QList<QMetaObject::Connection> m_connections;
};
