#pragma once

#include "PixelAlignedItem.h"
#include "PixelPlacement.h"
#include "SharedPictures.h"

#include <QList>
#include <QPointer>

class QPainter;

namespace quillmere {

/**
 * Art that C++ paints in points. It is painted once into an image of its final size, aligned to whole device pixels. It
 * is painted again only when an input changes, or when it comes to rest at another size or another position relative to
 * the pixel grid; only while its size is animated, the existing image is scaled. The last two images are kept, so a
 * card that is enlarged and reduced again is painted once. Moving by whole device pixels, as scrolling does, needs no
 * painting.
 *
 * Screen thread, except `paint`, which also runs on the render thread while the screen thread is blocked. Owned by its
 * parent item. Rotation and shear are not supported.
 */
class PaintedItem : public quillmere::PixelAlignedItem
{
    Q_OBJECT
    QML_NAMED_ELEMENT(PaintedItem)
    QML_UNCREATABLE("A base for art drawn in C++")

public:
    explicit PaintedItem(QQuickItem* parent = nullptr);

    /** Paints the art for an item of `size`, in points; the origin is the item's top left corner. */
    virtual void paint(QPainter& painter, const QSizeF& size) const = 0;

    /** How far the art extends beyond the item on each side, in points. */
    virtual qreal bleed() const { return 0; }

    /** Whether each pixel row has a single colour; then one column is painted and stretched. */
    virtual bool hasUniformRows() const { return false; }

    /**
     * Describes the art. Items with equal keys, sizes and positions relative to the pixel grid share one image. If
     * empty, the image is not shared.
     */
    virtual QString cacheKey() const { return {}; }

    /** Whether the art has no sharp edges. Then it is painted without regard to the pixel grid. */
    virtual bool isSoft() const { return false; }

    /** The image that is shown; null if there is none. */
    SharedPictures::Picture picture() const { return m_pictures.isEmpty() ? nullptr : m_pictures.constFirst().picture; }

Q_SIGNALS:
    /** An input of the art has changed. */
    void artChanged();

protected:
    /** Sets an input of the art, and paints the art again if the input changes. */
    template<typename Input>
    void setInput(Input& input, const Input& value)
    {
        if (input == value)
            return;
        input = value;
        repaint();
    }

    /** Same for an item whose art is a part of this art. */
    void setInput(QPointer<PaintedItem>& input, PaintedItem* value);

    void repaint();

    void trackPlacement() override;
    void onStable() override { update(); }
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    struct PlacedPicture
    {
        PixelPlacement placement;
        SharedPictures::Picture picture;
    };

    PixelPlacement placement() const;
    SharedPictures::Picture pictureFor(const PixelPlacement& placement);
    QImage paintImage(const PixelPlacement& placement) const;

    PixelPlacement m_lastPlacement;    ///< in the previous frame
    PixelPlacement m_paintedPlacement; ///< of the image that is shown
    bool m_inputsChanged = true;
    QList<PlacedPicture> m_pictures; ///< most recently used first
};

} // namespace quillmere
