#pragma once

#include "Messenger.h"

#include <QImage>
#include <QSize>

#include <functional>

namespace quillmere {

/** Called on the screen thread when there is a new picture. The callback may be destroyed at any time. */
using PictureListener = Messenger<std::function<void()>>;

/**
 * Draws the frames of an engine into memory, on its own thread. Its functions are called on the screen thread only; the
 * item on screen owns it. The destructor does not wait for the thread, which releases the engine when it ends.
 */
class SoftwareRenderer
{
public:
    virtual ~SoftwareRenderer() = default;

    /** Size of the picture in device pixels; the frame is letterboxed in it with black. */
    virtual void setSize(QSize pixels) = 0;

    /** The newest picture, opaque; null before the first. Its pixels do not change before the next call. */
    virtual QImage picture() = 0;
};

} // namespace quillmere
