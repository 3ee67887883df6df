#pragma once

#include "NewsStatus.h"
#include "Tape.h"

namespace quillmere {

/** Summary of the rental shop's tapes. */
struct CatalogSummary
{
    Q_GADGET
    QML_VALUE_TYPE(catalogSummary)
    Q_PROPERTY(qint64 tapes MEMBER tapes)
    Q_PROPERTY(QList<quillmere::TapeMarket> markets MEMBER markets)

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
    Q_PROPERTY(quillmere::NewsStatus news MEMBER news)
    Q_PROPERTY(quillmere::CatalogSummary rewindery MEMBER rewindery)

public:
    NewsStatus news;
    CatalogSummary rewindery;

    bool operator==(const TVStatus&) const = default;
};

} // namespace quillmere
