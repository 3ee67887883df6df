#pragma once

#include "Messenger.h"

#include <QImage>
#include <QSize>

#include <functional>

/** Called on the screen thread when there is a new picture; whoever holds the other end goes when it likes. */
using PictureListener = Messenger<std::function<void()>>;

/**
 * Draws the pictures of an engine into memory, on a thread of its own. Screen thread only; the item on screen owns it.
 * Destroying it does not wait for the thread, which lets go of the engine when it ends.
 */
class SoftwareRenderer
{
public:
    virtual ~SoftwareRenderer() = default;

    /** The size to draw at, in device pixels; the picture is letterboxed in it with black. */
    virtual void setSize(QSize pixels) = 0;

    /** The newest picture, opaque; null before the first. Its memory is its own until the next call. */
    virtual QImage picture() = 0;
};
