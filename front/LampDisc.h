#pragma once

#include "PaintedItem.h"

namespace quillmere {

/**
 * Disc of the on-air lamp, in the colour `onAirRed` of StationPalette if `live`, else in `soot`. It always has a thin
 * rim in `parchment`.
 */
class LampDisc : public quillmere::PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool live READ isLive WRITE setLive NOTIFY artChanged FINAL)

public:
    using PaintedItem::PaintedItem;

    bool isLive() const { return m_live; }
    void setLive(bool live) { setInput(m_live, live); }

    void paint(QPainter& painter, const QSizeF& size) const override;

private:
    bool m_live = false;
};

} // namespace quillmere
