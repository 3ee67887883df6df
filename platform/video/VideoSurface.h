#pragma once

#include <QSize>
#include <QSizeF>

/** What a VideoView puts on screen for one way of drawing. Screen thread only; the view owns it. */
class VideoSurface
{
public:
    virtual ~VideoSurface() = default;

    /** The view's size in its own units, and in device pixels. Cheap when nothing changed. */
    virtual void fit(QSizeF size, QSize pixels) = 0;
};
