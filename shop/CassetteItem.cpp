#include "CassetteItem.h"

#include "BoxFront.h"
#include "CassetteNode.h"
#include "CoverArt.h"

#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace {

constexpr int stableTime = 50; // milliseconds; longer than the time between two steps of an animation
constexpr double pixelTolerance = 1.0 / 256;

/** Rounds to the nearest integer; rounds up from slightly below one half, to tolerate inexact values. */
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

CassetteItem::CassetteItem(CassetteRenderer::Form form, QQuickItem* parent)
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
    const bool isSamePicture = rendererFor(m_cover) == rendererFor(cover);
    m_cover = cover;
    if (!isSamePicture) {
        // Never show another tape's picture, not even for one frame.
        m_picture.reset();
        m_studio->cancel(*this);
        if (m_placement)
            requestPicture();
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
        disconnect(m_frameConnection);
        disconnect(m_heightConnection);
        if (data.window) {
            m_frameConnection =
                connect(data.window, &QQuickWindow::afterAnimating, this, &CassetteItem::updatePlacement);
            m_heightConnection = connect(data.window, &QQuickWindow::heightChanged, this, &CassetteItem::updateBudget);
            updateBudget();
        }
    } else if (change == ItemDevicePixelRatioHasChanged) {
        updateBudget();
    }
    // A hidden item needs no picture; it makes a new request when it becomes visible.
    if (change == ItemSceneChange || change == ItemVisibleHasChanged) {
        m_studio->cancel(*this);
        m_stableTimer.stop();
        m_placement.reset();
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
    // Rounded separately from the position, so that all boxes in a row have the same size.
    const QSize pixels(wholePixels(width() * scale.width()), wholePixels(BoxFront::heightOf(width()) * scale.height()));
    const QPointF offset = QPointF(wholePixels(origin.x()), wholePixels(origin.y())) - origin;
    return {pixels, QRectF(offset.x() / scale.width(), offset.y() / scale.height(), pixels.width() / scale.width(),
                           pixels.height() / scale.height())};
}

/** Called for each frame. Detects whether the item was moved or scaled, also by an ancestor. */
void CassetteItem::updatePlacement()
{
    if (!isVisible() || width() <= 0)
        return;
    const Placement now = placement();
    if (now.pixels.isEmpty())
        return;
    const std::optional<Placement> before = std::exchange(m_placement, now);
    if (!before) {
        m_stablePixels = now.pixels;
        requestPicture();
        update();
    } else if (now.pixels != before->pixels) {
        m_stableTimer.start(stableTime, this);
        update();
    } else if (!near(now.snapped, before->snapped)) {
        update();
    }
}

void CassetteItem::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_stableTimer.timerId())
        return QQuickItem::timerEvent(event);
    m_stableTimer.stop();
    m_stablePixels = m_placement->pixels;
    requestPicture();
}

CassetteRenderer CassetteItem::rendererFor(const VHSCover& cover) const
{
    return {m_form, cover, width(), m_stablePixels};
}

void CassetteItem::requestPicture()
{
    if (const auto picture = m_studio->request(*this, rendererFor(m_cover)))
        setPicture(picture);
}

void CassetteItem::updateBudget()
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

void CassetteItem::setPicture(const CassetteStudio::Picture& picture)
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
    const bool pixelForPixel = m_picture && m_placement && m_picture->box.size() == m_placement->pixels;
    if (m_picture)
        node->showPicture(m_picture, pixelForPixel ? m_placement->snapped : area, pixelForPixel);
    else
        node->showPlate(CoverArt::skyTop(m_cover.hue), area, radius());
    return node;
}
