#include "TickerCrawl.h"

#include "BroadcastTexts.h"
#include "Clock.h"
#include "EveryFrame.h"
#include "HubURL.h"
#include "ShortenedText.h"

#include <QFontMetricsF>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace {

int wholePixels(double pixels)
{
    return int(std::floor(pixels + 0.5));
}

/** Its matrix leads to device pixels, so that the tiles need no scaling. */
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
        // Only now: the software adaptation looks for the texture at once.
        node->appendChildNode(image);
        left += tile.width();
    }
    return node;
}

} // namespace

TickerCrawl::TickerCrawl(QQuickItem* parent)
    : QQuickItem(parent), m_frames(std::make_unique<EveryFrame>([this] { follow(); })), m_ascent(0)
{
    setFlag(ItemHasContents);
    const QFontMetricsF metrics(TickerPrint::font());
    m_ascent = metrics.ascent();
    setImplicitHeight(metrics.height());
    m_print.text = tickerText({}, hubBase().host());
}

TickerCrawl::~TickerCrawl()
{
    m_order.request_stop();
}

void TickerCrawl::setLines(const QStringList& lines)
{
    if (m_lines == lines)
        return;
    m_lines = lines;
    m_print.text = tickerText(lines, hubBase().host());
    m_print.width = 0; // to be ordered at the next frame, which there is none of out of sight
    Q_EMIT linesChanged();
}

void TickerCrawl::setTimepiece(Timepiece* timepiece)
{
    if (m_timepiece == timepiece)
        return;
    m_timepiece = timepiece;
    Q_EMIT timepieceChanged();
}

QString TickerCrawl::text() const
{
    return shortenedLine(m_print.text);
}

bool TickerCrawl::isCrawling() const
{
    return m_frames->state() == QAbstractAnimation::Running;
}

void TickerCrawl::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange || change == ItemVisibleHasChanged) {
        m_frames->stop();
        const bool hasWindow = change == ItemSceneChange ? data.window != nullptr : window() != nullptr;
        if (hasWindow && isVisible()) {
            m_frames->start();
            update();
        }
    }
    QQuickItem::itemChange(change, data);
}

TickerCrawl::Ground TickerCrawl::ground() const
{
    const QTransform toScene = itemTransform(nullptr, nullptr);
    const double ratio = window()->effectiveDevicePixelRatio();
    return {toScene.map(QPointF()) * ratio, toScene.m11() * ratio};
}

/** Where the line's left edge and baseline belong now, in device pixels. */
QPoint TickerCrawl::place(const Ground& ground) const
{
    const double offset = tickerOffset(width(), m_picture->period, m_timepiece->clock().now());
    return {wholePixels(ground.origin.x() + offset * ground.scale),
            wholePixels(ground.origin.y() + m_ascent * ground.scale)};
}

/** Once a frame: asks for a drawing if the line has to stand elsewhere, and for a line that fits the display. */
void TickerCrawl::follow()
{
    if (!m_timepiece || width() <= 0)
        return;
    const Ground now = ground();
    if (now.scale <= 0)
        return;
    if (m_print.width != width() || m_print.scale != now.scale) {
        m_print.width = width();
        m_print.scale = now.scale;
        order();
    }
    if (m_picture && (m_isNewPicture || m_placed != place(now)))
        update();
}

/** Has the present line painted, in place of whatever is being painted. */
void TickerCrawl::order()
{
    m_isOutdated = true;
    m_order.request_stop();
    if (!m_isWorking)
        work();
}

QCoro::Task<void> TickerCrawl::work()
{
    const CancelToken token = m_tasks.token();
    m_isWorking = true;
    while (m_isOutdated) {
        m_isOutdated = false;
        m_order = std::stop_source();
        const Completion<TickerPicture> painting =
            m_worker.run([print = m_print, stop = m_order.get_token()] { return print.paint(stop); });
        TickerPicture picture = co_await painting;
        if (token.isCancelled())
            co_return;
        if (m_isOutdated)
            continue;
        m_picture = std::move(picture);
        m_isNewPicture = true;
    }
    m_isWorking = false;
}

QSGNode* TickerCrawl::updatePaintNode(QSGNode* old, UpdatePaintNodeData*)
{
    const Ground now = ground();
    if (!m_picture || !m_timepiece || now.scale <= 0) {
        delete old;
        return nullptr;
    }
    auto* node = static_cast<QSGTransformNode*>(old);
    if (!node || m_isNewPicture) {
        delete node;
        node = nodeOf(*m_picture, *window());
        m_isNewPicture = false;
    }
    const QPoint placed = place(now);
    m_placed = placed;
    const QPointF moved = (placed - now.origin) / now.scale;
    QMatrix4x4 matrix;
    matrix.translate(float(moved.x()), float(moved.y()));
    matrix.scale(float(1 / now.scale));
    node->setMatrix(matrix);
    return node;
}
