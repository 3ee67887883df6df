#include "DiagonalGradient.h"

#include <QPainter>

namespace quillmere {

void DiagonalGradient::paint(QPainter& painter, const QSizeF& size) const
{
    QLinearGradient gradient(0, 0, size.width(), size.height());
    gradient.setColorAt(0, m_from);
    gradient.setColorAt(1, m_to);
    painter.fillRect(QRectF(QPointF(), size), gradient);
}

} // namespace quillmere
