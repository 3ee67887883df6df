#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/** A market (a city or region) with its number of tapes. The slug identifies it in lists. */
struct TapeMarket
{
    Q_GADGET
    QML_VALUE_TYPE(tapeMarket)
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

inline size_t qHash(const TapeMarket& market, size_t seed = 0) noexcept
{
    return qHashMulti(seed, market.slug, market.name, market.stateCode, market.tapes);
}
