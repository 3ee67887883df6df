#pragma once

#include "MiniColorBars.h"

namespace quillmere {

/**
 * Test picture shown while the tower is dark: the vertical `bars`, below them a band of the bars in reverse order, and
 * a bottom band of six dark and bright cells.
 */
class ColorBars : public quillmere::MiniColorBars
{
    Q_OBJECT
    QML_ELEMENT

public:
    using MiniColorBars::MiniColorBars;

    void paint(QPainter& painter, const QSizeF& size) const override;
};

} // namespace quillmere
