#include "MpvSoftwareRenderer.h"

#include "MpvCore.h"
#include "MpvEngine.h"
#include "PictureBuffers.h"

#include <mpv/render.h>

#include <atomic>
#include <condition_variable>
#include <thread>

namespace {

constexpr quint32 opaque = 0xff000000;

// libmpv leaves the unused byte of the letterbox's pixels 0, which a window with a see-through format would show.
void makeLetterboxOpaque(const PictureBuffers::Picture& picture)
{
    const int width = picture.size.width();
    const int height = picture.size.height();
    const auto row = [&picture](int y) {
        return reinterpret_cast<quint32*>(picture.pixels.get() + y * picture.stride);
    };
    const auto fill = [&row](int y, int from, int to) {
        for (int x = from; x < to; ++x)
            row(y)[x] |= opaque;
    };
    int top = 0;
    while (top < height && !(row(top)[width / 2] & opaque))
        fill(top++, 0, width);
    int bottom = height;
    while (bottom > top && !(row(bottom - 1)[width / 2] & opaque))
        fill(--bottom, 0, width);
    if (top == bottom)
        return;
    int left = 0;
    while (left < width && !(row(top)[left] & opaque))
        ++left;
    int right = width;
    while (right > left && !(row(top)[right - 1] & opaque))
        --right;
    for (int y = top; y < bottom; ++y) {
        fill(y, 0, left);
        fill(y, right, width);
    }
}

} // namespace

/** The thread that draws: makes the render context, draws each picture when its time comes, frees the context. */
class MpvSoftwareRenderer::Drawing
{
public:
    Drawing(std::shared_ptr<MpvEngine> engine, PictureListener changed)
        : m_engine(std::move(engine)), m_changed(std::move(changed))
    {}

    void run()
    {
        pthread_setname_np(pthread_self(), "video-picture");
        if (create())
            draw();
        mpv_render_context_free(m_context);
        m_engine.reset();
    }

    void setSize(QSize pixels)
    {
        const std::lock_guard lock(m_mutex);
        m_size = pixels;
        m_called = true;
        m_wake.notify_one();
    }

    void end()
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
        m_wake.notify_one();
    }

    QImage picture()
    {
        m_announced = false;
        return m_buffers.toShow();
    }

private:
    bool create()
    {
        char api[] = MPV_RENDER_API_TYPE_SW;
        mpv_render_param parameters[] = {{MPV_RENDER_PARAM_API_TYPE, api}, {MPV_RENDER_PARAM_INVALID, nullptr}};
        MpvCore& core = m_engine->core();
        if (mpv_render_context_create(&m_context, core.handle(), parameters) < 0) {
            core.listener().post([](VideoEngineListener& listener) {
                listener.engineFailed({VideoFailure::Cause::NoPicture, 0, QStringLiteral("no software renderer")});
            });
            return false;
        }
        mpv_render_context_set_update_callback(
            m_context, [](void* self) { static_cast<Drawing*>(self)->call(); }, this);
        core.post([](MpvCore& ready) { ready.drawInMemory(); });
        core.listener().post([](VideoEngineListener& listener) { listener.rendererReady(); });
        return true;
    }

    void call()
    {
        const std::lock_guard lock(m_mutex);
        m_called = true;
        m_wake.notify_one();
    }

    void draw()
    {
        QSize drawn;
        std::unique_lock lock(m_mutex);
        while (true) {
            m_wake.wait(lock, [this] { return m_called || m_ending; });
            if (m_ending)
                return;
            m_called = false;
            const QSize size = m_size;
            lock.unlock();
            const bool fresh = mpv_render_context_update(m_context) & MPV_RENDER_UPDATE_FRAME;
            const bool resized = !drawn.isEmpty() && drawn != size;
            if (!size.isEmpty() && (fresh || resized)) {
                drawOne(size);
                drawn = size;
            }
            lock.lock();
        }
    }

    void drawOne(QSize size)
    {
        const PictureBuffers::Picture& picture = m_buffers.toDraw(size);
        int extent[] = {size.width(), size.height()};
        char format[] = "bgr0";
        size_t stride = size_t(picture.stride);
        mpv_render_param parameters[] = {{MPV_RENDER_PARAM_SW_SIZE, extent},
                                         {MPV_RENDER_PARAM_SW_FORMAT, format},
                                         {MPV_RENDER_PARAM_SW_STRIDE, &stride},
                                         {MPV_RENDER_PARAM_SW_POINTER, picture.pixels.get()},
                                         {MPV_RENDER_PARAM_INVALID, nullptr}};
        // Returns when the picture's time has come.
        if (mpv_render_context_render(m_context, parameters) < 0)
            return;
        makeLetterboxOpaque(picture);
        m_buffers.drawn();
        if (!m_announced.exchange(true))
            m_changed.post([](const std::function<void()>& changed) { changed(); });
    }

    std::shared_ptr<MpvEngine> m_engine; ///< let go of after the context
    const PictureListener m_changed;
    mpv_render_context* m_context = nullptr;
    PictureBuffers m_buffers;
    std::atomic<bool> m_announced = false; ///< the screen thread knows of a picture it has not taken

    std::mutex m_mutex; ///< guards the rest
    std::condition_variable m_wake;
    QSize m_size;
    bool m_called = false;
    bool m_ending = false;
};

MpvSoftwareRenderer::MpvSoftwareRenderer(std::shared_ptr<MpvEngine> engine, PictureListener changed)
    : m_drawing(std::make_shared<Drawing>(std::move(engine), std::move(changed)))
{
    std::thread([drawing = m_drawing] { drawing->run(); }).detach();
}

MpvSoftwareRenderer::~MpvSoftwareRenderer()
{
    m_drawing->end();
}

void MpvSoftwareRenderer::setSize(QSize pixels)
{
    m_drawing->setSize(pixels);
}

QImage MpvSoftwareRenderer::picture()
{
    return m_drawing->picture();
}
