#pragma once

#include <QQuickItem>

namespace quillmere {

/**
 * The layout area of every screen: 1920 by 1080 points, scaled uniformly to fit its parent and centred in it.
 * Screen thread only; owned by its parent item.
 */
class Canvas : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** The whole area of the parent, in canvas points: the canvas and the margins beside it. */
    Q_PROPERTY(QRectF visibleArea READ visibleArea NOTIFY visibleAreaChanged FINAL)

public:
    static constexpr QSizeF points{1920, 1080};

    explicit Canvas(QQuickItem* parent = nullptr);

    QRectF visibleArea() const { return m_visibleArea; }

Q_SIGNALS:
    void visibleAreaChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void connectTo(QQuickItem* parent);
    void fit();

    QRectF m_visibleArea{QPointF(), points};
    QList<QMetaObject::Connection> m_connections;
};

} // namespace quillmere
