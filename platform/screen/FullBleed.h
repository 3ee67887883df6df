#pragma once

#include <QQuickItem>

namespace quillmere {

class Canvas;

/**
 * An item that fills the whole display, including the margins beside its canvas; without a canvas it fills its parent.
 * Its parent must be unscaled and at the canvas's origin. Screen thread only; owned by its parent item.
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
    void findCanvas();
    void updateGeometry();

    const Canvas* m_canvas = nullptr;
    QList<QMetaObject::Connection> m_connections;
};

} // namespace quillmere
