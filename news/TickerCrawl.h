#pragma once

#include "TaskScope.h"
#include "TickerPrint.h"
#include "Timepiece.h"
#include "Worker.h"

#include <QCoroTask>
#include <QPointer>
#include <QQuickItem>

#include <memory>
#include <optional>

class QAbstractAnimation;

/**
 * The line of text that crawls from right to left through its width, where it stands decided by the clock alone. The line is
 * painted in the background, pixel for pixel, and then only moved, by whole device pixels: a frame in which it would stay
 * where it is asks for no drawing, and one out of sight asks for none. Until a new line is painted the old one crawls on.
 * Screen thread only; its parent item owns it, the timepiece outlives it. Rotations and shears are not followed.
 */
class TickerCrawl : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    /** What the hub has to say; nothing for the station's own line. */
    Q_PROPERTY(QStringList lines READ lines WRITE setLines NOTIFY linesChanged FINAL)
    Q_PROPERTY(Timepiece* timepiece READ timepiece WRITE setTimepiece NOTIFY timepieceChanged FINAL)
    /** What it says, for whom cannot see it. */
    Q_PROPERTY(QString text READ text NOTIFY linesChanged FINAL)

public:
    explicit TickerCrawl(QQuickItem* parent = nullptr);
    ~TickerCrawl() override;

    const QStringList& lines() const { return m_lines; }
    void setLines(const QStringList& lines);
    Timepiece* timepiece() const { return m_timepiece; }
    void setTimepiece(Timepiece* timepiece);
    QString text() const;

    /** Whether what crawls is the present line at its present size. */
    bool isUpToDate() const { return m_picture && !m_isWorking && m_print.width == width(); }
    /** Whether it looks at the clock at every frame. */
    bool isCrawling() const;

Q_SIGNALS:
    void linesChanged();
    void timepieceChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    /** How the item lies on the display. */
    struct Ground
    {
        QPointF origin; ///< device pixels
        double scale;   ///< device pixels a point
    };

    Ground ground() const;
    QPoint place(const Ground& ground) const;
    void follow();
    void order();
    QCoro::Task<void> work();

    QStringList m_lines;
    QPointer<Timepiece> m_timepiece;
    std::unique_ptr<QAbstractAnimation> m_frames; ///< runs while there is something to see
    double m_ascent;                              ///< of the font, in points
    TickerPrint m_print;                          ///< the present one
    std::optional<TickerPicture> m_picture;
    bool m_isNewPicture = false;    ///< the scene graph has not seen it
    std::optional<QPoint> m_placed; ///< where the line's left edge and baseline stand on the glass, in device pixels
    bool m_isOutdated = false;      ///< the print has changed since it was ordered
    bool m_isWorking = false;
    std::stop_source m_order;
    Worker m_worker;
    TaskScope m_tasks;
};
