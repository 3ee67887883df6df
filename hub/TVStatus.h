#pragma once

#include "NewsStatus.h"
#include "Tape.h"

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

/** The status of tower and shop. A default-constructed one is used until the hub's first response. */
struct TVStatus
{
    Q_GADGET
    QML_VALUE_TYPE(tvStatus)
    Q_PROPERTY(NewsStatus news MEMBER news)
    Q_PROPERTY(CatalogSummary rewindery MEMBER rewindery)

public:
    NewsStatus news;
    CatalogSummary rewindery;

    bool operator==(const TVStatus&) const = default;
};
