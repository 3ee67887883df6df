#include "CassetteNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGNinePatchNode>

#include <cmath>
#include <utility>

namespace quillmere {

namespace {

/** The smallest nine-patch image of a plate: its four corners around one pixel, which is stretched. */
QImage plateImage(const QColor& color, double radius, int margin)
{
    const int side = 2 * margin + 1;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(image.rect(), radius, radius);
    return image;
}

/** The area of the whole picture if its box covers `box`. */
QRectF pictureArea(const CassettePicture& picture, const QRectF& box)
{
    const QSizeF pixel(box.width() / picture.box.width(), box.height() / picture.box.height());
    return {box.x() - picture.box.x() * pixel.width(), box.y() - picture.box.y() * pixel.height(),
            picture.image.width() * pixel.width(), picture.image.height() * pixel.height()};
}

} // namespace

CassetteNode::CassetteNode(QQuickWindow* window) : m_window(window) {}

void CassetteNode::showPicture(const CassetteStudio::Picture& picture, const QRectF& box, bool pixelForPixel)
{
    removePlate();
    const bool isNew = !m_pictureNode;
    if (isNew) {
        m_pictureNode = m_window->createImageNode();
        m_pictureNode->setOwnsTexture(true);
    }
    if (m_picture != picture) {
        m_picture = picture;
        m_pictureNode->setTexture(m_window->createTextureFromImage(picture->image));
        m_pictureNode->setSourceRect(picture->image.rect());
    }
    m_pictureNode->setRect(pictureArea(*picture, box));
    m_pictureNode->setFiltering(pixelForPixel ? QSGTexture::Nearest : QSGTexture::Linear);
    // Added last, because Qt's software renderer reads the texture at once.
    if (isNew)
        appendChildNode(m_pictureNode);
}

void CassetteNode::showPlate(const QColor& color, const QRectF& area, double radius)
{
    removePicture();
    if (m_plateNode && (m_plateColor != color || m_plateRadius != radius))
        removePlate();
    const bool isNew = !m_plateNode;
    if (isNew) {
        const int margin = int(std::ceil(radius));
        m_plateNode = m_window->createNinePatchNode();
        m_plateNode->setTexture(m_window->createTextureFromImage(plateImage(color, radius, margin)));
        m_plateNode->setPadding(margin, margin, margin, margin);
        m_plateNode->setDevicePixelRatio(1);
        m_plateColor = color;
        m_plateRadius = radius;
    }
    m_plateNode->setBounds(area);
    m_plateNode->update();
    if (isNew)
        appendChildNode(m_plateNode);
}

void CassetteNode::removePicture()
{
    delete std::exchange(m_pictureNode, nullptr);
    m_picture.reset();
}

void CassetteNode::removePlate()
{
    delete std::exchange(m_plateNode, nullptr);
}

} // namespace quillmere
