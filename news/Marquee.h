#pragma once

#include "Clock.h"

#include <QPointer>
#include <QQuickItem>

#include <memory>

class QAbstractAnimation;

namespace quillmere {

/**
 * Clip area for a one-line text that may be wider than the item. While `running`, such a text scrolls: it pauses at its
 * start, moves until its end is visible, pauses again, and repeats. `offset` is its current position. It moves by whole
 * device pixels. During pauses, and if the text fits, it requests no frames. Screen thread only; its parent item owns
 * it, the clock outlives it.
 */
class Marquee : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::Clock* clock MEMBER m_clock NOTIFY clockChanged FINAL)
    Q_PROPERTY(QString text MEMBER m_text NOTIFY textChanged FINAL)
    /** Width of the full text, in points. */
    Q_PROPERTY(double textWidth MEMBER m_textWidth NOTIFY textWidthChanged FINAL)
    Q_PROPERTY(bool running MEMBER m_running NOTIFY runningChanged FINAL)
    /** Whether to show the full text at `offset`; if not, the elided text. */
    Q_PROPERTY(bool showsFullText READ showsFullText NOTIFY showsFullTextChanged FINAL)
    /** x position of the full text, in points. */
    Q_PROPERTY(double offset READ offset NOTIFY offsetChanged FINAL)

public:
    static constexpr std::chrono::milliseconds startPause{1500}; ///< pause before the text moves
    static constexpr std::chrono::milliseconds endPause{2000};   ///< pause at the end of the text
    static constexpr double speed = 120;                         ///< points per second, slow enough to read

    explicit Marquee(QQuickItem* parent = nullptr);
    ~Marquee() override;

    bool showsFullText() const { return m_showsFullText; }
    double offset() const { return m_offset; }

Q_SIGNALS:
    void clockChanged();
    void textChanged();
    void textWidthChanged();
    void runningChanged();
    void showsFullTextChanged();
    void offsetChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    double overflow() const { return m_textWidth - width(); }
    void restart();
    void beginCycle();
    void onFrame();
    void moveTo(double travelled);

    QPointer<Clock> m_clock;
    QString m_text;
    double m_textWidth = 0;
    bool m_running = false;
    bool m_showsFullText = false;
    double m_offset = 0;
    std::chrono::milliseconds m_start{0};                ///< of the motion, as elapsed time of the clock
    std::unique_ptr<Clock::Timer> m_pauseTimer;          ///< exists during pauses
    std::unique_ptr<QAbstractAnimation> m_frameCallback; ///< runs while the text moves
};

} // namespace quillmere
