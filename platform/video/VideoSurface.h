#pragma once

#include <QSize>
#include <QSizeF>

namespace quillmere {

/** The item of a VideoView that shows the video, for one graphics API. Screen thread only; the view owns it. */
class VideoSurface
{
public:
    virtual ~VideoSurface() = default;

    /** Sets the view's size, in item coordinates and in device pixels. Cheap when nothing changed. */
    virtual void resize(QSizeF size, QSize pixels) = 0;
};

} // namespace quillmere
