#include "MpvSoftwareRenderer.h"

#include "MpvCore.h"
#include "MpvEngine.h"
#include "PictureBuffers.h"

#include <mpv/render.h>

#include <atomic>
#include <condition_variable>
#include <thread>

namespace quillmere {

namespace {

constexpr quint32 opaque = 0xff000000;

// libmpv sets the unused byte of the letterbox to 0, which is transparent in a window with an alpha channel.
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

/** The drawing thread: creates the render context, draws each picture at its display time, frees the context. */
class MpvSoftwareRenderer::DrawThread
{
public:
    DrawThread(std::shared_ptr<MpvEngine> engine, PictureListener listener)
        : m_engine(std::move(engine)), m_listener(std::move(listener))
    {}

    void run()
    {
        pthread_setname_np(pthread_self(), "video-picture");
        if (create())
            runLoop();
        mpv_render_context_free(m_context);
        m_engine.reset();
    }

    void setSize(QSize pixels)
    {
        const std::lock_guard lock(m_mutex);
        m_size = pixels;
        m_updateRequested = true;
        m_wakeUp.notify_one();
    }

    void end()
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
        m_wakeUp.notify_one();
    }

    QImage picture()
    {
        m_notified = false;
        return m_buffers.newestImage();
    }

private:
    bool create()
    {
        char api[] = MPV_RENDER_API_TYPE_SW;
        mpv_render_param parameters[] = {{MPV_RENDER_PARAM_API_TYPE, api}, {MPV_RENDER_PARAM_INVALID, nullptr}};
        MpvCore& core = m_engine->core();
        if (mpv_render_context_create(&m_context, core.handle(), parameters) < 0) {
            core.listener().post([](VideoEngineListener& listener) {
                listener.onEngineFailed({VideoFailure::Cause::NoPicture, 0, QStringLiteral("no software renderer")});
            });
            return false;
        }
        mpv_render_context_set_update_callback(
            m_context, [](void* self) { static_cast<DrawThread*>(self)->requestUpdate(); }, this);
        core.post([](MpvCore& target) { target.useSoftwareRenderer(); });
        core.listener().post([](VideoEngineListener& listener) { listener.onRendererReady(); });
        return true;
    }

    void requestUpdate()
    {
        const std::lock_guard lock(m_mutex);
        m_updateRequested = true;
        m_wakeUp.notify_one();
    }

    void runLoop()
    {
        QSize drawn;
        std::unique_lock lock(m_mutex);
        while (true) {
            m_wakeUp.wait(lock, [this] { return m_updateRequested || m_ending; });
            if (m_ending)
                return;
            m_updateRequested = false;
            const QSize size = m_size;
            lock.unlock();
            const bool hasNewFrame = mpv_render_context_update(m_context) & MPV_RENDER_UPDATE_FRAME;
            const bool resized = !drawn.isEmpty() && drawn != size;
            if (!size.isEmpty() && (hasNewFrame || resized)) {
                drawPicture(size);
                drawn = size;
            }
            lock.lock();
        }
    }

    void drawPicture(QSize size)
    {
        const PictureBuffers::Picture& picture = m_buffers.drawBuffer(size);
        int extent[] = {size.width(), size.height()};
        char format[] = "bgr0";
        size_t stride = size_t(picture.stride);
        mpv_render_param parameters[] = {{MPV_RENDER_PARAM_SW_SIZE, extent},
                                         {MPV_RENDER_PARAM_SW_FORMAT, format},
                                         {MPV_RENDER_PARAM_SW_STRIDE, &stride},
                                         {MPV_RENDER_PARAM_SW_POINTER, picture.pixels.get()},
                                         {MPV_RENDER_PARAM_INVALID, nullptr}};
        // Blocks until the display time of the picture.
        if (mpv_render_context_render(m_context, parameters) < 0)
            return;
        makeLetterboxOpaque(picture);
        m_buffers.publish();
        if (!m_notified.exchange(true))
            m_listener.post([](const std::function<void()>& changed) { changed(); });
    }

    std::shared_ptr<MpvEngine> m_engine; ///< released after the context is freed
    const PictureListener m_listener;
    mpv_render_context* m_context = nullptr;
    PictureBuffers m_buffers;
    std::atomic<bool> m_notified = false; ///< the screen thread was notified and has not called `picture` since

    std::mutex m_mutex; ///< guards the members below
    std::condition_variable m_wakeUp;
    QSize m_size;
    bool m_updateRequested = false;
    bool m_ending = false;
};

MpvSoftwareRenderer::MpvSoftwareRenderer(std::shared_ptr<MpvEngine> engine, PictureListener listener)
    : m_thread(std::make_shared<DrawThread>(std::move(engine), std::move(listener)))
{
    std::thread([thread = m_thread] { thread->run(); }).detach();
}

MpvSoftwareRenderer::~MpvSoftwareRenderer()
{
    m_thread->end();
}

void MpvSoftwareRenderer::setSize(QSize pixels)
{
    m_thread->setSize(pixels);
}

QImage MpvSoftwareRenderer::picture()
{
    return m_thread->picture();
}

} // namespace quillmere
