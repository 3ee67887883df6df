#pragma once

#include "StationPalette.h"

/** What moves on the front screen, how far and how fast: times in milliseconds, lengths in points. Any thread. */
class StationMotion : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /** The focused door grows to `liftScale` of its size. */
    Q_PROPERTY(int liftTime READ liftTime CONSTANT FINAL)
    Q_PROPERTY(double liftScale READ liftScale CONSTANT FINAL)
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
