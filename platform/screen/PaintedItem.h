#pragma once

#include "PixelPlacement.h"
#include "SharedPictures.h"

#include <QBasicTimer>
#include <QList>
#include <QQuickItem>

class QPainter;

/**
 * Art drawn by C++ in points and shown pixel for pixel: it is painted once into an image of the size really shown, on
 * whole device pixels, and painted again only when its inputs change or when it has come to rest at another size; while
 * it moves, the picture at hand is scaled. The last two pictures are kept, so a card that lifts and settles again costs
 * one painting. A move by whole device pixels, as of a scroll, changes nothing but where the picture stands.
 *
 * Screen thread, but for `paint`, which also runs on the render thread while the screen thread waits. Its parent item
 * owns it. Rotations and shears are not followed.
 */
class PaintedItem : public QQuickItem
{
    Q_OBJECT
    QML_NAMED_ELEMENT(PaintedItem)
    QML_UNCREATABLE("A base for art drawn in C++")

public:
    explicit PaintedItem(QQuickItem* parent = nullptr);

    /** Paints the art for an item of `size`, in points, with the item's top left corner at the origin. */
    virtual void paint(QPainter& painter, const QSizeF& size) const = 0;

    /** How far the art reaches past the item on every side, in points. */
    virtual qreal bleed() const { return 0; }

    /** Whether every row is of one colour; then one column is painted and stretched. */
    virtual bool hasUniformRows() const { return false; }

    /**
     * What the art looks like, in words: items that answer the same, and have the same size and stand alike on the grid
     * of the device's pixels, share one picture. Empty for art of its own.
     */
    virtual QString look() const { return {}; }

    /** Whether half a pixel to either side does not show; then where it stands makes no difference. */
    virtual bool isSoft() const { return false; }

    /** The picture on the glass; null while there is none. */
    SharedPictures::Picture picture() const { return m_pictures.isEmpty() ? nullptr : m_pictures.constFirst().image; }

Q_SIGNALS:
    /** The art's inputs have changed. */
    void artChanged();

protected:
    /** To be called by every setter of an input. */
    void repaint();

    void timerEvent(QTimerEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    struct Picture
    {
        PixelPlacement placement;
        SharedPictures::Picture image;
    };

    PixelPlacement placement() const;
    void follow();
    SharedPictures::Picture pictureFor(const PixelPlacement& placement);
    QImage painted(const PixelPlacement& placement) const;

    PixelPlacement m_seen;  ///< in the frame before
    PixelPlacement m_shown; ///< the one that the picture on the glass was painted for
    bool m_atRest = true;
    QBasicTimer m_settling; ///< runs from the latest movement until it counts as the last
    bool m_inputsChanged = true;
    QList<Picture> m_pictures; ///< latest first
    QMetaObject::Connection m_frames;
};
