#pragma once

#include "TapeMarket.h"

#include <QList>
#include <QtQml/qqmlregistration.h>

/** The rental shop's summary. */
struct CatalogSummary
{
    Q_GADGET
    QML_VALUE_TYPE(catalogSummary)
    Q_PROPERTY(qint64 tapes MEMBER tapes)
    Q_PROPERTY(QList<TapeMarket> markets MEMBER markets)

public:
    qint64 tapes = 0; ///< total tapes in stock
    QList<TapeMarket> markets;

    bool operator==(const CatalogSummary&) const = default;
};
