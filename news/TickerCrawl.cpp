#include "TickerCrawl.h"

#include "BroadcastTexts.h"
#include "Clock.h"
#include "FrameCallback.h"
#include "HubURL.h"
#include "Text.h"

#include <QFontMetricsF>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace quillmere {

namespace {

int wholePixels(double pixels)
{
    return int(std::floor(pixels + 0.5));
}

/** Creates a node that shows the tiles. Its coordinates are device pixels, so that the tiles are not scaled. */
QSGTransformNode* nodeOf(const TickerPicture& picture, QQuickWindow& window)
{
    auto* node = new QSGTransformNode;
    int left = 0;
    for (const QImage& tile : picture.tiles) {
        QSGImageNode* image = window.createImageNode();
        image->setOwnsTexture(true);
        image->setTexture(window.createTextureFromImage(tile));
        image->setSourceRect(tile.rect());
        image->setRect(left, -picture.baseline, tile.width(), tile.height());
        image->setFiltering(QSGTexture::Nearest);
        // Appended last, because the software renderer reads the texture as soon as the node is in the tree.
        node->appendChildNode(image);
        left += tile.width();
    }
    return node;
}

} // namespace

TickerCrawl::TickerCrawl(QQuickItem* parent)
    : QQuickItem(parent), m_frameCallback(std::make_unique<FrameCallback>([this] { onFrame(); })), m_ascent(0)
{
    setFlag(ItemHasContents);
    const QFontMetricsF metrics(TickerRenderer::font());
    m_ascent = metrics.ascent();
    setImplicitHeight(metrics.height());
    m_renderer.text = tickerText({}, hubBase().host());
}

TickerCrawl::~TickerCrawl()
{
    m_stopSource.request_stop();
}

void TickerCrawl::setLines(const QStringList& lines)
{
    if (m_lines == lines)
        return;
    m_lines = lines;
    m_renderer.text = tickerText(lines, hubBase().host());
    m_renderer.width = 0; // onFrame() then requests a picture; it is not called while the item is not visible
    Q_EMIT linesChanged();
}

QString TickerCrawl::text() const
{
    return shortenedLine(m_renderer.text);
}

bool TickerCrawl::isCrawling() const
{
    return m_frameCallback->state() == QAbstractAnimation::Running;
}

void TickerCrawl::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange || change == ItemVisibleHasChanged) {
        m_frameCallback->stop();
        const bool hasWindow = change == ItemSceneChange ? data.window != nullptr : window() != nullptr;
        if (hasWindow && isVisible()) {
            m_frameCallback->start();
            update();
        }
    }
    QQuickItem::itemChange(change, data);
}

/** Current position of the left end of the line's baseline on the display, in device pixels. */
QPoint TickerCrawl::linePosition(const DevicePixels& device) const
{
    const double offset = tickerOffset(width(), m_picture->period, m_clock->now());
    return {wholePixels(device.origin.x() + offset * device.scale.width()),
            wholePixels(device.origin.y() + m_ascent * device.scale.width())};
}

/** Called once a frame. Requests a new picture if size or scale changed, and drawing if the line moves by a pixel. */
void TickerCrawl::onFrame()
{
    if (!m_clock || width() <= 0)
        return;
    const DevicePixels now(*this);
    if (now.scale.width() <= 0)
        return;
    if (m_renderer.width != width() || m_renderer.scale != now.scale.width()) {
        m_renderer.width = width();
        m_renderer.scale = now.scale.width();
        requestPicture();
    }
    if (m_picture && (m_isPictureNew || m_linePosition != linePosition(now)))
        update();
}

/** Starts painting the current line. Stops the painting of an older one. */
void TickerCrawl::requestPicture()
{
    m_isDirty = true;
    m_stopSource.request_stop();
    if (!m_isRendering)
        renderPictures();
}

QCoro::Task<void> TickerCrawl::renderPictures()
{
    const std::stop_token token = m_tasks.token();
    m_isRendering = true;
    while (m_isDirty) {
        m_isDirty = false;
        m_stopSource = std::stop_source();
        const Completion<TickerPicture> painting =
            m_worker.run([renderer = m_renderer, stop = m_stopSource.get_token()] { return renderer.paint(stop); });
        TickerPicture picture = co_await painting;
        if (token.stop_requested())
            co_return;
        if (m_isDirty)
            continue;
        m_picture = std::move(picture);
        m_isPictureNew = true;
    }
    m_isRendering = false;
}

QSGNode* TickerCrawl::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    const DevicePixels now(*this);
    if (!m_picture || !m_clock || now.scale.width() <= 0) {
        delete old;
        return nullptr;
    }
    auto* node = static_cast<QSGTransformNode*>(old);
    if (!node || m_isPictureNew) {
        delete node;
        node = nodeOf(*m_picture, *window());
        m_isPictureNew = false;
    }
    const QPoint position = linePosition(now);
    m_linePosition = position;
    const QPointF offset = (position - now.origin) / now.scale.width();
    QMatrix4x4 matrix;
    matrix.translate(float(offset.x()), float(offset.y()));
    matrix.scale(float(1 / now.scale.width()));
    node->setMatrix(matrix);
    return node;
}

} // namespace quillmere
