#pragma once

#include "Clock.h"
#include "DevicePixels.h"
#include "TaskScope.h"
#include "TickerRenderer.h"
#include "Worker.h"

#include <QCoroTask>
#include <QPointer>
#include <QQuickItem>

#include <memory>
#include <optional>

class QAbstractAnimation;

namespace quillmere {

/**
 * A line of text that scrolls from right to left through the item. Its position depends only on the clock. It scrolls
 * by two widths of the item, so text beyond that never appears; a longer text only scrolls more slowly. A worker thread
 * paints the line at device resolution; after that, the picture only moves, by whole device pixels. A frame in which it
 * does not move, or is not visible, requests no drawing. Until a new line is painted, the old one keeps scrolling.
 * Screen thread only; its parent item owns it, the clock outlives it. Rotations and shears are ignored.
 */
class TickerCrawl : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** Texts from the hub; if empty, a default text is shown. */
    Q_PROPERTY(QStringList lines READ lines WRITE setLines NOTIFY linesChanged FINAL)
    Q_PROPERTY(quillmere::Clock* clock MEMBER m_clock NOTIFY clockChanged FINAL)
    /** The text for screen readers. */
    Q_PROPERTY(QString text READ text NOTIFY linesChanged FINAL)

public:
    explicit TickerCrawl(QQuickItem* parent = nullptr);
    ~TickerCrawl() override;

    const QStringList& lines() const { return m_lines; }
    void setLines(const QStringList& lines);
    QString text() const;

    /** Whether the shown picture is of the current line at its current size. */
    bool isUpToDate() const { return m_picture && !m_isRendering && m_renderer.width == width(); }
    /** Whether it reads the clock at every frame. */
    bool isCrawling() const;

Q_SIGNALS:
    void linesChanged();
    void clockChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    QPoint linePosition(const DevicePixels& device) const;
    void onFrame();
    void requestPicture();
    QCoro::Task<void> renderPictures();

    QStringList m_lines;
    QPointer<Clock> m_clock;
    std::unique_ptr<QAbstractAnimation> m_frameCallback; ///< runs while the item is visible
    double m_ascent;                                     ///< of the font, in points
    TickerRenderer m_renderer;                           ///< of the current line
    std::optional<TickerPicture> m_picture;
    bool m_isPictureNew = false;          ///< whether the scene graph must upload it
    std::optional<QPoint> m_linePosition; ///< last drawn position of the line
    bool m_isDirty = false;               ///< whether m_renderer changed since painting started
    bool m_isRendering = false;
    std::stop_source m_stopSource;
    Worker m_worker;
    TaskScope m_tasks;
};

} // namespace quillmere
