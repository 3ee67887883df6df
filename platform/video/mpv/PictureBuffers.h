#pragma once

#include <QImage>

#include <memory>
#include <mutex>

/**
 * Three pictures in memory: one being drawn, the newest, the one on screen. Drawing never waits for showing. One
 * thread draws (`toDraw`, `drawn`), one shows (`toShow`).
 */
class PictureBuffers
{
public:
    /** Opaque, four bytes a pixel: blue, green, red, unused. */
    struct Picture
    {
        std::shared_ptr<uchar> pixels;
        QSize size;
        qsizetype stride = 0;
    };

    /** The picture to draw into, of this size; nothing else reads or writes it until `drawn`. */
    const Picture& toDraw(QSize size);

    /** Makes it the newest. */
    void drawn();

    /** The newest picture, its pixels shared; null before the first. They stay as they are until the next call. */
    QImage toShow();

private:
    std::mutex m_mutex;
    Picture m_drawing;
    Picture m_newest;
    Picture m_showing;
    bool m_fresh = false;
};
