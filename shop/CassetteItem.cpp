#include "CassetteItem.h"

#include "BoxFront.h"
#include "CassetteNode.h"
#include "CoverArt.h"
#include "DevicePixels.h"

#include <QQuickWindow>

#include <algorithm>
#include <cmath>

namespace quillmere {

CassetteItem::CassetteItem(CassetteRenderer::Form form, QQuickItem* parent)
    : PixelAlignedItem(parent), m_form(form), m_studio(CassetteStudio::shared())
{}

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
        disconnect(m_heightConnection);
        if (data.window) {
            m_heightConnection = connect(data.window, &QQuickWindow::heightChanged, this, &CassetteItem::updateBudget);
            updateBudget();
        }
    } else if (change == ItemDevicePixelRatioHasChanged) {
        updateBudget();
    }
    // A hidden item needs no picture; it makes a new request when it becomes visible.
    if (change == ItemSceneChange || change == ItemVisibleHasChanged) {
        m_studio->cancel(*this);
        stopStableTimer();
        m_placement.reset();
    }
    PixelAlignedItem::itemChange(change, data);
}

void CassetteItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    PixelAlignedItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width())
        setImplicitHeight(BoxFront::heightOf(newGeometry.width()));
    if (newGeometry.size() != oldGeometry.size())
        update();
}

void CassetteItem::trackPlacement()
{
    if (!isVisible() || width() <= 0)
        return;
    const auto now = PixelPlacement::rounded(DevicePixels(*this), {width(), BoxFront::heightOf(width())});
    if (now.pixels.isEmpty())
        return;
    const std::optional<PixelPlacement> before = std::exchange(m_placement, now);
    if (!before) {
        m_stablePixels = now.pixels.size();
        requestPicture();
        update();
    } else if (now.pixels != before->pixels) {
        restartStableTimer();
        update();
    } else if (now != *before) {
        update();
    }
}

void CassetteItem::onStable()
{
    m_stablePixels = m_placement->pixels.size();
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
    const bool pixelForPixel = m_picture && m_placement && m_picture->box.size() == m_placement->pixels.size();
    if (m_picture)
        node->showPicture(m_picture, pixelForPixel ? m_placement->area() : area, pixelForPixel);
    else
        node->showPlate(CoverArt::skyTop(m_cover.hue), area, radius());
    return node;
}

} // namespace quillmere
