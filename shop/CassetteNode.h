#pragma once

#include "CassetteStudio.h"

#include <QColor>
#include <QSGNode>

class QQuickWindow;
class QSGImageNode;
class QSGNinePatchNode;

/**
 * What the scene graph draws of a cassette: its picture or the plate. A transform node, as the software adaptation
 * loses the place of what is put below a plain one later. Render thread, while the screen thread waits.
 */
class CassetteNode : public QSGTransformNode
{
public:
    explicit CassetteNode(QQuickWindow* window);

    /** `box` is the box's, in the item's coordinates; `pixelForPixel` if it gives a pixel of the picture one of the display. */
    void showPicture(const CassetteStudio::Picture& picture, const QRectF& box, bool pixelForPixel);

    /** Lengths are in points. */
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
