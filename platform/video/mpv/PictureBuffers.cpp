#include "PictureBuffers.h"

#include <new>
#include <utility>

namespace {

// What the scaler's vector instructions like best.
constexpr size_t alignment = 64;

PictureBuffers::Picture makePicture(QSize size)
{
    const qsizetype stride = (qsizetype(size.width()) * 4 + qsizetype(alignment) - 1) & ~(qsizetype(alignment) - 1);
    auto* const pixels =
        static_cast<uchar*>(::operator new(size_t(stride * size.height()), std::align_val_t(alignment)));
    return {{pixels, [](uchar* memory) { ::operator delete(memory, std::align_val_t(alignment)); }}, size, stride};
}

} // namespace

const PictureBuffers::Picture& PictureBuffers::toDraw(QSize size)
{
    if (m_drawing.size != size)
        m_drawing = makePicture(size);
    return m_drawing;
}

void PictureBuffers::drawn()
{
    const std::lock_guard lock(m_mutex);
    std::swap(m_drawing, m_newest);
    m_fresh = true;
}

QImage PictureBuffers::toShow()
{
    {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_fresh, false))
            std::swap(m_newest, m_showing);
    }
    if (!m_showing.pixels)
        return {};
    auto* const keep = new std::shared_ptr<uchar>(m_showing.pixels);
    return QImage(
        m_showing.pixels.get(), m_showing.size.width(), m_showing.size.height(), m_showing.stride, QImage::Format_RGB32,
        [](void* held) { delete static_cast<std::shared_ptr<uchar>*>(held); }, keep);
}
