#pragma once

#include "Clock.h"
#include "Timepiece.h"

#include <QPointer>
#include <QQuickItem>

#include <memory>

class QAbstractAnimation;

/**
 * The room of a text on one line that may be longer. While `running`, such a text is to be shown whole at `offset`: it
 * rests at its beginning, moves until its end can be read, rests again, and begins anew. It moves by whole device pixels;
 * at rest, and with a text that fits, it asks for no frame. Screen thread only; its parent item owns it, the timepiece
 * outlives it.
 */
class Marquee : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Timepiece* timepiece READ timepiece WRITE setTimepiece NOTIFY timepieceChanged FINAL)
    Q_PROPERTY(QString text MEMBER m_text NOTIFY textChanged FINAL)
    /** How long the whole text is, in points. */
    Q_PROPERTY(double textExtent MEMBER m_textExtent NOTIFY textExtentChanged FINAL)
    Q_PROPERTY(bool running MEMBER m_running NOTIFY runningChanged FINAL)
    /** Whether the whole text is to be shown, and not as much as fits. */
    Q_PROPERTY(bool showsWhole READ showsWhole NOTIFY showsWholeChanged FINAL)
    /** Where the whole text begins, in points from the left. */
    Q_PROPERTY(double offset READ offset NOTIFY offsetChanged FINAL)

public:
    static constexpr std::chrono::milliseconds beginTime{1500}; ///< of the rest before it moves
    static constexpr std::chrono::milliseconds endTime{2000};   ///< of the rest at its end
    static constexpr double speed = 120;                        ///< points a second, at which it can be read

    explicit Marquee(QQuickItem* parent = nullptr);
    ~Marquee() override;

    Timepiece* timepiece() const { return m_timepiece; }
    void setTimepiece(Timepiece* timepiece);
    bool showsWhole() const { return m_showsWhole; }
    double offset() const { return m_offset; }

Q_SIGNALS:
    void timepieceChanged();
    void textChanged();
    void textExtentChanged();
    void runningChanged();
    void showsWholeChanged();
    void offsetChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;

private:
    double overflow() const { return m_textExtent - width(); }
    void restart();
    void beginRound();
    void advance();
    void moveTo(double travelled);

    QPointer<Timepiece> m_timepiece;
    QString m_text;
    double m_textExtent = 0;
    bool m_running = false;
    bool m_showsWhole = false;
    double m_offset = 0;
    std::chrono::milliseconds m_start{0};         ///< of the movement, by the clock's elapsed time
    std::unique_ptr<Clock::Timer> m_rest;         ///< runs while it rests
    std::unique_ptr<QAbstractAnimation> m_frames; ///< runs while it moves
};
