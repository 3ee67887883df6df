#pragma once

#include "StationPalette.h"

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
    Q_PROPERTY(double faintGlowSpread READ faintGlowSpread CONSTANT FINAL)
    Q_PROPERTY(double fullGlowSpread READ fullGlowSpread CONSTANT FINAL)
    Q_PROPERTY(QColor faintGlow READ faintGlow CONSTANT FINAL)
    Q_PROPERTY(QColor fullGlow READ fullGlow CONSTANT FINAL)

public:
    using QObject::QObject;

    static constexpr int liftTime() { return 150; }
    static constexpr double liftScale() { return 1.06; }
    static constexpr double cardScale() { return 1.08; }
    static constexpr double plateScale() { return 1.05; }
    static constexpr double cardBrightening() { return 0.06; }
    static constexpr int fadeTime() { return 200; }
    static constexpr int glowTime() { return 1100; }

    static constexpr double faintGlowRadius = 6;
    static constexpr double fullGlowRadius = 18;
    static constexpr double faintGlowOpacity = 0.3;
    static constexpr double fullGlowOpacity = 0.9;

    /** A glow of some radius has faded out at twice that from the disc. */
    static constexpr double faintGlowSpread() { return 2 * faintGlowRadius; }
    static constexpr double fullGlowSpread() { return 2 * fullGlowRadius; }
    static QColor faintGlow() { return StationPalette::faded(StationPalette::onAirRed(), faintGlowOpacity); }
    static QColor fullGlow() { return StationPalette::faded(StationPalette::onAirRed(), fullGlowOpacity); }
};
