#pragma once

#include "TapeMarket.h"

#include <QList>
#include <QtQml/qqmlregistration.h>

/** Summary of the rental shop's tapes. */
struct CatalogSummary
{
    Q_GADGET
    QML_VALUE_TYPE(catalogSummary)
    Q_PROPERTY(qint64 tapes MEMBER tapes)
    Q_PROPERTY(QList<TapeMarket> markets MEMBER markets)

public:
    qint64 tapes = 0; ///< number of tapes in all markets
    QList<TapeMarket> markets;

    bool operator==(const CatalogSummary&) const = default;
};
