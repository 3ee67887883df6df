#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/** Colours shared by all screens. Stateless: any thread. */
class StationPalette : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor inkNavy READ inkNavy CONSTANT FINAL)
    Q_PROPERTY(QColor nightNavy READ nightNavy CONSTANT FINAL)
    Q_PROPERTY(QColor amber READ amber CONSTANT FINAL)
    Q_PROPERTY(QColor cream READ cream CONSTANT FINAL)
    Q_PROPERTY(QColor teal READ teal CONSTANT FINAL)
    Q_PROPERTY(QColor walnut READ walnut CONSTANT FINAL)
    Q_PROPERTY(QColor chestnut READ chestnut CONSTANT FINAL)
    Q_PROPERTY(QColor olive READ olive CONSTANT FINAL)
    Q_PROPERTY(QColor brick READ brick CONSTANT FINAL)
    Q_PROPERTY(QColor parchment READ parchment CONSTANT FINAL)
    Q_PROPERTY(QColor soot READ soot CONSTANT FINAL)
    Q_PROPERTY(QColor onAirRed READ onAirRed CONSTANT FINAL)
    Q_PROPERTY(QList<QColor> colorBars READ colorBars CONSTANT FINAL)

public:
    static constexpr QColor inkNavy() { return {11, 16, 38}; }
    static constexpr QColor nightNavy() { return {18, 24, 58}; }
    static constexpr QColor amber() { return {255, 203, 45}; }
    static constexpr QColor cream() { return {247, 244, 236}; }
    static constexpr QColor teal() { return {31, 111, 139}; }
    static constexpr QColor walnut() { return {62, 43, 31}; }
    static constexpr QColor chestnut() { return {92, 64, 51}; }
    static constexpr QColor olive() { return {122, 139, 61}; }
    static constexpr QColor brick() { return {192, 90, 31}; }
    static constexpr QColor parchment() { return {236, 224, 196}; }
    static constexpr QColor soot() { return {38, 36, 31}; }
    static constexpr QColor onAirRed() { return {217, 43, 43}; }

    /** The seven colours of 75 % colour bars, left to right. */
    static const QList<QColor>& colorBars();

    /** `color` with its alpha set to `opacity`, 0 to 1. */
    Q_INVOKABLE static QColor faded(QColor color, double opacity);

    /** Linear interpolation between two colours: `from` at `part` 0, `to` at `part` 1. */
    Q_INVOKABLE static QColor mixed(const QColor& from, const QColor& to, double part);
};

} // namespace quillmere
