#include "CassetteItem.h"

#include "BoxFront.h"
#include "CassetteNode.h"
#include "CoverArt.h"

#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace {

constexpr int settlingTime = 50; // milliseconds, more than lies between the steps of a movement
constexpr double pixelTolerance = 1.0 / 256;

/** The nearest whole number; halves go up although they are not quite met. */
int wholePixels(double pixels)
{
    return int(std::floor(pixels + 0.5 + pixelTolerance));
}

bool near(const QRectF& a, const QRectF& b)
{
    const auto near = [](double x, double y) { return std::abs(x - y) < pixelTolerance; };
    return near(a.left(), b.left()) && near(a.top(), b.top()) && near(a.right(), b.right()) &&
           near(a.bottom(), b.bottom());
}

} // namespace

CassetteItem::CassetteItem(CassettePrint::Form form, QQuickItem* parent)
    : QQuickItem(parent), m_form(form), m_studio(CassetteStudio::shared())
{
    setFlag(ItemHasContents);
}

CassetteItem::~CassetteItem()
{
    m_studio->cancel(*this);
}

void CassetteItem::setCover(const VHSCover& cover)
{
    if (m_cover == cover)
        return;
    const bool looksTheSame = printOf(m_cover) == printOf(cover);
    m_cover = cover;
    if (!looksTheSame) {
        // Never another tape's picture, not even for a frame.
        m_picture.reset();
        m_studio->cancel(*this);
        if (m_placed)
            order();
        update();
    }
    Q_EMIT coverChanged();
}

double CassetteItem::radius() const
{
    return BoxFront::cornerRadius * width() / BoxFront::gridWidth;
}

void CassetteItem::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        disconnect(m_frames);
        disconnect(m_heights);
        if (data.window) {
            m_frames = connect(data.window, &QQuickWindow::afterAnimating, this, &CassetteItem::follow);
            m_heights = connect(data.window, &QQuickWindow::heightChanged, this, &CassetteItem::adaptBudget);
            adaptBudget();
        }
    } else if (change == ItemDevicePixelRatioHasChanged) {
        adaptBudget();
    }
    // Who cannot be seen wants nothing, and starts anew when it is seen.
    if (change == ItemSceneChange || change == ItemVisibleHasChanged) {
        m_studio->cancel(*this);
        m_settling.stop();
        m_placed.reset();
    }
    QQuickItem::itemChange(change, data);
}

void CassetteItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width())
        setImplicitHeight(BoxFront::heightOf(newGeometry.width()));
    if (newGeometry.size() != oldGeometry.size())
        update();
}

CassetteItem::Placement CassetteItem::placement() const
{
    const QTransform toScene = itemTransform(nullptr, nullptr);
    const double ratio = window()->effectiveDevicePixelRatio();
    const QSizeF scale(toScene.m11() * ratio, toScene.m22() * ratio);
    const QPointF origin = toScene.map(QPointF()) * ratio;
    // Every box of a row has the same size, wherever its edges fall.
    const QSize pixels(wholePixels(width() * scale.width()), wholePixels(BoxFront::heightOf(width()) * scale.height()));
    const QPointF moved = QPointF(wholePixels(origin.x()), wholePixels(origin.y())) - origin;
    return {pixels, QRectF(moved.x() / scale.width(), moved.y() / scale.height(), pixels.width() / scale.width(),
                           pixels.height() / scale.height())};
}

/** Once a frame: notices that the item was moved or scaled, by itself or by an ancestor. */
void CassetteItem::follow()
{
    if (!isVisible() || width() <= 0)
        return;
    const Placement now = placement();
    if (now.pixels.isEmpty())
        return;
    const std::optional<Placement> before = std::exchange(m_placed, now);
    if (!before) {
        m_restingPixels = now.pixels;
        order();
        update();
    } else if (now.pixels != before->pixels) {
        m_settling.start(settlingTime, this);
        update();
    } else if (!near(now.snapped, before->snapped)) {
        update();
    }
}

void CassetteItem::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_settling.timerId())
        return QQuickItem::timerEvent(event);
    m_settling.stop();
    m_restingPixels = m_placed->pixels;
    order();
}

CassettePrint CassetteItem::printOf(const VHSCover& cover) const
{
    return {m_form, cover, width(), m_restingPixels};
}

void CassetteItem::order()
{
    if (const auto picture = m_studio->order(*this, printOf(m_cover)))
        take(picture);
}

void CassetteItem::adaptBudget()
{
    m_studio->setBudget(CassetteStudio::budgetFor(int(window()->height() * window()->effectiveDevicePixelRatio())));
}

double CassetteItem::distance() const
{
    const QRectF area = mapRectToScene(boundingRect());
    const QSizeF view = window()->size();
    const double across = std::max({0.0, -area.right(), area.left() - view.width()});
    const double along = std::max({0.0, -area.bottom(), area.top() - view.height()});
    return std::hypot(across, along);
}

void CassetteItem::take(const CassetteStudio::Picture& picture)
{
    m_picture = picture;
    update();
}

QSGNode* CassetteItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    auto* node = static_cast<CassetteNode*>(old);
    if (width() <= 0) {
        delete node;
        return nullptr;
    }
    if (!node)
        node = new CassetteNode(window());
    const QRectF area(0, 0, width(), BoxFront::heightOf(width()));
    const bool pixelForPixel = m_picture && m_placed && m_picture->box.size() == m_placed->pixels;
    if (m_picture)
        node->showPicture(m_picture, pixelForPixel ? m_placed->snapped : area, pixelForPixel);
    else
        node->showPlate(CoverArt::skyTop(m_cover.hue), area, radius());
    return node;
}
