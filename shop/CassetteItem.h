#pragma once

#include "CassetteStudio.h"

#include <QBasicTimer>
#include <QQuickItem>

#include <optional>

/**
 * A cassette on the screen: its picture, painted elsewhere at the size really shown and laid on whole device pixels,
 * and until it is there a plate in the top colour of the cover's sky. The item is the box; its outline, half of it, and
 * a long bar code reach beyond. While an ancestor scales it the picture at hand
 * is scaled; the one of the new size follows when it has come to rest. Moving it by whole pixels costs nothing.
 * Screen thread only; its parent item owns it. Rotations and shears are not followed.
 */
class CassetteItem : public QQuickItem, private CassetteStudio::Customer
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CassetteItem)
    QML_UNCREATABLE("A base for the cassettes")
    Q_PROPERTY(VHSCover cover READ cover WRITE setCover NOTIFY coverChanged FINAL)
    /** Of the box's corners, in points. */
    Q_PROPERTY(double radius READ radius NOTIFY widthChanged FINAL)

public:
    ~CassetteItem() override;

    const VHSCover& cover() const { return m_cover; }
    void setCover(const VHSCover& cover);
    double radius() const;

    /** Whether it shows the picture of its cover, be it at another size, and not the plate. */
    bool hasPicture() const { return m_picture != nullptr; }

Q_SIGNALS:
    void coverChanged();

protected:
    CassetteItem(CassettePrint::Form form, QQuickItem* parent);

    void timerEvent(QTimerEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    /** How the item lies on the display. */
    struct Placement
    {
        QSize pixels;
        QRectF snapped; ///< the item's area moved to whole device pixels, in its own coordinates
    };

    double distance() const override;
    void take(const CassetteStudio::Picture& picture) override;

    Placement placement() const;
    void follow();
    CassettePrint printOf(const VHSCover& cover) const;
    void order();
    void adaptBudget();

    CassettePrint::Form m_form;
    VHSCover m_cover;
    std::shared_ptr<CassetteStudio> m_studio;
    CassetteStudio::Picture m_picture; ///< null for the plate
    std::optional<Placement> m_placed; ///< in the latest frame
    QSize m_restingPixels;             ///< the size at which it last was at rest
    QBasicTimer m_settling;            ///< runs from the latest change of size until it counts as the last
    QMetaObject::Connection m_frames;
    QMetaObject::Connection m_heights;
};
