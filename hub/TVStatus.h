#pragma once

#include "CatalogSummary.h"
#include "NewsStatus.h"

#include <QtQml/qqmlregistration.h>

/** The combined status of tower and shop. Default-made, it is what the set knows before the hub has answered. */
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
