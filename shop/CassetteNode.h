#pragma once

#include "CassetteStudio.h"

#include <QColor>
#include <QSGNode>

class QQuickWindow;
class QSGImageNode;
class QSGNinePatchNode;

namespace quillmere {

/**
 * Scene graph node of a cassette: shows its picture or a plain plate. A transform node, because Qt's software renderer
 * loses the position of nodes added later to a plain QSGNode. Render thread, while the screen thread waits.
 */
class CassetteNode : public QSGTransformNode
{
public:
    explicit CassetteNode(QQuickWindow* window);

    /** `box` is in the item's coordinates. With `pixelForPixel` a pixel of the picture is exactly one device pixel. */
    void showPicture(const CassetteStudio::Picture& picture, const QRectF& box, bool pixelForPixel);

    /** `area` and `radius` are in points. */
    void showPlate(const QColor& color, const QRectF& area, double radius);

private:
    void removePicture();
    void removePlate();

    QQuickWindow* m_window;
    QSGImageNode* m_pictureNode = nullptr;
    CassetteStudio::Picture m_picture;
    QSGNinePatchNode* m_plateNode = nullptr;
    QColor m_plateColor;
    double m_plateRadius = 0;
};

} // namespace quillmere
