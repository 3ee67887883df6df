#include "PictureBuffers.h"

#include <new>
#include <utility>

namespace quillmere {

namespace {

// Bytes. The vector instructions of libmpv's scaler are fastest with this alignment.
constexpr size_t alignment = 64;

PictureBuffers::Picture createPicture(QSize size)
{
    const qsizetype stride = (qsizetype(size.width()) * 4 + qsizetype(alignment) - 1) & ~(qsizetype(alignment) - 1);
    auto* const pixels =
        static_cast<uchar*>(::operator new(size_t(stride * size.height()), std::align_val_t(alignment)));
    return {{pixels, [](uchar* memory) { ::operator delete(memory, std::align_val_t(alignment)); }}, size, stride};
}

} // namespace

const PictureBuffers::Picture& PictureBuffers::drawBuffer(QSize size)
{
    if (m_drawing.size != size)
        m_drawing = createPicture(size);
    return m_drawing;
}

void PictureBuffers::publish()
{
    const std::lock_guard lock(m_mutex);
    std::swap(m_drawing, m_newest);
    m_hasNewest = true;
}

QImage PictureBuffers::newestImage()
{
    {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_hasNewest, false))
            std::swap(m_newest, m_displayed);
    }
    if (!m_displayed.pixels)
        return {};
    auto* const reference = new std::shared_ptr<uchar>(m_displayed.pixels);
    return QImage(
        m_displayed.pixels.get(), m_displayed.size.width(), m_displayed.size.height(), m_displayed.stride,
        QImage::Format_RGB32, [](void* reference) { delete static_cast<std::shared_ptr<uchar>*>(reference); },
        reference);
}

} // namespace quillmere
