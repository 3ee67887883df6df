#include "PaintedItem.h"

#include <QMutex>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace {

constexpr int picturesKept = 2;
constexpr int sharedPicturesKept = 6;
constexpr int settlingTime = 50; // milliseconds, more than lies between the steps of a movement
constexpr double pixelTolerance = 1.0 / 256;

bool near(double a, double b)
{
    return std::abs(a - b) < pixelTolerance;
}

double fraction(double x)
{
    return x - std::floor(x + pixelTolerance);
}

/** The smallest rectangle of whole pixels around `area`, rounding errors left aside. */
QRect wholePixels(const QRectF& area)
{
    const QPoint topLeft(int(std::floor(area.left() + pixelTolerance)), int(std::floor(area.top() + pixelTolerance)));
    const QPoint end(int(std::ceil(area.right() - pixelTolerance)), int(std::ceil(area.bottom() - pixelTolerance)));
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

} // namespace

bool PaintedItem::Placement::operator==(const Placement& other) const
{
    return pixels == other.pixels && near(phase.x(), other.phase.x()) && near(phase.y(), other.phase.y()) &&
           near(scale.width() * pixels.width(), other.scale.width() * pixels.width()) &&
           near(scale.height() * pixels.height(), other.scale.height() * pixels.height());
}

struct PaintedItem::SharedPicture
{
    QString look;
    QSizeF size; ///< points
    Picture picture;
};

PaintedItem::PaintedItem(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void PaintedItem::repaint()
{
    m_inputsChanged = true;
    update();
    Q_EMIT artChanged();
}

void PaintedItem::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        disconnect(m_frames);
        if (data.window)
            m_frames = connect(data.window, &QQuickWindow::afterAnimating, this, &PaintedItem::follow);
    } else if (change == ItemDevicePixelRatioHasChanged || change == ItemVisibleHasChanged) {
        update();
    }
    QQuickItem::itemChange(change, data);
}

void PaintedItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        repaint();
}

PaintedItem::Placement PaintedItem::placement() const
{
    const QTransform toScene = itemTransform(nullptr, nullptr);
    const double ratio = window()->effectiveDevicePixelRatio();
    const QPointF origin = toScene.map(QPointF()) * ratio;
    Placement placement;
    // Soft art is painted as if it stood on the grid, and shown on whole pixels by not being filtered.
    if (softLook().isEmpty())
        placement.phase = QPointF(fraction(origin.x()), fraction(origin.y()));
    placement.scale = QSizeF(toScene.m11(), toScene.m22()) * ratio;
    const QRectF art = QRectF(QPointF(), size()).marginsAdded({bleed(), bleed(), bleed(), bleed()});
    placement.pixels =
        wholePixels(QRectF(placement.phase.x() + art.x() * placement.scale.width(),
                           placement.phase.y() + art.y() * placement.scale.height(),
                           art.width() * placement.scale.width(), art.height() * placement.scale.height()));
    return placement;
}

/** Once a frame: notices that an ancestor moved or scaled this item, and when that has ended. */
void PaintedItem::follow()
{
    if (!isVisible() || size().isEmpty())
        return;
    const Placement now = placement();
    if (now == m_shown) {
        m_settling.stop();
        m_atRest = true;
    } else if (!(now == m_seen)) {
        m_settling.start(settlingTime, this);
        m_atRest = false;
        update();
    }
    m_seen = now;
}

void PaintedItem::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_settling.timerId())
        return QQuickItem::timerEvent(event);
    m_settling.stop();
    m_atRest = true;
    update();
}

const PaintedItem::Picture& PaintedItem::pictureFor(const Placement& placement)
{
    for (qsizetype i = 0; i < m_pictures.size(); ++i) {
        if (m_pictures.at(i).placement == placement) {
            m_pictures.move(i, 0);
            return m_pictures.constFirst();
        }
    }
    m_pictures.prepend({placement, softLook().isEmpty() ? painted(placement) : shared(placement)});
    if (m_pictures.size() > picturesKept)
        m_pictures.removeLast();
    return m_pictures.constFirst();
}

QImage PaintedItem::painted(const Placement& placement) const
{
    const QSize pixels(hasUniformRows() ? 1 : placement.pixels.width(), placement.pixels.height());
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(placement.phase - placement.pixels.topLeft());
    painter.scale(placement.scale.width(), placement.scale.height());
    paint(painter, size());
    return image;
}

/** The picture of soft art of this look and size, painted by whichever item needed it first. */
QImage PaintedItem::shared(const Placement& placement) const
{
    static QMutex mutex;                  // a render thread is a window's
    static QList<SharedPicture> pictures; // latest first
    const QMutexLocker lock(&mutex);
    const QString look = softLook();
    for (qsizetype i = 0; i < pictures.size(); ++i) {
        const SharedPicture& known = pictures.at(i);
        if (known.look == look && known.size == size() && known.picture.placement == placement) {
            pictures.move(i, 0);
            return pictures.constFirst().picture.image;
        }
    }
    pictures.prepend({look, size(), {placement, painted(placement)}});
    if (pictures.size() > sharedPicturesKept)
        pictures.removeLast();
    return pictures.constFirst().picture.image;
}

QSGNode* PaintedItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    auto node = static_cast<QSGImageNode*>(old);
    if (!isVisible())
        return node;
    const Placement now = placement();
    if (now.pixels.isEmpty()) {
        delete node;
        return nullptr;
    }
    if (m_inputsChanged)
        m_pictures.clear();
    const bool hasTexture = node != nullptr;
    if (!node)
        node = window()->createImageNode();
    // A new input is painted at once, the rest when the movement has ended.
    if (m_inputsChanged || !hasTexture || (m_atRest && !(now == m_shown))) {
        const Picture& picture = pictureFor(now);
        node->setOwnsTexture(true);
        node->setTexture(window()->createTextureFromImage(picture.image));
        node->setSourceRect(picture.image.rect());
        const QPointF corner = now.pixels.topLeft() - now.phase;
        node->setRect(QRectF(corner.x() / now.scale.width(), corner.y() / now.scale.height(),
                             now.pixels.width() / now.scale.width(), now.pixels.height() / now.scale.height()));
        m_shown = now;
        m_inputsChanged = false;
    }
    // At rest one texel is one pixel, and a filter would only blur it.
    node->setFiltering(now == m_shown ? QSGTexture::Nearest : QSGTexture::Linear);
    return node;
}
