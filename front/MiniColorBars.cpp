#include "MiniColorBars.h"

#include <QPainter>

namespace quillmere {

void MiniColorBars::paint(QPainter& painter, const QSizeF& size) const
{
    // Without antialiasing, stripes end on whole pixels, so that no seam is visible between them.
    painter.setRenderHint(QPainter::Antialiasing, false);
    const double width = size.width() / double(m_bars.size());
    for (qsizetype i = 0; i < m_bars.size(); ++i)
        painter.fillRect(QRectF(double(i) * width, 0, width, size.height()), m_bars.at(i));
}

} // namespace quillmere
