#pragma once

#include "MiniColorBars.h"

/** The test picture of a dark tower: `bars` upright, a band of them in reverse order, and a foot of six dark and bright cells. */
class ColorBars : public MiniColorBars
{
    Q_OBJECT
    QML_ELEMENT

public:
    using MiniColorBars::MiniColorBars;

    void paint(QPainter& painter, const QSizeF& size) const override;
};
