#pragma once

#include <QImage>

#include <memory>
#include <mutex>

namespace quillmere {

/**
 * Three picture buffers in memory (triple buffering): one being drawn, the newest, and the one on screen. One thread
 * draws (`drawBuffer`, `publish`), another one displays (`newestImage`); neither waits for the other.
 */
class PictureBuffers
{
public:
    /** Opaque; four bytes per pixel: blue, green, red, unused. */
    struct Picture
    {
        std::shared_ptr<uchar> pixels;
        QSize size;
        qsizetype stride = 0;
    };

    /** A buffer of this size to draw into; nothing else reads or writes it until `publish`. */
    const Picture& drawBuffer(QSize size);

    /** Makes the drawn buffer the newest picture. */
    void publish();

    /** The newest picture; null before the first. It shares the pixels, which do not change before the next call. */
    QImage newestImage();

private:
    std::mutex m_mutex;
    Picture m_drawing;
    Picture m_newest;
    Picture m_displayed;
    bool m_hasNewest = false;
};

} // namespace quillmere
