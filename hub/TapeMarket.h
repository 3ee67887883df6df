#pragma once

#include <QObject>
#include <QString>

/** A market (a city or region) with its tape count. Its identity for lists is its slug. */
struct TapeMarket
{
    Q_GADGET
    Q_PROPERTY(QString slug MEMBER slug)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString stateCode MEMBER stateCode)
    Q_PROPERTY(qint64 tapes MEMBER tapes)

public:
    QString slug;
    QString name;
    QString stateCode;
    qint64 tapes = 0;

    bool operator==(const TapeMarket&) const = default;
};

size_t qHash(const TapeMarket& market, size_t seed = 0) noexcept;
