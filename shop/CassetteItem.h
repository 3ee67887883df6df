#pragma once

#include "CassetteStudio.h"
#include "PixelAlignedItem.h"
#include "PixelPlacement.h"

#include <optional>

namespace quillmere {

/**
 * A cassette on the screen. It shows the picture from the CassetteStudio, painted at the displayed size and aligned to
 * device pixels; until that arrives, a plate in the top colour of the cover's sky. The item's area is the box; the
 * outer half of the outline and a long bar code extend beyond it. While an ancestor scales the item, the current
 * picture is scaled; once the size is stable, a picture of that size is requested. Moves by whole device pixels cost
 * nothing. Screen thread only; its parent item owns it. Rotation and shear are not supported.
 */
class CassetteItem : public quillmere::PixelAlignedItem, private CassetteStudio::Client
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CassetteItem)
    QML_UNCREATABLE("Base class of the cassettes")
    Q_PROPERTY(quillmere::VHSCover cover READ cover WRITE setCover NOTIFY coverChanged FINAL)
    /** Radius of the box's corners, in points. */
    Q_PROPERTY(double radius READ radius NOTIFY widthChanged FINAL)

public:
    ~CassetteItem() override;

    const VHSCover& cover() const { return m_cover; }
    void setCover(const VHSCover& cover);
    double radius() const;

    /** Whether it shows a picture of its cover, possibly scaled, and not the plate. */
    bool hasPicture() const { return m_picture != nullptr; }

Q_SIGNALS:
    void coverChanged();

protected:
    CassetteItem(CassetteRenderer::Form form, QQuickItem* parent);

    void trackPlacement() override;
    void onStable() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    double distance() const override;
    void setPicture(const CassetteStudio::Picture& picture) override;

    CassetteRenderer rendererFor(const VHSCover& cover) const;
    void requestPicture();
    void updateBudget();

    CassetteRenderer::Form m_form;
    VHSCover m_cover;
    std::shared_ptr<CassetteStudio> m_studio;
    CassetteStudio::Picture m_picture;         ///< null for the plate
    std::optional<PixelPlacement> m_placement; ///< of the box, in the last frame
    QSize m_stablePixels;                      ///< size of the box in device pixels for which pictures are requested
    QMetaObject::Connection m_heightConnection;
};

} // namespace quillmere
