#pragma once

#include "StationPalette.h"

#include <QEasingCurve>
#include <QPointF>

#include <cmath>

namespace quillmere {

/** Animation constants shared by all screens. Times are in milliseconds, lengths in points. Stateless: any thread. */
class StationMotion : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /** Duration of the focus effect. */
    Q_PROPERTY(int liftTime READ liftTime CONSTANT FINAL)
    /** Scale of an item with focus: of a door, a card, a plate. */
    Q_PROPERTY(double liftScale READ liftScale CONSTANT FINAL)
    Q_PROPERTY(double cardScale READ cardScale CONSTANT FINAL)
    Q_PROPERTY(double plateScale READ plateScale CONSTANT FINAL)
    /** Opacity of the white overlay on a focused card, 0 to 1. */
    Q_PROPERTY(double cardBrightening READ cardBrightening CONSTANT FINAL)
    /** Duration of fading an overlay over a picture in or out. */
    Q_PROPERTY(int fadeTime READ fadeTime CONSTANT FINAL)
    /** Time in which the glow of a live lamp grows from faint to full; fading back takes as long. */
    Q_PROPERTY(int glowTime READ glowTime CONSTANT FINAL)
    /** Cubic Bezier easing curves: in and out, and out only. */
    Q_PROPERTY(QEasingCurve easeInOut READ easeInOut CONSTANT FINAL)
    Q_PROPERTY(QEasingCurve easeOut READ easeOut CONSTANT FINAL)

public:
    using QObject::QObject;

    static constexpr int liftTime() { return 150; }
    static constexpr double liftScale() { return 1.06; }
    static constexpr double cardScale() { return 1.08; }
    static constexpr double plateScale() { return 1.05; }
    static constexpr double cardBrightening() { return 0.06; }
    static constexpr int fadeTime() { return 200; }
    static constexpr int glowTime() { return 1100; }

    static QEasingCurve easeInOut() { return cubic({0.42, 0}, {0.58, 1}); }
    static QEasingCurve easeOut() { return cubic({0, 0}, {0.58, 1}); }

    static constexpr double faintGlowRadius = 6;
    static constexpr double fullGlowRadius = 18;
    static constexpr double faintGlowOpacity = 0.3;
    static constexpr double fullGlowOpacity = 0.9;
    /** The glow radius grows in steps too small to be visible. Each step is painted once. */
    static constexpr int glowSteps = 24;

    /** Distance from the disc at which the glow is transparent: twice its radius. `glow` is 0 (faint) to 1 (full). */
    Q_INVOKABLE static double glowSpread(double glow)
    {
        return 2 * between(faintGlowRadius, fullGlowRadius, std::round(glow * glowSteps) / glowSteps);
    }
    Q_INVOKABLE static double glowOpacity(double glow) { return between(faintGlowOpacity, fullGlowOpacity, glow); }

private:
    static constexpr double between(double from, double to, double part) { return from + (to - from) * part; }

    static QEasingCurve cubic(QPointF first, QPointF second)
    {
        QEasingCurve curve(QEasingCurve::BezierSpline);
        curve.addCubicBezierSegment(first, second, {1, 1});
        return curve;
    }
};

} // namespace quillmere
