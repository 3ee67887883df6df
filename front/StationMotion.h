#pragma once

#include "StationPalette.h"

#include <QEasingCurve>
#include <QPointF>

#include <cmath>

/** What moves on every screen, how far and how fast: times in milliseconds, lengths in points. Any thread. */
class StationMotion : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /** Whatever gets the focus grows to a part of its size: a door, a card, a plate. */
    Q_PROPERTY(int liftTime READ liftTime CONSTANT FINAL)
    Q_PROPERTY(double liftScale READ liftScale CONSTANT FINAL)
    Q_PROPERTY(double cardScale READ cardScale CONSTANT FINAL)
    Q_PROPERTY(double plateScale READ plateScale CONSTANT FINAL)
    /** How much of white lies over a focused card, 0 to 1. */
    Q_PROPERTY(double cardBrightening READ cardBrightening CONSTANT FINAL)
    /** What lies over a picture comes, and goes, in this time. */
    Q_PROPERTY(int fadeTime READ fadeTime CONSTANT FINAL)
    /** A live lamp's glow goes from faint to full, and back in the same time. */
    Q_PROPERTY(int glowTime READ glowTime CONSTANT FINAL)
    /** The cubic curves of a motion that eases in and out, and of one that eases out alone. */
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
    /** The radius grows in steps too small to be seen, each of which is painted once. */
    static constexpr int glowSteps = 24;

    /** How far from its disc a glow has faded out, which is twice its radius; `glow` is from 0, faint, to 1, full. */
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
