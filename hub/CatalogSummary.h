#pragma once

#include "TapeMarket.h"

#include <QList>

/** The rental shop's summary. */
struct CatalogSummary
{
    Q_GADGET
    Q_PROPERTY(qint64 tapes MEMBER tapes)
    Q_PROPERTY(QList<TapeMarket> markets MEMBER markets)

public:
    qint64 tapes = 0; ///< total tapes in stock
    QList<TapeMarket> markets;

    bool operator==(const CatalogSummary&) const = default;
};
